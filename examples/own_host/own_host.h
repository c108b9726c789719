// SPDX-License-Identifier: Apache-2.0
#pragma once

// A simulator's side in small: one case with a flowsheet of streams, which come and go. It includes
// nothing but fixtop/host/; docs/hosts.md goes through it.

#include <fixtop/host/basic_host.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace own {

using namespace fixtop::host;

enum UnitTypes : VarType { kTemperature = 1, kPressure = 2 };

class Stream : public BasicObject<Viewable> {
 public:
    Stream(const char* name, Viewable* flowsheet, double temperature_C, double pressure_kPa)
        : BasicObject(name, kMaterialStreamType, flowsheet), values_{temperature_C, pressure_kPa} {
        DescribeRow(0, "Temperature", kTemperature);
        DescribeRow(1, "Pressure", kPressure);
    }
    virtual ~Stream() = default;
    const LinkedList* VariableNames() override { return &names_; }
    VariableNameInfo* FindVariableName(const VarDescription& variable) override {
        return IsOwn(variable) ? &rows_[variable.Number()] : nullptr;
    }
    double GetRealValue(const VarDescription& variable) override {
        return IsOwn(variable) ? values_[variable.Number()] : kEmptyReal;
    }
    void SetRealValue(const VarDescription& variable, double value) override {
        if (IsOwn(variable)) values_[variable.Number()] = value;
    }

 private:
    static bool IsOwn(const VarDescription& variable) {
        return !variable.IsEmpty() && !variable.NextPart() && variable.Kind() == kPartReal &&
               variable.Number() >= 0 && variable.Number() < 2;
    }
    void DescribeRow(int number, const char* name, VarType unit_type) {
        VarDescription::Facts facts;
        facts.moniker = Text(":Double." + std::to_string(number));
        facts.kind = kPartReal;
        facts.number = number;
        facts.type = facts.unit_type = unit_type;
        rows_[number].name = name;
        rows_[number].description = VarDescription(facts);
        names_.Add(&rows_[number]);
    }
    double values_[2];  // C, kPa
    VariableNameInfo rows_[2];
    BasicList names_;
};

class MainFlowSheet final : public BasicObject<FlowSheet> {
 public:
    explicit MainFlowSheet(Viewable* of_case) : BasicObject("Main", kSimulationType, of_case) {}
    FlowSheetObjectIterator Objects() override { return FlowSheetObjectIterator(&objects_); }
    FlowSheetSolver* Solver() override { return nullptr; }

    Stream& Add(std::unique_ptr<Stream> stream) {
        streams_.push_back(std::move(stream));
        objects_.Add(static_cast<Viewable*>(streams_.back().get()));
        return *streams_.back();
    }
    // It stays readable until Bury.
    void Delete(const Stream& stream) {
        const auto at = std::find_if(streams_.begin(), streams_.end(),
                                     [&](const auto& each) { return each.get() == &stream; });
        objects_.Remove(static_cast<const Viewable*>(&stream));
        deleted_.push_back(std::move(*at));
        streams_.erase(at);
    }
    void Bury() { deleted_.clear(); }
    const std::vector<std::unique_ptr<Stream>>& Streams() const { return streams_; }
    bool Has(std::uint64_t identity) const {
        const auto is_it = [&](const auto& stream) { return stream->Identity() == identity; };
        return Identity() == identity || std::any_of(streams_.begin(), streams_.end(), is_it);
    }

 private:
    std::vector<std::unique_ptr<Stream>> streams_, deleted_;
    BasicList objects_;
};

class Case final : public BasicCase {
 public:
    Case() : BasicCase("Plant", {"plant", ""}) {}
    FlowSheet* MainFlowSheet() override { return &flowsheet_; }
    own::MainFlowSheet& Streams() { return flowsheet_; }

 private:
    own::MainFlowSheet flowsheet_{this};
};

class Services final : public BasicServices {
 public:
    // The default unit of each type is the internal one here.
    Services()
        : BasicServices({{kTemperature, "Temperature", {{1, 0, "C"}, {1, -273.15, "K"}}},
                         {kPressure, "Pressure", {{1, 0, "kPa"}, {100, 0, "bar"}}}}) {}

    // ---- The simulator's own side ----
    Stream& Add(const char* name, double temperature_C, double pressure_kPa) {
        return Add(std::make_unique<Stream>(name, &case_.Streams(), temperature_C, pressure_kPa));
    }
    Stream& Add(std::unique_ptr<Stream> stream) {
        revision_ = NewNumber();
        return case_.Streams().Add(std::move(stream));
    }
    void Delete(const Stream& stream) {
        case_.Streams().Delete(stream);
        revision_ = NewNumber();
    }
    const std::vector<std::unique_ptr<Stream>>& Streams() { return case_.Streams().Streams(); }
    // With no call of the module on the stack.
    void RunLoop() { case_.Streams().Bury(); }

    // ---- What Fixtop asks ----
    Text RelativeMoniker(Viewable*, Viewable* to, bool) override {
        if (!to || !to->Type()->IsA(&kStreamType)) return {};
        return Text("/FlowSht.1/StreamObject.400(") + to->GetName() + ")";
    }
    const std::uint64_t* StructureRevision() override { return &revision_; }
    bool Lives(std::uint64_t identity) override {
        return case_.Identity() == identity || case_.Streams().Has(identity);
    }

 private:
    SimulationCase* ActiveCase() override { return &case_; }
    Text SessionText(bool) override { return "own host"; }

    std::uint64_t revision_ = NewNumber();
    Case case_;
};

}  // namespace own
