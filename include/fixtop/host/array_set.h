// SPDX-License-Identifier: Apache-2.0
#pragma once

// ArraySetBlock: the table behind an array-set element of a specification.

#include "fixtop/host/local_services.h"
#include "fixtop/host/text.h"

namespace fixtop::host {

// (data, size, spare, grow step) on the host's heap, so that host and adapter may both rewrite it.
// `spare` is the count of unused places behind the last element.
template <class T>
class GrowableArray {
 public:
    GrowableArray() = default;
    GrowableArray(const GrowableArray& other) {
        for (int i = 0; i < other.size_; ++i) Append(other.data_[i]);
    }
    GrowableArray& operator=(const GrowableArray& other) {
        if (this == &other) return *this;
        Clear();
        for (int i = 0; i < other.size_; ++i) Append(other.data_[i]);
        return *this;
    }
    ~GrowableArray() { Clear(); }

    int Size() const { return size_; }
    T& operator[](int i) { return data_[i]; }
    const T& operator[](int i) const { return data_[i]; }
    void Append(const T& element) {
        if (spare_ == 0) Grow();
        new (data_ + size_) T(element);
        ++size_;
        --spare_;
    }
    void Clear() {
        for (int i = 0; i < size_; ++i) data_[i].~T();
        if (data_) LocalServices()->IFace_free(data_);
        data_ = nullptr;
        size_ = spare_ = 0;
    }

 private:
    void Grow() {
        T* bigger =
            static_cast<T*>(LocalServices()->IFace_malloc(sizeof(T) * (size_ + grow_step_)));
        for (int i = 0; i < size_; ++i) {
            new (bigger + i) T(data_[i]);
            data_[i].~T();
        }
        if (data_) LocalServices()->IFace_free(data_);
        data_ = bigger;
        spare_ = grow_step_;
    }

    T* data_ = nullptr;
    int size_ = 0;
    int spare_ = 0;
    int grow_step_ = 10;
};

class ArraySetBlock {
 public:
    // As converted by the adapter: names and one column of texts each.
    GrowableArray<Text> names;
    GrowableArray<GrowableArray<Text>> columns;
    // As filled by the host: one number column for each name but "Attachment", one object column
    // for each "Attachment", both in the order of the names.
    GrowableArray<Text> source_names;
    GrowableArray<GrowableArray<double>> source_numbers;
    GrowableArray<GrowableArray<Viewable*>> source_objects;
};

}  // namespace fixtop::host
