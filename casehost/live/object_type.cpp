#include "live/object_type.h"

#include <map>
#include <memory>
#include <string>

#include "casehost/unit_op_names.h"

namespace fixtop::casehost::types {

namespace {

struct Known {
    const char* word;
    const char* base;
};

// A class stands below its base.
constexpr Known kKnown[] = {
    {"ViewableObject", nullptr},
    {"SimulationCase", "ViewableObject"},
    {"OnlineConnectivityManager", "ViewableObject"},
    {"RTIVariable", "ViewableObject"},
    {"SimulationObject", "ViewableObject"},
    {"FlowSheet", "SimulationObject"},
    {"FlowSheetSolver", "SimulationObject"},
    {"BasisManager", "SimulationObject"},
    {"HovexCorrelationObject", "SimulationObject"},
    {"ReactionObject", "SimulationObject"},
    {"ConversionReactionObject", "ReactionObject"},
    {"EquilibriumReactionObject", "ReactionObject"},
    {"KineticReactionObject", "ReactionObject"},
    {"HeterogeneousReactionObject", "ReactionObject"},
    {"ProcessDataTableObject", "SimulationObject"},
    {"UtilityObject", "SimulationObject"},
    {"EnvelopeUtilityObject", "UtilityObject"},
    {"BPTableUtilityObject", "UtilityObject"},
    {"FlowSheetObject", "SimulationObject"},
    {"StreamObject", "FlowSheetObject"},
    {words::kMaterialStream, "StreamObject"},
    {words::kEnergyStream, "StreamObject"},
    {"UnitOpObject", "FlowSheetObject"},
    {words::kTemplate, "UnitOpObject"},
    {words::kPipe, "UnitOpObject"},
    {words::kCompressor, "UnitOpObject"},
    {words::kExpander, "UnitOpObject"},
    {words::kSeparator, "UnitOpObject"},
    {words::kThreePhaseSeparator, "UnitOpObject"},
    {words::kTank, "UnitOpObject"},
    {words::kValve, "UnitOpObject"},
    {words::kPump, "UnitOpObject"},
    {words::kHeatExchanger, "UnitOpObject"},
    {words::kMixer, "UnitOpObject"},
    {words::kTee, "UnitOpObject"},
    {words::kDistillation, "UnitOpObject"},
    {words::kColumn, "UnitOpObject"},
    {words::kConversionReactor, "UnitOpObject"},
    {words::kEquilibriumReactor, "UnitOpObject"},
    {words::kGibbsReactor, "UnitOpObject"},
    {words::kHeater, "UnitOpObject"},
    {words::kCooler, "UnitOpObject"},
};

using Records = std::map<std::string, std::unique_ptr<ObjectType>, std::less<>>;

Records MakeKnown() {
    Records records;
    for (const Known& known : kKnown) {
        const ObjectType* base = known.base ? records.at(known.base).get() : nullptr;
        records[known.word] = std::make_unique<ObjectType>(known.word, base);
    }
    return records;
}

const Records& KnownRecords() {
    static const Records records = MakeKnown();
    return records;
}

// Words that files brought along; one map for each family, since the same word may stand for a
// unit operation in one file and for a utility in another.
Records& MadeRecords(TypeFamily family) {
    static Records made[5];
    return made[static_cast<int>(family)];
}

const ObjectType* FamilyBase(TypeFamily family) {
    switch (family) {
        case TypeFamily::unit_op:
            return UnitOp();
        case TypeFamily::utility:
            return Utility();
        case TypeFamily::data_table:
            return DataTable();
        case TypeFamily::reaction:
            return Reaction();
        case TypeFamily::published:
            return Published();
    }
    return Viewable();
}

const ObjectType* Get(const char* word) {
    return KnownRecords().at(word).get();
}

}  // namespace

const ObjectType* Viewable() {
    static const ObjectType* const type = Get("ViewableObject");
    return type;
}
const ObjectType* SimulationObject() {
    static const ObjectType* const type = Get("SimulationObject");
    return type;
}
const ObjectType* FlowSheetObject() {
    static const ObjectType* const type = Get("FlowSheetObject");
    return type;
}
const ObjectType* Stream() {
    static const ObjectType* const type = Get("StreamObject");
    return type;
}
const ObjectType* MaterialStream() {
    static const ObjectType* const type = Get(words::kMaterialStream);
    return type;
}
const ObjectType* UnitOp() {
    static const ObjectType* const type = Get("UnitOpObject");
    return type;
}
const ObjectType* TemplateOp() {
    static const ObjectType* const type = Get(words::kTemplate);
    return type;
}
const ObjectType* Correlation() {
    static const ObjectType* const type = Get("HovexCorrelationObject");
    return type;
}
const ObjectType* FlowSheet() {
    static const ObjectType* const type = Get("FlowSheet");
    return type;
}
const ObjectType* Solver() {
    static const ObjectType* const type = Get("FlowSheetSolver");
    return type;
}
const ObjectType* Case() {
    static const ObjectType* const type = Get("SimulationCase");
    return type;
}
const ObjectType* Basis() {
    static const ObjectType* const type = Get("BasisManager");
    return type;
}
const ObjectType* OnlineManager() {
    static const ObjectType* const type = Get("OnlineConnectivityManager");
    return type;
}
const ObjectType* Utility() {
    static const ObjectType* const type = Get("UtilityObject");
    return type;
}
const ObjectType* DataTable() {
    static const ObjectType* const type = Get("ProcessDataTableObject");
    return type;
}
const ObjectType* Reaction() {
    static const ObjectType* const type = Get("ReactionObject");
    return type;
}
const ObjectType* Published() {
    static const ObjectType* const type = Get("RTIVariable");
    return type;
}

const ObjectType* Find(std::string_view word) {
    const Records& known = KnownRecords();
    if (const auto found = known.find(word); found != known.end()) return found->second.get();
    for (TypeFamily family : {TypeFamily::unit_op, TypeFamily::utility, TypeFamily::data_table,
                              TypeFamily::reaction, TypeFamily::published}) {
        const Records& made = MadeRecords(family);
        if (const auto found = made.find(word); found != made.end()) return found->second.get();
    }
    return nullptr;
}

const ObjectType* FindOrMake(std::string_view word, TypeFamily family) {
    const Records& known = KnownRecords();
    if (const auto found = known.find(word); found != known.end()) return found->second.get();
    Records& made = MadeRecords(family);
    if (const auto found = made.find(word); found != made.end()) return found->second.get();
    auto type = std::make_unique<ObjectType>(host::Text(std::string(word)), FamilyBase(family));
    return (made[std::string(word)] = std::move(type)).get();
}

}  // namespace fixtop::casehost::types
