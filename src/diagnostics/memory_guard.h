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

namespace memory {

// Fits the inline form of a value, so that telling it needs no memory.
inline constexpr char kOutOfMemoryText[] = "Out of memory";

// How many operations were given up since the module was loaded.
int Failures() noexcept;
void NoteFailure() noexcept;

namespace detail {

// The module is at work for somebody.
inline constinit bool g_inside = false;
// Something was contained in the middle of that work.
inline constinit bool g_spoiled = false;

class Mark {
 public:
    explicit Mark(bool inside) noexcept : saved_(std::exchange(g_inside, inside)) {}
    ~Mark() { g_inside = saved_; }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;

 private:
    const bool saved_;
};

// What is contained outside says nothing of the work that waits.
class Kept {
 public:
    Kept() noexcept : saved_(g_spoiled) {}
    ~Kept() { g_spoiled = saved_; }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

 private:
    const bool saved_;
};

}  // namespace detail

// Runs an operation that can be called from outside. Answers what `failed` answers, which may not
// throw, when it had to be given up.
template <class Operation, class Failed>
inline auto OrElse(Failed failed, Operation operation) -> decltype(operation()) {
    if (detail::g_inside) return operation();
    const detail::Mark inside(true);
    detail::g_spoiled = false;
    try {
        if constexpr (std::is_same_v<decltype(operation()), bool>) {
            const bool answer = operation();
            return detail::g_spoiled ? failed() : answer;
        } else if constexpr (std::is_void_v<decltype(operation())>) {
            operation();
            if (detail::g_spoiled) failed();
        } else {
            return operation();
        }
    } catch (const std::exception&) {
        NoteFailure();
        return failed();
    }
}

// The same with a plain value, such as false, for a failure.
template <class Answer, class Operation>
inline auto Or(Answer failure, Operation operation) -> decltype(operation()) {
    return OrElse([failure]() -> decltype(operation()) { return failure; }, operation);
}

// The same for an operation whose failure is told in a value; it answers nothing.
template <class Value, class Operation>
inline void OrTell(Value& out, Operation operation) {
    OrElse([&out] { out.SetText(kOutOfMemoryText); }, operation);
}

// The same for one that tells a failure in a value and answers false.
template <class Value, class Operation>
inline bool OrTellFalse(Value& out, Operation operation) {
    return OrElse(
        [&out] {
            out.SetText(kOutOfMemoryText);
            return false;
        },
        operation);
}

// The same for an operation whose failure shows in the count alone.
template <class Operation>
inline void OrNothing(Operation operation) {
    OrElse([] {}, operation);
}

// Runs what may not let anything out, wherever it is called: what the host calls, and the end of an
// object.
template <class Operation>
inline void Contain(Operation operation) noexcept {
    const detail::Mark inside(true);
    try {
        operation();
    } catch (const std::exception&) {
        NoteFailure();
        detail::g_spoiled = true;
    }
}

// Calls out of the module.
template <class Call>
inline auto Outside(Call call) -> decltype(call()) {
    const detail::Mark outside(false);
    const detail::Kept kept;
    return call();
}

}  // namespace memory
