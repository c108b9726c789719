// SPDX-License-Identifier: Apache-2.0
#include "naming/object_type.h"

#include <array>
#include <map>
#include <memory>
#include <string>

namespace fixtop::casehost::types {

namespace {

constexpr const ObjectType* kNamed[] = {
    &kViewable,        &kCase,   &kOnlineManager,  &kPublished, &kSimulationObject, &kFlowSheet,
    &kSolver,          &kBasis,  &kCorrelation,    &kReaction,  &kDataTable,        &kUtility,
    &kFlowSheetObject, &kStream, &kMaterialStream, &kUnitOp,    &kTemplateOp};

struct Known {
    const char* word;
    const ObjectType* base;
};
constexpr Known kOthers[] = {
    {"ConversionReactionObject", &kReaction},
    {"EquilibriumReactionObject", &kReaction},
    {"KineticReactionObject", &kReaction},
    {"HeterogeneousReactionObject", &kReaction},
    {"EnvelopeUtilityObject", &kUtility},
    {"BPTableUtilityObject", &kUtility},
    {words::kEnergyStream, &kStream},
    {words::kPipe, &kUnitOp},
    {words::kCompressor, &kUnitOp},
    {words::kExpander, &kUnitOp},
    {words::kSeparator, &kUnitOp},
    {words::kThreePhaseSeparator, &kUnitOp},
    {words::kTank, &kUnitOp},
    {words::kValve, &kUnitOp},
    {words::kPump, &kUnitOp},
    {words::kHeatExchanger, &kUnitOp},
    {words::kMixer, &kUnitOp},
    {words::kTee, &kUnitOp},
    {words::kDistillation, &kUnitOp},
    {words::kColumn, &kUnitOp},
    {words::kConversionReactor, &kUnitOp},
    {words::kEquilibriumReactor, &kUnitOp},
    {words::kGibbsReactor, &kUnitOp},
    {words::kHeater, &kUnitOp},
    {words::kCooler, &kUnitOp},
};

using Records = std::map<std::string, std::unique_ptr<ObjectType>, std::less<>>;

const ObjectType* FindIn(const Records& records, std::string_view word) {
    const auto found = records.find(word);
    return found == records.end() ? nullptr : found->second.get();
}

const ObjectType* Add(Records& records, std::string_view word, const ObjectType* base) {
    auto type = std::make_unique<ObjectType>(host::Text(std::string(word)), base);
    return (records[std::string(word)] = std::move(type)).get();
}

const ObjectType* FindKnown(std::string_view word) {
    static const Records others = [] {
        Records made;
        for (const Known& each : kOthers) Add(made, each.word, each.base);
        return made;
    }();
    for (const ObjectType* type : kNamed) {
        if (type->ClassName().Str() == word) return type;
    }
    return FindIn(others, word);
}

// Words that files brought along; one map for each family, since the same word may stand for a
// unit operation in one file and for a utility in another.
struct Family {
    const ObjectType* base;
    Records made;
};
std::array<Family, 5>& Families() {
    static std::array<Family, 5> families = {
        {{&kUnitOp, {}}, {&kUtility, {}}, {&kDataTable, {}}, {&kReaction, {}}, {&kPublished, {}}}};
    return families;
}

}  // namespace

const ObjectType* Find(std::string_view word) {
    const ObjectType* type = FindKnown(word);
    for (const Family& family : Families()) {
        if (!type) type = FindIn(family.made, word);
    }
    return type;
}

const ObjectType* FindOrMake(std::string_view word, TypeFamily of) {
    Family& family = Families()[static_cast<std::size_t>(of)];
    const ObjectType* type = FindKnown(word);
    if (!type) type = FindIn(family.made, word);
    return type ? type : Add(family.made, word, family.base);
}

}  // namespace fixtop::casehost::types
