// SPDX-License-Identifier: Apache-2.0
#pragma once

// The one thread to which the library belongs while a case is open, and objects of Python that hold
// something of the library. Python ends an object on whatever thread drops it last; what it held is
// kept then until the owner calls again.
//
// Threads: all of this is called with the interpreter's lock held.

#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace fixtop::python {

class WrongThread : public std::runtime_error {
 public:
    WrongThread();
};

class Owner {
 public:
    // Makes this thread the owner when nothing of the library is held; throws WrongThread when
    // another thread is.
    static void Claim();
    // Throws WrongThread on any other thread than the owner.
    static void Check() {
        if (!IsHere()) Refuse();
        if (has_left_) DropLeft();
    }
    static bool IsHere();
    // Something is held from now on.
    static void Count() { ++held_; }
    // Ends what was held: at once on the owner's thread, else when that calls next.
    template <class T>
    static void End(T held) {
        --held_;
        if (!IsHere()) Leave(std::make_shared<T>(std::move(held)));
    }

 private:
    [[noreturn]] static void Refuse();
    static void Leave(std::shared_ptr<void> held);
    static void DropLeft();

    static inline long held_ = 0;
    static inline bool has_left_ = false;
};

// A value of the library in an object of Python.
template <class T>
class Owned {
 public:
    explicit Owned(T value) : value_(std::move(value)) { Owner::Count(); }
    ~Owned() {
        if (value_) Owner::End(std::move(*value_));
    }
    Owned(Owned&& other) noexcept : value_(std::exchange(other.value_, std::nullopt)) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Owned& operator=(Owned&&) = delete;

    // Throw WrongThread.
    T& operator*() {
        Owner::Check();
        return *value_;
    }
    T* operator->() { return &**this; }

 private:
    std::optional<T> value_;
};

}  // namespace fixtop::python
