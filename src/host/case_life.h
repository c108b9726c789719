// SPDX-License-Identifier: Apache-2.0
#pragma once

// CaseLife: the one record of a case that all handles on it share: whether it is there, by the
// revision of the host's structure or by what the host tells. It also keeps the case's
// notification, and stands installed there while somebody watches.
//
// One record a case, found by its address; it lasts as long as somebody holds it. A case that is
// gone loses its record, so that a new one at its address begins anew.

#include "fixtop/host/services.h"
#include "fixtop/ref.h"
#include "framework/nodes/liveness.h"

namespace fixtop {

class HSolverNotify;

class CaseLife final : public Liveness {
 public:
    // The record of a case that is there, made when it has none; null stands for no case and has a
    // record of its own.
    static Ref<CaseLife> Of(host::SimulationCase* simulation_case);
    // The record that handles on this address have; null when nobody has one. Asks no host.
    static CaseLife* Find(host::SimulationCase* simulation_case);
    // The host is taken out: every case is gone for this side of the process.
    static void EndAll();
    // The list of subscribers that the tops of all cases share was emptied.
    static void TellAllForgotten();

    // The case is there, or there is none that could go.
    bool IsLive() const {
        if (!IsCurrent(seen_)) LookAgain();
        return !HasEnded();
    }
    // The host says by itself whether the case is there.
    bool IsTracked() const { return identity_ != 0; }
    // Null when there is none, or it is gone.
    host::SimulationCase* Case() const { return IsLive() ? case_ : nullptr; }
    // The notification of the case, counted for the caller; made when there is none. Null when the
    // case is gone.
    Ref<HSolverNotify> Notifier();
    // The one that there is, or null.
    HSolverNotify* PresentNotifier() const { return notifier_; }

 private:
    friend class HSolverNotify;

    explicit CaseLife(host::SimulationCase* simulation_case);
    ~CaseLife() override;

    bool IsThere() const override;
    void OnFirstWatcher() override;
    void OnNoWatcher() override;
    void OnEnded(bool told) override;
    void LookAgain() const;
    // Whether the case at the address, which is there, is the one of this record.
    bool IsSameCase() const;

    host::SimulationCase* case_;
    std::uint64_t identity_;
    unsigned installation_;
    HSolverNotify* notifier_ = nullptr;
    mutable std::uint64_t seen_ = 0;
    // Held while somebody watches.
    Ref<HSolverNotify> watched_;
};

}  // namespace fixtop
