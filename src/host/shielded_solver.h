#pragma once

// Shielded<HSSSolver>, Shielded<HDynamicSolver>: a solver as it is handed out; see
// framework/shield.h. There may be no memory for a record either: then the list of records stays
// as it was.

#include "framework/shield.h"
#include "framework/solver.h"

template <std::derived_from<FISolver> T>
class Shielded<T> final : public T {
 public:
    using T::T;

    void Initialize() override {
        memory::OrNothing([&] { T::Initialize(); });
    }
    void* CheckSolve(FIErrorList& errors) override {
        return memory::Or(nullptr, [&] { return T::CheckSolve(errors); });
    }
    void Options(FIErrorList& errors) override {
        memory::OrNothing([&] { T::Options(errors); });
    }
    void SolveOnceNow(FIErrorList& errors) override {
        memory::OrNothing([&] { T::SolveOnceNow(errors); });
    }
    bool Run() override {
        return memory::Or(false, [&] { return T::Run(); });
    }
    void Pause() override {
        memory::OrNothing([&] { T::Pause(); });
    }
    void Resume() override {
        memory::OrNothing([&] { T::Resume(); });
    }
    void Stop() override {
        memory::OrNothing([&] { T::Stop(); });
    }
    bool Subscribe(void* owner, int kind, FISolverCallback callback) override {
        return memory::Or(false, [&] { return T::Subscribe(owner, kind, callback); });
    }
    bool Unsubscribe(void* owner, int kind) override {
        return memory::Or(false, [&] { return T::Unsubscribe(owner, kind); });
    }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        memory::OrTell(out, [&] { T::GetAttribute(name, out); });
    }
    void SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetAttribute(name, value, out); });
    }
    FIAttributeSource* GetAttributeSource() override {
        return memory::OrElse([] { return EmptyEntry()->GetAttributeSource(); },
                              [&] { return T::GetAttributeSource(); });
    }
    FIAttributeCursorBase* MakeCursor() override {
        return memory::OrElse(EmptyAttributeCursor, [&] { return T::MakeCursor(); });
    }
};
