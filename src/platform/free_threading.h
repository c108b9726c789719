// SPDX-License-Identifier: Apache-2.0
#pragma once

// FreeThreadedMarshaler: where the platform marshals calls between threads, lets a component object
// be called as it stands from all of them. Part of the object that it serves, which begins with
// QueryInterface, AddRef and Release.

namespace fixtop {

class FreeThreadedMarshaler {
 public:
    FreeThreadedMarshaler() = default;
    // NOLINTNEXTLINE(performance-trivially-destructible): with a marshaler it does something.
    ~FreeThreadedMarshaler();
    FreeThreadedMarshaler(const FreeThreadedMarshaler&) = delete;
    FreeThreadedMarshaler& operator=(const FreeThreadedMarshaler&) = delete;

    // The marshaling interface of `object`, counted by the object for the caller. Any other
    // interface, and a platform without a marshaler: false, and null in `*out`.
    bool Query(void* object, const void* interface_id, void** out) noexcept;

 private:
    void* inner_ = nullptr;
};

}  // namespace fixtop
