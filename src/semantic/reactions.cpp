// SPDX-License-Identifier: Apache-2.0
// Reactions: the package with their kinetics, the sets that hold them active or not, and what a
// reactor makes of them. In package and sets several children have one key, so a list counts that
// key; a reactor has arrays.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

using semantic::ArrayList;
using semantic::CopyOf;
using semantic::CountChildren;
using semantic::Exported;
using semantic::NextTimes;
using semantic::ReadValue;
using semantic::ReadValueBelow;
using semantic::SeekNames;
using semantic::SeekOfKey;
using semantic::SetElementIndex;
using semantic::SetElementName;

namespace {

constexpr char kReactionList[] = "ReactionList";
constexpr char kReaction[] = "Reaction";

// ---- The package

// `rate` is the object below the reaction that has the rate data, none where it is the reaction.
struct ReactionClassRow {
    const char* type;
    const char* class_name;
    const char* rate;
};

constexpr ReactionClassRow kReactionClasses[] = {
    {"ConversionRxnObject", "QSIConversionReaction", ""},
    {"LHKineticRxnObject", "QSICatalyticRateReaction", "KineticBasis"},
    {"SimpleRateRxnObject", "QSISimpleRateReaction", "KineticBasis"},
    {"EquilibriumRxnObject", "QSIEquilibriumReaction", ""},
    {"KineticRxnObject", "QSIReversibleKineticReaction", ""},
};

void ClassifyReaction(FIIteratorBase& it, FIValue& subclass) {
    const FIValue type = ReadValueBelow(it, {"ReactionType"});
    FIValue rate;
    for (const ReactionClassRow& row : kReactionClasses) {
        if (!type.IsText() || std::strcmp(type.CStr(), row.type) != 0) continue;
        subclass.SetText(row.class_name);
        rate.SetText(row.rate);
    }
    it.SetVarText("rxnPath", rate);
}

int CountReactions(FIIteratorBase& it) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {kReactionList, kReaction})) return 0;
    int count = 1;
    while (semantic::NextOfKey(*walker, kReaction)) ++count;
    return count;
}

// The value of child number `index` of this key.
void SetKeyedValue(FIIteratorBase& it, const char* variable, const char* key, int index) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (SeekOfKey(*walker, key, index)) it.SetVarText(variable, ReadValue(*walker));
}

// The exponents of all rows are one list.
void SetExponent(FIIteratorBase& it, int component) {
    FIValue row;
    FIValue components;
    if (!it.GetVarText("row", row) || !it.GetVarText("ncomp", components)) return;
    const auto place = std::int64_t{components.AsInt()} * row.AsInt() + component;
    if (!std::in_range<int>(place)) return;
    SetKeyedValue(it, "exponent", "Exponents", static_cast<int>(place));
}

void SetReactant(FIIteratorBase& it, int component) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {"KineticBasis", "ReactantList", "NumberOfReactants"})) return;
    if (component >= ReadValue(*walker).AsInt()) return;
    walker->Up();
    if (!SeekOfKey(*walker, "Reactant", component)) return;
    if (!SeekNames(*walker, {"ComponentName"})) return;
    it.SetVarText("component", ReadValue(*walker));
}

// ---- Sets

// The half of a set's reactions that is active, and the other one.
struct SetHalf {
    const char* list;
    const char* count;
    const char* reaction;
};

constexpr SetHalf kActive = {"ActiveReactionList", "NumberOfActiveRxns", "ActiveReaction"};
constexpr SetHalf kInactive = {"InactiveReactionList", "NumberOfInactiveRxns", "InactiveReaction"};

int CountOf(FIIteratorBase& it, const SetHalf& half) {
    return ReadValueBelow(it, {half.list, half.count}).AsInt();
}

// The active ones come first.
void SetReactionOfSet(FIIteratorBase& it, int index) {
    const int active = std::max(CountOf(it, kActive), 0);
    const bool is_active = index < active;
    const SetHalf& half = is_active ? kActive : kInactive;
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {half.list, half.reaction})) return;
    if (!NextTimes(*walker, is_active ? index : index - active)) return;
    it.SetVarText("RxnID", semantic::AsText(ReadValue(*walker)));
    SetElementIndex(it, "RxnActive", is_active);
}

// The ranks stand in the order of the whole set.
void SetRank(FIIteratorBase& it, int index) {
    constexpr char kVariable[] = "RxnRank";
    it.SetVarText(kVariable, FIValue());
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {"ReactionRanks", "ReactionRankSet"})) return;
    if (!NextTimes(*walker, index) || !SeekNames(*walker, {"ReactionRank"})) return;
    const FIValue rank = ReadValue(*walker);
    if (!rank.IsNull()) it.SetVarText(kVariable, FIValue::OfReal(rank.AsDouble()));
}

// ---- Reactors

// Up to the top and down to the number of sets. The raw tree may begin below the top.
bool SeekSetCount(FIIteratorBase& it) {
    constexpr char kSetCount[] = "Basis.ReactionPackage.ReactionSetList.NumberOfReactionSets";
    while (it.Up()) {
    }
    return SeekNames(it, {kSetCount}) || SeekNames(it, {"appModel", kSetCount});
}

// To the set of this name, from the number of sets, which stands beside them.
bool SeekSet(FIIteratorBase& it, const FIValue& name) {
    const int count = ReadValue(it).AsInt();
    it.Up();
    for (int i = 0; i < count && SeekOfKey(it, "ReactionSet", i); ++i) {
        if (ReadValueBelow(it, {"ReactionSetName"}).Compare(name) == 0) return true;
        it.Up();
    }
    return false;
}

// A reactor tells the set that it uses, and the set its active reactions.
void SetReactionName(FIIteratorBase& it, int index) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    const FIValue set = ReadValueBelow(it, {"Reaction Set"});
    if (set.IsNull() || !SeekSetCount(*walker) || !SeekSet(*walker, set)) return;
    if (!SeekNames(*walker, {kActive.list})) return;
    if (SeekOfKey(*walker, kActive.reaction, index)) it.SetVarText("RxnName", ReadValue(*walker));
}

// Components are told by the elements of the composition of the vessel.
void SetComponentName(FIIteratorBase& it, const char* variable, int index) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {"Vessel Mole Frac"}) || !walker->Down(index)) return;
    FIValue name;
    walker->GetAttribute(FIValue("id"), name);
    it.SetVarText(variable, name);
}

}  // namespace

int CTReactions(FIIteratorBase* it, FIValue* subclass, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountReactions(*it);
        if (SeekNames(*it, {kReactionList}) && SeekOfKey(*it, kReaction, index)) {
            ClassifyReaction(*it, *subclass);
        }
        return index;
    });
}

int CTReactionDenominatorTerm(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return ReadValueBelow(*it, {"NumberOfRows"}).AsInt();
        SetKeyedValue(*it, "A", "PreFactor", index);
        SetKeyedValue(*it, "E", "ActivationEnergy", index);
        return SetElementIndex(*it, "row", index);
    });
}

int CTReactionComponentOrder(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) {
            const int reactants = ReadValueBelow(*it, {"NumberOfReactants"}).AsInt();
            return SetElementIndex(*it, "ncomp", reactants);
        }
        SetExponent(*it, index);
        SetReactant(*it, index);
        return index;
    });
}

int CTActiveReactions(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) {
            return semantic::WrappedSum(CountOf(*it, kActive), CountOf(*it, kInactive));
        }
        SetReactionOfSet(*it, index);
        SetRank(*it, index);
        return index;
    });
}

int CTLocalReaction(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountChildren(*it, {"\"Est. Molar Extent\""});
        SetReactionName(*it, index);
        SetElementIndex(*it, "RxnIndex", index);
        return SetElementName(*it, "RxnElemNum", index);
    });
}

int CTReactantBalance(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index != kCountIndex) SetComponentName(*it, "CompName", index);
        return ArrayList(*it, index, "BalanceElemNum", {"Total Inflow"});
    });
}

int CTLocalConvReaction(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return ArrayList(*it, index, "ConvRxnElemNum", {kReaction}); });
}

int CTLocalEquilReaction(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index != kCountIndex) SetElementIndex(*it, "EquilRxnNum", index);
        return ArrayList(*it, index, "EquilRxnElemNum", {"Temperature Approach"});
    });
}

int CTGibbsFlowSpec(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index != kCountIndex) SetComponentName(*it, "GibbsFlowSpecComponentName", index);
        return ArrayList(*it, index, "GibbsFlowSpecElemNum", {"Frac Spec"});
    });
}

}  // namespace fixtop
