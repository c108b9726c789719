// SPDX-License-Identifier: Apache-2.0
#include "semantic/function_call.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <stdexcept>
#include <type_traits>
#include <variant>

#include "semantic/function_table.h"
#include "semantic/raw_tree.h"

namespace fixtop {

namespace {

// How many frames deeper a call may leave the iterator, at least and at most.
struct Frames {
    int least;
    int most;
};

// Of functions by name. An element is reached when its index is below the count.
struct DepthRow {
    const char* functions;
    Frames reached;
    Frames failed;
    // A step that is always there, a list that is never empty.
    bool always = false;
};

const DepthRow kDepths[] = {
    // The raw tree; stays where there is none.
    {"Find1", {0, 1}, {0, 0}, true},

    // An element of a container.
    {"CTFlowsheets CTStreams CTHeatStreams CTPhaseEnvelopes CTDistillationCurves "
     "CTUnitOperations",
     {2, 2},
     {0, 2}},

    // Compositions: the lists stay, the steps go into their array.
    {"CTComponentArray CTKVMLArray CTKVLArray CTKVL2Array CTKL1L2Array CTPhaseComponentArray "
     "CTFluidPhaseComponentArray CTVaporPhaseComponentArray CTLiquidPhaseComponentArray "
     "CTLiquid2PhaseComponentArray CTCondRebVesselComponentArray CTCondRebVaporComponentArray "
     "CTCondRebLiquidComponentArray",
     {0, 0},
     {0, 0}},
    {"CTComponent CTMoleFraction CTMassFraction CTVolumeFraction CTKVML CTKVL CTKVL2 CTKL1L2",
     {2, 2},
     {0, 0}},
    {"CTPhaseComponent CTPhaseMoleFraction CTPhaseMassFraction CTPhaseVolumeFraction",
     {3, 3},
     {0, 1}},
    {"CTFluidPhaseComponent CTCondRebVesselComponent CTCondRebVaporComponent "
     "CTCondRebLiquidComponent",
     {2, 2},
     {0, 1}},
    {"CTVaporPhaseComponent CTLiquidPhaseComponent CTLiquid2PhaseComponent", {3, 3}, {0, 2}},

    // Elements that are variables.
    {"CTPipeSegment CTPipeCell CTPipeProfile CTTeeNozzle CTMixerNozzle CTTeeSplit CTEntrainment "
     "CTHeaterZone CTHeaterProfile CTPerfCurvePoint CTSpeedFlowCurve CTValveCurve "
     "CTBubblePointCurve CTHydratePointCurve CTDewPointCurve CTReactionDenominatorTerm "
     "CTReactionComponentOrder CTActiveReactions CTLocalReaction CTLocalConvReaction "
     "CTLocalEquilReaction CTReactantBalance CTGibbsFlowSpec CTColumnStages CTColumnFeeds "
     "CTSectionTray CTColumnSideDraws CTCondNozzle CTRebNozzle",
     {0, 0},
     {0, 0}},
    {"CTNPSHCurvePoint CTCutPercent CTViscosity", {0, 0}, {0, 0}, true},

    // Elements of an array.
    {"CTComprPerfCurve CTEfficiencyCurve CTNPSHCurve CTColumnCompMoleFrac CTReactions",
     {2, 2},
     {0, 1}},
    // Stays at the curve of the coefficients; there is none of the host at the last one.
    {"CTPumpCurve", {0, 2}, {0, 1}, true},
    // Of the selected stage; stays where none is.
    {"CTLiquidFromComposition", {0, 4}, {0, 3}},
    {"CTColumnComponentEfficiency", {0, 3}, {0, 2}},

    {"CTHeaterVF", {2, 2}, {0, 0}},
    {"CTExchangerHot CTExchangerCold", {0, 0}, {0, 0}, true},

    // To an object of that name: beside the owner, or in a list of a flowsheet above it. Failing,
    // they are left on the way: at the variable with the name, or where the object should be.
    {"CTCondVapor CTCondDistillate CTCondHeavyDistillate CTCondReflux CTRebBoilup CTRebLiquid "
     "CTRebLiquid2 CTRebVapor",
     {-1, 0},
     {-1, 3}},
    {"CTSideColumnBottoms CTPumparoundDraw CTPumparoundReturn", {-1, 0}, {-1, 1}},
    {"CTSideDrawFluid", {-1, 0}, {-1, 0}},
    {"CTSideColumnReboiler", {-1, 0}, {-1, 2}},
    // Also says yes to a name that leads nowhere.
    {"CTSideColumnDraw CTSideColumnReturn", {-1, 0}, {0, 0}},
};

const DepthRow& RowOf(const std::string& name) {
    for (const DepthRow& row : kDepths) {
        for (const std::string& each : SplitNames(row.functions)) {
            if (each == name) return row;
        }
    }
    throw std::invalid_argument("no depths of " + name);
}

template <class Function>
const NamedFunction& NamedOf(Function function) {
    for (const NamedFunction& named : SemanticFunctionTable()) {
        const auto* own = std::get_if<Function>(&named.function);
        if (own && *own == function) return named;
    }
    throw std::invalid_argument("a function without a name");
}

// ---- Outcomes

using Outcomes = std::vector<const char*>;

// Of success, then of failure.
const Outcomes kOfSteps = {"is there", "is not there", "moved", "failed to move"};
const Outcomes kOfLists = {"counted some", "counted none", "went to an element",
                           "went to none behind the last"};

std::map<std::string, std::set<std::string>>& Seen() {
    static std::map<std::string, std::set<std::string>> seen;
    return seen;
}

void See(const NamedFunction& named, const char* success, const char* failure, bool succeeded) {
    Seen()[std::string(named.name)].insert(succeeded ? success : failure);
}

void ExpectFrames(const NamedFunction& named, const Frames& frames, int before,
                  FIIteratorBase& it) {
    EXPECT_LE(before + frames.least, it.Depth()) << named.name << ", left " << At(it);
    EXPECT_GE(before + frames.most, it.Depth()) << named.name << ", left " << At(it);
}

int CountHere(ArrayFunction function, FIIteratorBase& it) {
    const auto copy = Ref<FIIteratorBase>::Adopt(it.Copy());
    FIValue unused;
    return function(copy.Get(), &unused, kCountIndex);
}

bool Ask(const NamedFunction& named, SemanticFunction function, FIIteratorBase& it) {
    const std::string before = At(it);
    const bool there = function(&it, 0);
    EXPECT_EQ(before, At(it)) << named.name << " was only asked and answered " << there;
    See(named, kOfSteps[0], kOfSteps[1], there);
    return there;
}

int Count(const NamedFunction& named, ArrayFunction function, FIIteratorBase& it,
          FIValue* subclass) {
    const std::string before = At(it);
    const int count = function(&it, subclass, kCountIndex);
    EXPECT_EQ(before, At(it)) << named.name << " only counted, " << count;
    EXPECT_TRUE(count != 0 || !RowOf(std::string(named.name)).always) << named.name;
    See(named, kOfLists[0], kOfLists[1], count > 0);
    return count;
}

}  // namespace

bool Call(SemanticFunction function, FIIteratorBase* it, int move) {
    const NamedFunction& named = NamedOf(function);
    const DepthRow& row = RowOf(std::string(named.name));
    if (!move) {
        const bool there = Ask(named, function, *it);
        EXPECT_TRUE(there || !row.always) << named.name;
        return there;
    }
    const bool there = Ask(named, function, *Ref<FIIteratorBase>::Adopt(it->Copy()));
    const int before = it->Depth();
    const bool moved = function(it, move);
    EXPECT_TRUE(moved == there || named.asked_first)
        << named.name << " was there: " << there << ", moved: " << moved;
    EXPECT_TRUE(moved || !row.always) << named.name;
    ExpectFrames(named, moved ? row.reached : row.failed, before, *it);
    See(named, kOfSteps[2], kOfSteps[3], moved);
    return moved;
}

int Call(ArrayFunction function, FIIteratorBase* it, FIValue* subclass, int index) {
    const NamedFunction& named = NamedOf(function);
    if (index == kCountIndex) return Count(named, function, *it, subclass);
    const DepthRow& row = RowOf(std::string(named.name));
    const int before = it->Depth();
    if (index == kNextIndex) {
        const int answer = function(it, subclass, index);
        EXPECT_EQ(before, it->Depth()) << named.name << " stepped on";
        return answer;
    }
    const bool reached = index < CountHere(function, *it);
    const std::string list = Place(*it);
    const int answer = function(it, subclass, index);
    ExpectFrames(named, reached ? row.reached : row.failed, before, *it);
    EXPECT_EQ(list, Place(*it).substr(0, list.size())) << named.name << " left its list";
    See(named, kOfLists[2], kOfLists[3], reached);
    return answer;
}

std::vector<std::string> OutcomesNotSeen() {
    std::vector<std::string> missing;
    for (const NamedFunction& named : SemanticFunctionTable()) {
        const std::string name(named.name);
        const bool is_step = std::holds_alternative<SemanticFunction>(named.function);
        const Outcomes& outcomes = is_step ? kOfSteps : kOfLists;
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            // Every other outcome is one of failure; what is never empty has elements behind the
            // last one all the same.
            const bool may_be = i % 2 == 0 || !RowOf(name).always || (!is_step && i == 3);
            if (may_be && Seen()[name].count(outcomes[i]) == 0) {
                missing.push_back(name + " " + outcomes[i]);
            }
        }
    }
    return missing;
}

}  // namespace fixtop
