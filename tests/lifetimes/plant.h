// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host of a scene: a case of a few objects in the in-memory host, and what happens to it.
//
//   main flowsheet   S1 S2 S3 S4, operation T-1 with I1 I2 I3
//   published        P1 P2 P3
//   basis            Package: Remark, Tuned
//
// Every object has values of its own, so that none can pass for another. Events happen to S2, I2,
// P2 or T-1, whichever the scene's place belongs to.

#include <functional>
#include <memory>
#include <string>

#include "casehost/case_host.h"
#include "lifetimes/scene.h"
#include "live/case.h"
#include "support/host_script.h"

namespace fixtop::lifetimes {

class Plant {
 public:
    Plant(Place place, bool online);
    ~Plant();
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    casehost::CaseHost& Host() { return *host_; }
    bool HasHost() const { return host_ != nullptr; }
    HostScript& Script() { return *script_; }
    casehost::Case& Open() { return *case_; }
    int Solves() const { return *solves_; }

    // What may happen while clients are on the stack, and what follows once none is.
    void Happen(Event event);
    void Settle(Event event, bool purge);
    // A change that touches nothing of the scene.
    void ChangeElsewhere();

    // The present names of the object of the place and of the operation, and where they stand among
    // the streams, operations or variables beside them.
    std::string TargetName() const { return target_->GetName().Str(); }
    std::string OperationName() const { return operation_->GetName().Str(); }
    int TargetIndex() { return IndexOf(*target_); }
    int OperationIndex() { return IndexOf(*operation_); }
    // What `value` of the place shows as long as nobody has stored; empty for places without one.
    std::string Known() const;
    // An object was added at the address of one that was deleted before.
    bool AddressTakenAgain() const { return address_taken_again_; }

 private:
    void Adopt();
    host::Viewable* Find(host::FlowSheet* sheet, const std::string& name);
    host::Viewable* Published(int index);
    int IndexOf(host::Viewable& object);
    host::FlowSheet* Sheet();
    void AddTarget();
    void AddAtAddress();
    void Reopen();

    Place place_;
    bool online_;
    std::shared_ptr<int> solves_ = std::make_shared<int>(0);
    std::unique_ptr<casehost::CaseHost> host_;
    std::shared_ptr<HostScript> script_ = HostScript::Over(*host_);
    casehost::Case* other_case_ = nullptr;
    casehost::Case* case_ = nullptr;
    // Of the case, by the names that they were opened with.
    host::Viewable* bystander_ = nullptr;
    host::Viewable* operation_ = nullptr;
    host::Viewable* target_ = nullptr;
    host::Viewable* before_ = nullptr;
    host::Viewable* after_ = nullptr;
    std::string first_name_;
    bool address_taken_again_ = false;
};

}  // namespace fixtop::lifetimes
