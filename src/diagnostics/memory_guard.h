// SPDX-License-Identifier: Apache-2.0
#pragma once

// What becomes of an operation of the module in which memory runs out.
//
// Operations work for each other, and half an answer would look like a whole one: the operation
// that was called from outside is given up as a whole, so the exception passes through those below
// it, and answers its failure: a false, a null, a shared empty, or the text kOutOfMemoryText.
// Nothing leaves the module. Whether it happened is counted for those who got a bare false.
//
// Where the module calls out, to a client's callback or to the host's loop, whoever calls in from
// there is outside again (Outside). What the host calls, and the end of an object, has no value to
// answer in and always ends what goes wrong below it (Contain); an operation in whose middle that
// came is given up too.
//
// Not synchronised; nothing here allocates.

#include <exception>
#include <type_traits>
#include <utility>

namespace fixtop {

namespace memory {

// Fits the inline form of a value, so that telling it needs no memory.
inline constexpr char kOutOfMemoryText[] = "Out of memory";

// How many operations were given up since the module was loaded.
int Failures() noexcept;
void NoteFailure() noexcept;

namespace detail {

// The module is not at work, it is, or something was contained in the middle of its work.
enum class Work : int { kNone, kGoesOn, kSpoiled };
inline constinit Work g_work = Work::kNone;

// For an operation that was called from outside.
template <class Failed, class Operation>
inline auto Begin(Failed failed, Operation operation) -> decltype(operation()) {
    struct End {
        ~End() { g_work = Work::kNone; }
    };
    g_work = Work::kGoesOn;
    const End end;
    try {
        if constexpr (std::is_same_v<decltype(operation()), bool>) {
            const bool answer = operation();
            return g_work == Work::kSpoiled ? failed() : answer;
        } else if constexpr (std::is_void_v<decltype(operation())>) {
            operation();
            if (g_work == Work::kSpoiled) failed();
        } else {
            return operation();
        }
    } catch (const std::exception&) {
        NoteFailure();
        return failed();
    }
}

// Answers nothing, or false.
template <class Answer, class Value>
Answer Tell(Value& out) {
    out.SetText(kOutOfMemoryText);
    return Answer();
}

}  // namespace detail

// Whether the module is at work for somebody: what is called then may let anything through.
inline bool IsInside() noexcept {
    return detail::g_work != detail::Work::kNone;
}

// Runs an operation that can be called from outside. Answers what `failed` answers, which may not
// throw, when it had to be given up.
template <class Operation, class Failed>
inline auto OrElse(Failed failed, Operation operation) -> decltype(operation()) {
    return IsInside() ? operation() : detail::Begin(failed, operation);
}

// The same with a plain value, such as false, for a failure.
template <class Answer, class Operation>
inline auto Or(Answer failure, Operation operation) -> decltype(operation()) {
    return OrElse([failure]() -> decltype(operation()) { return failure; }, operation);
}

// The same for an operation whose failure is told in a value; it answers nothing, or false then.
template <class Value, class Operation>
inline auto OrTell(Value& out, Operation operation) -> decltype(operation()) {
    return OrElse([&out] { return detail::Tell<decltype(operation())>(out); }, operation);
}

// The same for an operation whose failure shows in the count alone.
template <class Operation>
inline void OrNothing(Operation operation) {
    OrElse([] {}, operation);
}

// The same for a virtual operation, which is called again where it was called from outside:
//
//     bool IsHidden() override {
//         if (memory::IsInside()) return T::IsHidden();
//         return memory::Call<&FICursorBase::IsHidden>::Or(false, *this);
//     }
//
// Then who calls it from inside pays for a comparison and saves no register.
template <auto kOperation>
struct Call;

template <class Result, class Class, class... Parameters,
          Result (Class::*kOperation)(Parameters...)>
struct Call<kOperation> {
    // With the operation's own parameters, so that they stay in registers.
    template <class Failed>
    [[gnu::noinline]] static Result OrElse(Failed failed, Class& self, Parameters... parameters) {
        return detail::Begin(failed, [&]() -> Result { return (self.*kOperation)(parameters...); });
    }
    template <class Answer>
    [[gnu::noinline]] static Result Or(Answer failure, Class& self, Parameters... parameters) {
        return detail::Begin([failure]() -> Result { return failure; },
                             [&]() -> Result { return (self.*kOperation)(parameters...); });
    }
    template <class Value>
    [[gnu::noinline]] static Result OrTell(Value& out, Class& self, Parameters... parameters) {
        return detail::Begin([&out] { return detail::Tell<Result>(out); },
                             [&]() -> Result { return (self.*kOperation)(parameters...); });
    }
    static Result OrNothing(Class& self, Parameters... parameters) {
        return OrElse([] {}, self, parameters...);
    }
};

// Runs what may not let anything out, wherever it is called: what the host calls, and the end of an
// object.
template <class Operation>
inline void Contain(Operation operation) noexcept {
    using detail::Work;
    const Work around = std::exchange(detail::g_work, Work::kGoesOn);
    try {
        operation();
    } catch (const std::exception&) {
        NoteFailure();
        detail::g_work = Work::kSpoiled;
    }
    const bool is_spoiled = detail::g_work == Work::kSpoiled && around != Work::kNone;
    detail::g_work = is_spoiled ? Work::kSpoiled : around;
}

// Calls out of the module. What is contained there says nothing of the work that waits.
template <class Call>
inline auto Outside(Call call) -> decltype(call()) {
    struct Waiting {
        ~Waiting() { detail::g_work = work; }
        const detail::Work work;
    };
    const Waiting waiting{std::exchange(detail::g_work, detail::Work::kNone)};
    return call();
}

}  // namespace memory

}  // namespace fixtop
