#pragma once

// The functions that a map file may name. Each keeps to fixtop/semantic_function.h; which
// variables and nodes it uses stands beside it. The module exports them under these plain names,
// and function_table.cpp lists them for maps.

#include "fixtop/iterator.h"
#include "fixtop/semantic_function.h"
#include "fixtop/value.h"

namespace fixtop {

extern "C" {

// To the raw tree below the top node. Always true.
bool Find1(FIIteratorBase* it, int move);

// ---- Lists of a flowsheet: `it` goes to the element

int CTFlowsheets(FIIteratorBase* it, FIValue* subclass, int index);
int CTStreams(FIIteratorBase* it, FIValue* subclass, int index);
int CTHeatStreams(FIIteratorBase* it, FIValue* subclass, int index);
int CTPhaseEnvelopes(FIIteratorBase* it, FIValue* subclass, int index);
int CTDistillationCurves(FIIteratorBase* it, FIValue* subclass, int index);
// The one list whose elements differ in class: `subclass` ends as the class of the element, after a
// count as that of the last one. Variables of the class: semantic/unit_operation_class.h.
int CTUnitOperations(FIIteratorBase* it, FIValue* subclass, int index);

// ---- Components of a stream: the lists set CmpCnt, the steps read it

int CTComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
int CTKVMLArray(FIIteratorBase* it, FIValue* subclass, int index);
int CTKVLArray(FIIteratorBase* it, FIValue* subclass, int index);
int CTKVL2Array(FIIteratorBase* it, FIValue* subclass, int index);
int CTKL1L2Array(FIIteratorBase* it, FIValue* subclass, int index);
bool CTComponent(FIIteratorBase* it, int move);
bool CTMoleFraction(FIIteratorBase* it, int move);
bool CTMassFraction(FIIteratorBase* it, int move);
bool CTVolumeFraction(FIIteratorBase* it, int move);
bool CTKVML(FIIteratorBase* it, int move);
bool CTKVL(FIIteratorBase* it, int move);
bool CTKVL2(FIIteratorBase* it, int move);
bool CTKL1L2(FIIteratorBase* it, int move);

// ---- Components of one phase: the list sets PhaseCmpCnt, the steps read it and PhaseName

int CTPhaseComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
bool CTPhaseComponent(FIIteratorBase* it, int move);
bool CTPhaseMoleFraction(FIIteratorBase* it, int move);
bool CTPhaseMassFraction(FIIteratorBase* it, int move);
bool CTPhaseVolumeFraction(FIIteratorBase* it, int move);

// ---- Components of a fluid of a unit operation: FluidPhaseCmpCnt

int CTFluidPhaseComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
bool CTFluidPhaseComponent(FIIteratorBase* it, int move);

// ---- Components of the phases of a flash: FlashPhaseCmpCnt

int CTVaporPhaseComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
int CTLiquidPhaseComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
int CTLiquid2PhaseComponentArray(FIIteratorBase* it, FIValue* subclass, int index);
bool CTVaporPhaseComponent(FIIteratorBase* it, int move);
bool CTLiquidPhaseComponent(FIIteratorBase* it, int move);
bool CTLiquid2PhaseComponent(FIIteratorBase* it, int move);

}  // extern "C"

}  // namespace fixtop
