// SPDX-License-Identifier: Apache-2.0
#pragma once

// What objects that have a class in C++ share: lists of them, and the question for their class.

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "fixtop/client/typed.h"

namespace fixtop::client {

// A TypedArray as a list of one class.
template <class T>
class TypedList {
 public:
    class Iterator {
     public:
        using value_type = T;
        using difference_type = std::ptrdiff_t;

        explicit Iterator(TypedArray::Iterator at) : at_(std::move(at)) {}
        T operator*() const { return T(*at_); }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        void operator++(int) { ++at_; }
        bool operator==(std::default_sentinel_t end) const { return at_ == end; }

     private:
        TypedArray::Iterator at_;
    };

    explicit TypedList(TypedArray array) : array_(std::move(array)) {}

    int Count() const { return array_.Count(); }
    T At(int index) const { return T(array_.At(index)); }
    T At(const std::string& key) const { return T(array_.At(key)); }
    T operator[](int index) const { return At(index); }
    Iterator begin() const { return Iterator(array_.begin()); }
    std::default_sentinel_t end() const { return {}; }
    const TypedArray& ToArray() const { return array_; }

 private:
    TypedArray array_;
};

// The object as one of a class in C++ when it is of that class; null when not.
template <class T>
std::optional<T> As(const TypedObject& object) {
    if (!object || !object.IsA(T::kClass)) return std::nullopt;
    return T(object);
}

}  // namespace fixtop::client
