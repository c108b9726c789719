// SPDX-License-Identifier: Apache-2.0
// The functions that a map file may name, one a line: FIXTOP_STEP of a step to one node,
// FIXTOP_ASKED_STEP of one that moves only after it was asked, FIXTOP_LIST of a list,
// FIXTOP_CHILD_LIST of one that takes kNextIndex, FIXTOP_LATE_LIST of one that has late variables,
// which stand behind its name. Whoever includes this file says first what a line shall mean. The
// declarations, the table for maps and the exports of the module come from here, so a function is
// added by its line and its body; which variables and nodes it uses is written beside it.

#ifndef FIXTOP_STEP
#define FIXTOP_STEP(name)
#endif
#ifndef FIXTOP_ASKED_STEP
#define FIXTOP_ASKED_STEP(name) FIXTOP_STEP(name)
#endif
#ifndef FIXTOP_LIST
#define FIXTOP_LIST(name)
#endif
#ifndef FIXTOP_CHILD_LIST
#define FIXTOP_CHILD_LIST(name) FIXTOP_LIST(name)
#endif

#ifndef FIXTOP_LATE_LIST
#define FIXTOP_LATE_LIST(name, late) FIXTOP_LIST(name)
#endif

// clang-format off

// To the raw tree below the top node. Always true.
FIXTOP_STEP(Find1)

// ---- Lists of a flowsheet: `it` goes to the element

FIXTOP_CHILD_LIST(CTFlowsheets)
FIXTOP_CHILD_LIST(CTStreams)
FIXTOP_CHILD_LIST(CTHeatStreams)
FIXTOP_CHILD_LIST(CTPhaseEnvelopes)
FIXTOP_CHILD_LIST(CTDistillationCurves)
// The one list whose elements differ in class: `subclass` ends as the class of the element, after a
// count as that of the last one. Variables of the class: semantic/unit_operation_class.h.
FIXTOP_CHILD_LIST(CTUnitOperations)

// ---- Components of a stream: the lists set CmpCnt, the steps read it

FIXTOP_LIST(CTComponentArray)
FIXTOP_LIST(CTKVMLArray)
FIXTOP_LIST(CTKVLArray)
FIXTOP_LIST(CTKVL2Array)
FIXTOP_LIST(CTKL1L2Array)
FIXTOP_STEP(CTComponent)
FIXTOP_STEP(CTMoleFraction)
FIXTOP_STEP(CTMassFraction)
FIXTOP_STEP(CTVolumeFraction)
FIXTOP_STEP(CTKVML)
FIXTOP_STEP(CTKVL)
FIXTOP_STEP(CTKVL2)
FIXTOP_STEP(CTKL1L2)

// ---- Components of one phase: the list sets PhaseCmpCnt, the steps read it and PhaseName

FIXTOP_LIST(CTPhaseComponentArray)
FIXTOP_STEP(CTPhaseComponent)
FIXTOP_STEP(CTPhaseMoleFraction)
FIXTOP_STEP(CTPhaseMassFraction)
FIXTOP_STEP(CTPhaseVolumeFraction)

// ---- Components of a fluid of a unit operation: FluidPhaseCmpCnt

FIXTOP_LIST(CTFluidPhaseComponentArray)
FIXTOP_STEP(CTFluidPhaseComponent)

// ---- Components of the phases of a flash: FlashPhaseCmpCnt

FIXTOP_LIST(CTVaporPhaseComponentArray)
FIXTOP_LIST(CTLiquidPhaseComponentArray)
FIXTOP_LIST(CTLiquid2PhaseComponentArray)
FIXTOP_STEP(CTVaporPhaseComponent)
FIXTOP_STEP(CTLiquidPhaseComponent)
FIXTOP_STEP(CTLiquid2PhaseComponent)

// ---- Equipment: an element is a name in a variable, by which paths go into the host's arrays

// SegElemNum, and where the segment lies among the cells: SegStartCell and SegNumCell, which the
// list of its cells reads.
FIXTOP_LIST(CTPipeSegment)
FIXTOP_LIST(CTPipeCell)        // CellElemNum
FIXTOP_LIST(CTPipeProfile)     // ProfileElemNum
FIXTOP_LIST(CTTeeNozzle)       // Elem
FIXTOP_LIST(CTMixerNozzle)     // Elem
FIXTOP_LIST(CTTeeSplit)        // SplitElem
FIXTOP_LIST(CTEntrainment)     // EntrainmentElem
FIXTOP_LIST(CTHeaterZone)      // HeaterZoneElemNum, HeaterZoneElemNum1 of the next, ZoneNo from 1
FIXTOP_LIST(CTHeaterProfile)   // ProfileElemNum, ProfileZoneNo, HeatTransferred
// To the vapour fraction of the last zone.
FIXTOP_STEP(CTHeaterVF)
// Stay, always true. With `move` the names of the hot or the cold side of an exchanger are set:
// DeltaT, DeltaP, OutletT, OutletP.
FIXTOP_STEP(CTExchangerHot)
FIXTOP_STEP(CTExchangerCold)

// ---- Curves of equipment: `it` goes to the curve, a point is a name in a variable

FIXTOP_LIST(CTComprPerfCurve)
FIXTOP_LIST(CTEfficiencyCurve)
FIXTOP_LIST(CTNPSHCurve)
// Name; the curve of the coefficients is none of the host's, and `it` stays there.
FIXTOP_LIST(CTPumpCurve)
FIXTOP_LIST(CTPerfCurvePoint)  // PointElem, PointNo from 1
FIXTOP_LIST(CTSpeedFlowCurve)  // PointElem
FIXTOP_LIST(CTValveCurve)      // Elem
FIXTOP_LIST(CTNPSHCurvePoint)  // NPSH, Flow, PointNo from 1

// ---- Points of phase envelopes: CurveElement and PointNo from 0

FIXTOP_LIST(CTBubblePointCurve)
FIXTOP_LIST(CTHydratePointCurve)
// DewCurveElement too, of the arrays in which the bubble points come first.
FIXTOP_LIST(CTDewPointCurve)

// ---- Distillation curves: fixed lists

FIXTOP_LIST(CTCutPercent)      // CutPercent, CutPoint
FIXTOP_LIST(CTViscosity)       // ViscosityName, ReferenceTemp

// ---- Reactions of the package

// `it` goes to the reaction. `subclass` by the kind of reaction, and rxnPath, where its rate data
// are below it; NULL for kinds without a class. All reactions have one key, by which a place among
// them is not found again, so none is stepped to from another.
FIXTOP_LIST(CTReactions)
FIXTOP_LIST(CTReactionDenominatorTerm)  // A, E, row
// The count sets ncomp; the elements read it and row, and set exponent and component.
FIXTOP_LIST(CTReactionComponentOrder)

// ---- Reactions of a set and of a reactor

FIXTOP_LIST(CTActiveReactions)          // RxnID, RxnActive, RxnRank
FIXTOP_LIST(CTLocalReaction)            // RxnElemNum, RxnIndex, RxnName
FIXTOP_LIST(CTLocalConvReaction)        // ConvRxnElemNum
FIXTOP_LIST(CTLocalEquilReaction)       // EquilRxnElemNum, EquilRxnNum
FIXTOP_LIST(CTReactantBalance)          // BalanceElemNum, CompName
FIXTOP_LIST(CTGibbsFlowSpec)            // GibbsFlowSpecElemNum, GibbsFlowSpecComponentName

// ---- Columns. What is not known of an element leaves its variable as it was

// Condenser, trays and reboiler: StageElemNo, and IsCondenser, IsReboiler, IsFeed,
// IsDraw, IsReturn, each 0 or 1; the five are late.
FIXTOP_LATE_LIST(CTColumnStages, kStageKinds)
// All inlets but the last: FeedElemNum, FeedName, FeedStage.
FIXTOP_LIST(CTColumnFeeds)
// The stages of a section: Element and Elemno.
FIXTOP_LIST(CTSectionTray)
// Of a section, liquid before vapour before water: DrawElemNum and Draw, the element and its list;
// StreamId; and, where that is known, DrawsElemNum and Draws, the section and its list.
FIXTOP_LIST(CTColumnSideDraws)
// To the stream StreamId.
FIXTOP_STEP(CTSideDrawFluid)
// Nozzles of condenser and reboiler: NozzleElemNum.
FIXTOP_LIST(CTCondNozzle)
FIXTOP_LIST(CTRebNozzle)

// ---- Compositions in a column: `it` goes to the element

FIXTOP_LIST(CTColumnCompMoleFrac)
// Of the stage StageElemNo. Both set ColumnComponentID at the element.
FIXTOP_LIST(CTLiquidFromComposition)
FIXTOP_LIST(CTColumnComponentEfficiency)

// ---- Components of condenser and reboiler: the lists set FlashPhaseCmpCnt, the steps read it

FIXTOP_LIST(CTCondRebVesselComponentArray)
FIXTOP_LIST(CTCondRebVaporComponentArray)
FIXTOP_LIST(CTCondRebLiquidComponentArray)
FIXTOP_STEP(CTCondRebVesselComponent)
FIXTOP_STEP(CTCondRebVaporComponent)
FIXTOP_STEP(CTCondRebLiquidComponent)

// ---- From a column to the streams at its condenser and reboiler

FIXTOP_STEP(CTCondVapor)
FIXTOP_STEP(CTCondDistillate)
FIXTOP_STEP(CTCondHeavyDistillate)
FIXTOP_STEP(CTCondReflux)
FIXTOP_STEP(CTRebBoilup)
FIXTOP_STEP(CTRebLiquid)
FIXTOP_STEP(CTRebLiquid2)
FIXTOP_STEP(CTRebVapor)

// ---- From a side column or a pump-around to its streams

// Asking sets Draw and Return, the names of the streams; moving reads them.
FIXTOP_ASKED_STEP(CTSideColumnDraw)
FIXTOP_ASKED_STEP(CTSideColumnReturn)
FIXTOP_STEP(CTSideColumnBottoms)
// To the unit below the bottoms when that is a reboiler.
FIXTOP_STEP(CTSideColumnReboiler)
FIXTOP_STEP(CTPumparoundDraw)
FIXTOP_STEP(CTPumparoundReturn)
// clang-format on

#undef FIXTOP_STEP
#undef FIXTOP_ASKED_STEP
#undef FIXTOP_LIST
#undef FIXTOP_CHILD_LIST
#undef FIXTOP_LATE_LIST
