// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_own_host.h"

#include <algorithm>
#include <utility>

#include "fixtop/fixtop.h"

namespace fixtop::lifetimes {

namespace {

constexpr int kStreamsAtFirst = 4;
constexpr double kPressure_kPa = 100;

}  // namespace

// One whose stores the world hears of.
class OwnHostWorld::Stream final : public own::Stream {
 public:
    Stream(OwnHostWorld& world, const char* name, host::Viewable* flowsheet, double temperature_C)
        : own::Stream(name, flowsheet, temperature_C, kPressure_kPa), world_(world) {}
    void SetRealValue(const host::VarDescription& variable, double value) override {
        world_.Store();
        own::Stream::SetRealValue(variable, value);
    }

 private:
    OwnHostWorld& world_;
};

OwnHostWorld::OwnHostWorld(Dice& dice, Fail fail) : World(dice, std::move(fail)) {
    Start();
}

OwnHostWorld::~OwnHostWorld() {
    FixtopInstallHost(nullptr);
}

void OwnHostWorld::MakeHost() {
    host_.reset();
    host_ = std::make_unique<own::Services>();
    ++case_;
}

void OwnHostWorld::Refill() {
    while (host_->Streams().size() < kStreamsAtFirst) Add(RandomName());
}

host::SimulationCase* OwnHostWorld::Live(int case_number) const {
    return case_number == case_ ? host_->pSession()->ActiveCase() : nullptr;
}

void OwnHostWorld::Add(const std::string& name) {
    if (HasName(case_, name)) return;
    const int number = NewThing(case_, name, -1, false);
    host::FlowSheet* sheet = Live(case_)->MainFlowSheet();
    const Change change(*this, case_);
    host_->Add(std::make_unique<Stream>(*this, name.c_str(), sheet, number + 0.5));
    Match(sheet, case_, -1);
}

void OwnHostWorld::Delete(int number) {
    const auto& streams = host_->Streams();
    const auto is_it = [&](const auto& each) { return each.get() == At(number).object; };
    const auto found = std::find_if(streams.begin(), streams.end(), is_it);
    const Change change(*this, case_);
    BuryThing(number);
    host_->Delete(**found);
}

void OwnHostWorld::Replace(int number) {
    const std::string name = At(number).name;
    Delete(number);
    Add(name);
}

void OwnHostWorld::Store() {
    for (const Event& event : std::exchange(in_store_, {})) event();
}

void OwnHostWorld::Disturb() {
    const int roll = dice_.Roll(150);
    const int number = Any(case_, false);
    if (roll == 0) return TakeOut();
    if (roll > 40 || number < 0) return Add(RandomName());
    if (roll > 20) return Delete(number);
    Replace(number);
}

}  // namespace fixtop::lifetimes
