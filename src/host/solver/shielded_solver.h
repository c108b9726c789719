// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shielded<HSSSolver>, Shielded<HDynamicSolver>: a solver as it is handed out; see
// framework/nodes/shield.h. There may be no memory for a record either: then the list of records
// stays as it was.

#include "fixtop/solver.h"
#include "framework/nodes/shield.h"

namespace fixtop {

template <std::derived_from<FISolver> T>
class Shielded<T> final : public T {
 public:
    using T::T;

    void Initialize() override {
        if (memory::IsInside()) return T::Initialize();
        memory::Call<&FISolver::Initialize>::OrNothing(*this);
    }
    void* CheckSolve(FIErrorList& errors) override {
        if (memory::IsInside()) return T::CheckSolve(errors);
        return memory::Call<&FISolver::CheckSolve>::Or(nullptr, *this, errors);
    }
    void Options(FIErrorList& errors) override {
        if (memory::IsInside()) return T::Options(errors);
        memory::Call<&FISolver::Options>::OrNothing(*this, errors);
    }
    void SolveOnceNow(FIErrorList& errors) override {
        if (memory::IsInside()) return T::SolveOnceNow(errors);
        memory::Call<&FISolver::SolveOnceNow>::OrNothing(*this, errors);
    }
    bool Run() override {
        if (memory::IsInside()) return T::Run();
        return memory::Call<&FISolver::Run>::Or(false, *this);
    }
    void Pause() override {
        if (memory::IsInside()) return T::Pause();
        memory::Call<&FISolver::Pause>::OrNothing(*this);
    }
    void Resume() override {
        if (memory::IsInside()) return T::Resume();
        memory::Call<&FISolver::Resume>::OrNothing(*this);
    }
    void Stop() override {
        if (memory::IsInside()) return T::Stop();
        memory::Call<&FISolver::Stop>::OrNothing(*this);
    }
    bool Subscribe(void* owner, int kind, FISolverCallback callback) override {
        if (memory::IsInside()) return T::Subscribe(owner, kind, callback);
        return memory::Call<&FISolver::Subscribe>::Or(false, *this, owner, kind, callback);
    }
    bool Unsubscribe(void* owner, int kind) override {
        if (memory::IsInside()) return T::Unsubscribe(owner, kind);
        return memory::Call<&FISolver::Unsubscribe>::Or(false, *this, owner, kind);
    }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        if (memory::IsInside()) return T::GetAttribute(name, out);
        memory::Call<&FISolver::GetAttribute>::OrTell(out, *this, name, out);
    }
    void SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) override {
        if (memory::IsInside()) return T::SetAttribute(name, value, out);
        memory::Call<&FISolver::SetAttribute>::OrTell(out, *this, name, value, out);
    }
    FIAttributeSource* GetAttributeSource() override {
        if (memory::IsInside()) return T::GetAttributeSource();
        return memory::Call<&FISolver::GetAttributeSource>::OrElse(
            [] { return EmptyEntry()->GetAttributeSource(); }, *this);
    }
    FIAttributeCursorBase* MakeCursor() override {
        if (memory::IsInside()) return T::MakeCursor();
        return memory::Call<&FIAttributeSource::MakeCursor>::OrElse(EmptyAttributeCursor, *this);
    }
};

}  // namespace fixtop
