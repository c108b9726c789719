// SPDX-License-Identifier: Apache-2.0
#pragma once

// Ref<T>: one counted reference to an object with AddRef and Release. HandOut: such a reference as
// operations give it to their caller.

#include <utility>

namespace fixtop {

template <class T>
class Ref {
 public:
    Ref() noexcept = default;
    // Takes over a reference that the caller holds, as operations hand them out.
    static Ref Adopt(T* object) noexcept {
        Ref ref;
        ref.object_ = object;
        return ref;
    }
    // Adds a reference of its own.
    static Ref Share(T* object) {
        if (object) object->AddRef();
        return Adopt(object);
    }

    Ref(const Ref& other) : object_(other.object_) {
        if (object_) object_->AddRef();
    }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(const Ref& other) {
        Ref copy(other);
        std::swap(object_, copy.object_);
        return *this;
    }
    Ref& operator=(Ref&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_) object_->Release();
    }

    void Reset() { Ref().Swap(*this); }
    void Swap(Ref& other) noexcept { std::swap(object_, other.object_); }
    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    // Gives the held reference to the caller.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }
    // A further reference for an operation that hands the object out.
    [[nodiscard]] T* Counted() const {
        if (object_) object_->AddRef();
        return object_;
    }

 private:
    T* object_ = nullptr;
};

// Counts an object for the caller to whom an operation hands it out.
template <class T>
[[nodiscard]] T* HandOut(T* object) {
    object->AddRef();
    return object;
}

}  // namespace fixtop
