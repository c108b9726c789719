#include "semantic/function_table.h"

#include "fixtop/semantic_functions.h"

namespace fixtop {

namespace {

// The compiler takes the kind from the function.
#define NAMED(function) \
    { #function, function }

constexpr NamedFunction kFunctions[] = {
    NAMED(Find1),
    NAMED(CTFlowsheets),
    NAMED(CTStreams),
    NAMED(CTHeatStreams),
    NAMED(CTPhaseEnvelopes),
    NAMED(CTDistillationCurves),
    NAMED(CTUnitOperations),
    NAMED(CTComponentArray),
    NAMED(CTKVMLArray),
    NAMED(CTKVLArray),
    NAMED(CTKVL2Array),
    NAMED(CTKL1L2Array),
    NAMED(CTComponent),
    NAMED(CTMoleFraction),
    NAMED(CTMassFraction),
    NAMED(CTVolumeFraction),
    NAMED(CTKVML),
    NAMED(CTKVL),
    NAMED(CTKVL2),
    NAMED(CTKL1L2),
    NAMED(CTPhaseComponentArray),
    NAMED(CTPhaseComponent),
    NAMED(CTPhaseMoleFraction),
    NAMED(CTPhaseMassFraction),
    NAMED(CTPhaseVolumeFraction),
    NAMED(CTFluidPhaseComponentArray),
    NAMED(CTFluidPhaseComponent),
    NAMED(CTVaporPhaseComponentArray),
    NAMED(CTLiquidPhaseComponentArray),
    NAMED(CTLiquid2PhaseComponentArray),
    NAMED(CTVaporPhaseComponent),
    NAMED(CTLiquidPhaseComponent),
    NAMED(CTLiquid2PhaseComponent),
};

#undef NAMED

}  // namespace

std::span<const NamedFunction> SemanticFunctionTable() {
    return kFunctions;
}

}  // namespace fixtop
