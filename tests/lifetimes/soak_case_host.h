// SPDX-License-Identifier: Apache-2.0
#pragma once

// The case host as the simulator of the random client: up to three cases, connected and not.

#include <memory>
#include <string>
#include <vector>

#include "casehost/case_host.h"
#include "lifetimes/soak_world.h"
#include "live/case.h"
#include "support/host_script.h"

namespace fixtop::lifetimes {

class CaseHostWorld final : public World {
 public:
    CaseHostWorld(Dice& dice, Fail fail);
    ~CaseHostWorld() override;

    std::vector<int> Cases() const override;
    host::SimulationCase* Live(int case_number) const override;
    void Activate(int case_number) override;
    int FieldCount() const override { return 4; }
    void Disturb() override;
    void Order(Event event) override;

 private:
    struct OpenedCase {
        int number;
        casehost::Case* live;
    };

    host::HostServices& Services() override { return host_->Services(); }
    void MakeHost() override;
    void RunLoop() override;
    void Refill() override;
    void Forget() override { cases_.clear(); }

    const OpenedCase* Find(int case_number) const;
    void OpenCase();
    void WatchTurns();
    void Close(std::size_t index);
    void Delete(OpenedCase& of);
    void Rename(OpenedCase& of);
    void Add(OpenedCase& of);
    void Replace(OpenedCase& of);
    void Move(OpenedCase& of);
    void AddNamed(OpenedCase& of, const std::string& name, int holder);
    casehost::ObjectData StreamOf(int number) const;
    casehost::ObjectData OperationOf(int number);

    std::unique_ptr<casehost::CaseHost> host_;
    std::shared_ptr<HostScript> script_;
    int turns_ = 0;  // of the host's loop since the last Rest
    int next_case_ = 0;
    std::vector<OpenedCase> cases_;
};

}  // namespace fixtop::lifetimes
