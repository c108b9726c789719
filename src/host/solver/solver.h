// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSSSolver and HDynamicSolver: what a client sees of the solver of a case. A steady-state solver
// is run, paused and watched; a dynamic one only shows itself.

#include "fixtop/solver.h"
#include "framework/nodes/attr_map.h"
#include "host/solver/solver_notify.h"

namespace fixtop {

// What both answer alike.
class HSolverBase : public FISolver {
 public:
    // A null case is the active one.
    explicit HSolverBase(host::SimulationCase* simulation_case);

    void Initialize() override {}
    void Options(FIErrorList& errors) override;
    bool Reserved6() override { return false; }
    void Reserved11() override {}
    double Reserved12() override { return 0.0; }
    void* Reserved13() override { return nullptr; }
    void* Reserved14() override { return nullptr; }
    bool Reserved15() override { return false; }
    void SetVarSet(FIVarSet* vars) override { var_set_ = vars; }
    FIVarSet* GetVarSet() override { return var_set_; }

    // The case is gone, and the host will not call any more.
    bool IsGone() const { return life_->IsTracked() && !life_->IsLive(); }

 protected:
    host::FlowSheetSolver* MainSolver() const;
    // Null when there is none, or it is gone.
    host::SimulationCase* Case() const { return life_->Case(); }

    const Ref<CaseLife> life_;

 private:
    FIVarSet* var_set_ = nullptr;
};

class HSSSolver : public HSolverBase, public AttrMapBase<HSSSolver> {
 public:
    explicit HSSSolver(host::SimulationCase* simulation_case);

    static std::span<const AttrRow<HSSSolver>> AttributeRows();

    int Kind() override { return 1; }
    void* CheckSolve(FIErrorList& errors) override;
    void SolveOnceNow(FIErrorList& errors) override;
    bool Run() override;
    void Pause() override;
    void Resume() override;
    void Stop() override;
    bool Subscribe(void* owner, int kind, FISolverCallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) override;
    FIAttributeSource* GetAttributeSource() override;

    // A solver belongs to its top entry: its attribute source and cursors are lent with it.
    int AddRef() override { return 1; }
    int Release() override { return 1; }

 private:
    template <class Work>
    void LetGo(Work work);
    void SetAutosolve(const FIValue& value, FIValue& out);
    void SetWaitForSolve(const FIValue& value, FIValue& out);

    Ref<HSolverNotify> notify_;
};

class HDynamicSolver : public HSolverBase, public AttrMapBase<HDynamicSolver> {
 public:
    using HSolverBase::HSolverBase;

    static std::span<const AttrRow<HDynamicSolver>> AttributeRows();

    int Kind() override { return 4; }
    // Adds no record; answers the host's main solver.
    void* CheckSolve(FIErrorList& errors) override;
    void SolveOnceNow(FIErrorList& errors) override;
    bool Run() override { return false; }
    void Pause() override {}
    void Resume() override {}
    void Stop() override {}
    bool Subscribe(void*, int, FISolverCallback) override { return false; }
    bool Unsubscribe(void*, int) override { return false; }
    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) override;
    FIAttributeSource* GetAttributeSource() override;

    int AddRef() override { return 1; }
    int Release() override { return 1; }
};

}  // namespace fixtop
