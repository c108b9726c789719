// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "case_session.h"
#include "flowsheets.h"
#include "report_rows.h"
#include "table.h"
#include "unit_choice.h"
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

struct Flows {
    std::vector<std::string> streams;
    Sum mass, heat, heat_with_formation, energy;
};

struct Balance {
    Flows in, out;
    std::vector<std::string> energy_streams;
};

// The two lists of streams and what of them counts.
struct StreamList {
    const char* list;
    bool is_material;
};
constexpr StreamList kStreamLists[] = {{"Stream", true}, {"HeatStream", false}};

// What a unit operation of a class adds to its streams or takes from them: it counts where no
// energy stream tells of it. A duty of an exchanger stays inside of it.
struct DutyRow {
    const char* of_class;
    const char* path;
    bool is_added;
    const char* kind = nullptr;  // attribute that has this word
    const char* word = nullptr;
};
constexpr DutyRow kDuties[] = {
    {"QSIHeaterCooler", "Duty", true, "HeaterOrCooler", "Heater"},
    {"QSIHeaterCooler", "Duty", false, "HeaterOrCooler", "Cooler"},
    {"QSICompressor", "Power", true, "CompressorOrExpander", "Compressor"},
    {"QSICompressor", "Power", false, "CompressorOrExpander", "Expander"},
    {"QSIPump", "Power", true},
    {"QSISeparator", "Duty", true},
    {"QSIConversionReactor", "Duty", true},
    {"QSIEquilibriumReactor", "Duty", true},
    {"QSIGibbsReactor", "Duty", true},
    {"QSIDistillationColumn", "ReboilerDuty", true},
    {"QSIDistillationColumn", "CondenserDuty", false},
};

// What is heat of formation before a reaction is heat behind it.
constexpr std::string_view kReactors[] = {"QSIConversionReactor", "QSIEquilibriumReactor",
                                          "QSIGibbsReactor"};

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
FIValue RelativeError(const Sum& in, const Sum& out) {
    const double most = std::max(std::abs(in.value), std::abs(out.value));
    if (!in.is_known || !out.is_known) return {};
    return FIValue::OfReal(most == 0 ? 0 : (in.value - out.value) / most);
}

Sum operator+(const Sum& a, const Sum& b) {
    return {a.value + b.value, a.is_known && b.is_known};
}

// Adds them to the one side or to the other; whether there is any.
bool AddDuties(const Node& unit, const std::string& of_class, Sum& in, Sum& out) {
    bool has_any = false;
    for (const DutyRow& row : kDuties) {
        if (of_class != row.of_class) continue;
        if (row.kind && TextAt(unit, row.kind) != row.word) continue;
        const auto duty = NumberAt(unit, row.path);
        if (!duty) continue;
        (row.is_added ? in : out).Add(duty);
        has_any = true;
    }
    return has_any;
}

FIValue EnergyError(const Node& unit, const std::string& of_class, const Balance& balance) {
    const bool reacts = std::ranges::find(kReactors, of_class) != std::end(kReactors);
    Sum in = reacts ? balance.in.heat_with_formation : balance.in.heat;
    Sum out = reacts ? balance.out.heat_with_formation : balance.out.heat;
    const bool told = balance.in.energy.is_known && balance.out.energy.is_known;
    if (told && !balance.energy_streams.empty()) {
        return RelativeError(in + balance.in.energy, out + balance.out.energy);
    }
    if (!AddDuties(unit, of_class, in, out) && !told) return {};
    return RelativeError(in, out);
}

std::string Joined(const std::vector<std::string>& names) {
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
    return all;
}

class Units final : public Word {
 public:
    void Declare(CLI::App& app) override {
        units_.Declare(app);
        AddJson(app, json_);
    }

    ExitCode Run(CommandContext& around) override {
        try {
            units_.Use(around.session->OpenCase());
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
        Gather(around.session->Top());
        const Table whole = Whole(around.session->Top());
        (json_ ? WriteJson : WritePlain)(whole, around.out);
        if (whole.rows.empty()) around.out.Note("the case has no unit operations to show");
        TellUnitsWithoutClass(around.session->Top(), around.out);
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
        Flows& flows = goes_in ? balance.in : balance.out;
        const auto heat = NumberAt(stream, "HeatFlow");
        if (!is_material) {
            balance.energy_streams.push_back((goes_in ? "+" : "-") + name);
            flows.energy.Add(heat);
            return;
        }
        flows.streams.push_back(name);
        const auto mass = NumberAt(stream, "MassFlow");
        flows.mass.Add(mass);
        if (mass == 0) return;  // without flow there is no enthalpy
        flows.heat.Add(heat);
        flows.heat_with_formation.Add(NumberAt(stream, "TotalEnergyFlow"));
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
            table.rows.push_back({unit.name, unit.path, CellsOf(unit.node, balances_[unit.name])});
        });
        return table;
    }
    // Without any material stream there is nothing to balance.
    std::vector<std::optional<TableCell>> CellsOf(const Node& unit, const Balance& balance) const {
        const auto text = [](const std::string& of) {
            return TableCell{FIValue(of.c_str()), "", false};
        };
        const std::string of_class = ClassOf(unit.Type());
        const bool flows = !balance.in.streams.empty() || !balance.out.streams.empty();
        return {text(of_class),
                text(Joined(balance.in.streams)),
                text(Joined(balance.out.streams)),
                text(Joined(balance.energy_streams)),
                DutyOf(unit),
                TableCell{flows ? RelativeError(balance.in.mass, balance.out.mass) : FIValue(), "",
                          false},
                TableCell{flows ? EnergyError(unit, of_class, balance) : FIValue(), "", false}};
    }
    std::optional<TableCell> DutyOf(const Node& unit) const {
        const auto place = unit.Find("Duty[(type)=Real]");
        if (!place) return std::nullopt;
        client::Reading reading = place->node.Read(units_.UnitOf(place->node));
        return TableCell{std::move(reading.value), std::move(reading.unit), reading.stale};
    }

    UnitChoice units_;
    bool json_ = false;
    std::map<std::string, Balance> balances_;
};

}  // namespace

std::unique_ptr<Word> MakeUnits() {
    return std::make_unique<Units>();
}

}  // namespace fixtop
