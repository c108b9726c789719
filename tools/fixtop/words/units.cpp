// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "case_session.h"
#include "flowsheets.h"
#include "table.h"
#include "words/makers.h"

namespace fixtop {

namespace {

// What goes through a unit operation. A sum is null as soon as one of its parts is not known.
struct Sum {
    double value = 0;
    bool is_known = true;

    void Add(const std::optional<double>& part) {
        is_known = is_known && part;
        value += part.value_or(0);
    }
};

struct Balance {
    std::vector<std::string> feeds, products, energy;
    Sum mass_in, mass_out, heat_in, heat_out, energy_in, energy_out;
};

// The two lists of streams and what of them counts.
struct StreamList {
    const char* list;
    bool is_material;
};
constexpr StreamList kStreamLists[] = {{"Stream", true}, {"HeatStream", false}};

std::optional<double> NumberAt(const Node& node, const char* path) {
    const auto place = node.Find(path);
    const FIValue value = place ? place->node.Read().value : FIValue();
    return value.IsNumber() ? std::optional(value.AsDouble()) : std::nullopt;
}

std::string TextAt(const Node& node, const char* path) {
    const auto place = node.Find(path);
    return place ? place->node.Text() : std::string();
}

// (in - out) over the larger of both; empty when a part is not known.
FIValue RelativeError(double in, double out, bool is_known) {
    const double most = std::max(std::abs(in), std::abs(out));
    if (!is_known) return {};
    return FIValue::OfReal(most == 0 ? 0 : (in - out) / most);
}

std::string Joined(const std::vector<std::string>& names) {
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
    return all;
}

class Units final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "--units", units_,
                "Set of units: Process, SI, Field; that of the case when it is left out");
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        try {
            if (!units_.empty()) around.session->OpenCase().UseUnitSet(units_);
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
        Gather(around.session->Top());
        (json_ ? WriteJson : WritePlain)(Whole(around.session->Top()), around.out);
        return ExitCode::kOk;
    }

 private:
    // What the streams say of the unit operations at their ends, by the names of these.
    void Gather(const Node& top) {
        for (const StreamList& each : kStreamLists) {
            ForEachObject(top, client::Pattern(each.list), [&](const FlowsheetObject& stream) {
                const std::string key = stream.node.Key();
                const std::string prefix = stream.name.substr(0, stream.name.size() - key.size());
                Add(stream.node, key, prefix + TextAt(stream.node, "DownstreamUnitOperation"),
                    each.is_material, true);
                Add(stream.node, key, prefix + TextAt(stream.node, "UpstreamUnitOperation"),
                    each.is_material, false);
            });
        }
    }
    void Add(const Node& stream, const std::string& name, const std::string& unit, bool is_material,
             bool goes_in) {
        Balance& balance = balances_[unit];
        const auto heat = NumberAt(stream, "HeatFlow");
        if (!is_material) {
            balance.energy.push_back((goes_in ? "+" : "-") + name);
            (goes_in ? balance.energy_in : balance.energy_out).Add(heat);
            return;
        }
        (goes_in ? balance.feeds : balance.products).push_back(name);
        (goes_in ? balance.mass_in : balance.mass_out).Add(NumberAt(stream, "MassFlow"));
        (goes_in ? balance.heat_in : balance.heat_out).Add(heat);
    }
    Table Whole(const Node& top) {
        Table table;
        table.headings = {"Class",
                          "Feeds",
                          "Products",
                          "Energy streams",
                          "Duty",
                          "Mass balance error",
                          "Energy balance error"};
        ForEachObject(top, client::Pattern("UnitOperation"), [&](const FlowsheetObject& unit) {
            table.rows.push_back(
                {unit.name, unit.node.Path(), CellsOf(unit.node, balances_[unit.name])});
        });
        return table;
    }
    static std::vector<std::optional<TableCell>> CellsOf(const Node& unit, const Balance& balance) {
        const auto text = [](const std::string& of) {
            return TableCell{FIValue(of.c_str()), "", false};
        };
        const bool mass = balance.mass_in.is_known && balance.mass_out.is_known;
        const bool heat = balance.heat_in.is_known && balance.heat_out.is_known &&
                          balance.energy_in.is_known && balance.energy_out.is_known;
        return {text(ClassOf(unit)),
                text(Joined(balance.feeds)),
                text(Joined(balance.products)),
                text(Joined(balance.energy)),
                DutyOf(unit),
                TableCell{RelativeError(balance.mass_in.value, balance.mass_out.value, mass), "",
                          false},
                TableCell{RelativeError(balance.heat_in.value + balance.energy_in.value,
                                        balance.heat_out.value + balance.energy_out.value, heat),
                          "", false}};
    }
    static std::optional<TableCell> DutyOf(const Node& unit) {
        const auto place = unit.Find("Duty");
        if (!place) return std::nullopt;
        client::Reading reading = place->node.Read();
        return TableCell{std::move(reading.value), std::move(reading.unit), reading.stale};
    }

    std::string units_;
    bool json_ = false;
    std::map<std::string, Balance> balances_;
};

}  // namespace

std::unique_ptr<Word> MakeUnits() {
    return std::make_unique<Units>();
}

}  // namespace fixtop
