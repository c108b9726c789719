// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host of the samples as the simulator of the random client: one case of streams.

#include <memory>
#include <string>
#include <vector>

#include "lifetimes/soak_world.h"
#include "own_host/own_host.h"

namespace fixtop::lifetimes {

class OwnHostWorld final : public World {
 public:
    OwnHostWorld(Dice& dice, Fail fail);
    ~OwnHostWorld() override;

    std::vector<int> Cases() const override { return {case_}; }
    host::SimulationCase* Live(int case_number) const override;
    void Activate(int) override {}
    int FieldCount() const override { return 2; }
    void Disturb() override;
    void Order(Event event) override { in_store_.push_back(std::move(event)); }

 private:
    class Stream;

    host::HostServices& Services() override { return *host_; }
    void MakeHost() override;
    void RunLoop() override { host_->RunLoop(); }
    void Refill() override;
    void Forget() override {}

    void Add(const std::string& name);
    void Delete(int number);
    void Replace(int number);
    // In the middle of each store.
    void Store();

    std::unique_ptr<own::Services> host_;
    int case_ = -1;
    std::vector<Event> in_store_;
};

}  // namespace fixtop::lifetimes
