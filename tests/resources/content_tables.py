# SPDX-License-Identifier: Apache-2.0
"""What the class library and the maps hold. One row a line."""


def rows(text):
    return [line.split() for line in text.strip().splitlines()]


def table(text):
    """Rows by their first word; numbers become numbers."""
    return {row[0]: [int(word) if word.isdigit() else word for word in row[1:]] for row in rows(text)}


# File: classes, enumerations, quantities, includes.
LIBRARY_FILES = table("""
QSIAllLibraries 0 0 365 11
QSIColumn 22 11 0 2
QSIFlowsheet 6 2 0 4
QSIHeatExchanger 26 11 0 2
QSIMixerSplitter 3 1 0 3
QSIPressureChanger 28 18 0 1
QSIReaction 23 5 0 1
QSIReactors 5 1 0 3
QSISeparators 9 7 0 2
QSIStreams 52 16 0 1
QSIUnitOperation 6 2 0 0
QSIUtilities 6 5 0 1
""")

# File: class elements, translators, enumerations.
MAP_FILES = table("""
HMAPColumn 34 217 1
HMAPFlowsheet 2 8 0
HMAPHeatExchanger 18 129 6
HMAPMixerSplitter 9 51 0
HMAPPressureChangers 25 244 8
HMAPReaction 16 87 4
HMAPReactors 34 139 1
HMAPSeparators 12 79 0
HMAPSharedClasses 2 6 4
HMAPStreams 19 197 1
HMAPUnitOperation 1 1 0
HMAPUtilities 6 56 2
hovexmap 0 1 0
""")

# The whole library by the type of attributes.
ATTRIBUTE_TYPES = table("""
Real 939
Object 423
Enumeration 104
String 88
Integer 47
Boolean 23
""")

# All maps by the form of translators.
TRANSLATOR_FORMS = {
    ("Translate", "Map"): 858,
    ("Translate", "Dummy"): 188,
    ("TranslateArray", "ArrayFunc"): 81,
    ("Translate", "Function"): 66,
    ("TranslateArray", "Map"): 22,
}

# Class: direct superclass ("none": it has no such element), attributes of its own.
CLASSES = table("""
QSIActiveReaction GenericClass 3
QSIAggregatePhase QSIPhaseFlow 4
QSIAtomicComposition GenericClass 6
QSIBaffles GenericClass 17
QSIBalance GenericClass 12
QSIBoot GenericClass 3
QSICatalyticRateReaction QSIReversibleKineticReaction 2
QSIColumnCalculation QSIModelSolution 2
QSIColumnDuty GenericClass 13
QSIColumnFeed GenericClass 8
QSIColumnSection GenericClass 31
QSIColumnSpecification GenericClass 17
QSIColumnVary GenericClass 9
QSIComponentEfficiency GenericClass 3
QSIComponentFlowProperties QSIMaterialFlow 4
QSIComponentInMixtureProperties QSIComponentFlowProperties 3
QSIComponentProperties QSIMaterialFraction 3
QSIComponentThermoProperties QSIThermodynamicProperties 5
QSIComponentVaporProperties QSIPropertyGroup 3
QSICompositionProperties GenericClass 4
QSIComprPerfCurveSet GenericClass 2
QSIComprPerformanceCurve GenericClass 17
QSICompressor QSIUnitOperation 77
QSICompressorIntPoint GenericClass 1
QSICompressorStage GenericClass 1
QSICondenser QSIPhaseSeparator 23
QSIControlValve GenericClass 3
QSIConversionReaction QSIReaction 7
QSIConversionReactor QSIPhaseSeparation 8
QSICooler GenericClass 2
QSICustomPropertyValue GenericClass 2
QSIDecanter GenericClass 12
QSIDecanterReturn GenericClass 2
QSIDepositCorrelation GenericClass 5
QSIDimensionlessNumbers QSIPropertyGroup 4
QSIDistillationColumn QSIUnitOperation 51
QSIDistillationCurve GenericClass 13
QSIDistillationCurveBulk GenericClass 9
QSIDistillationCurveElement GenericClass 8
QSIDistillationEfficiency GenericClass 3
QSIDistillationStage GenericClass 34
QSIDistillationTray GenericClass 18
QSIDistributionCoefficient GenericClass 2
QSIDowncomer GenericClass 11
QSIEnergyPort QSIPort 1
QSIEntrainment GenericClass 11
QSIEquilibriumReaction QSIReaction 21
QSIEquilibriumReactor QSIPhaseSeparation 7
QSIEquilibriumVsTemperature GenericClass 4
QSIExchangeNozzle QSINozzle 6
QSIExchangeZone GenericClass 15
QSIExchangerBackEnd QSIExchangerEnd 1
QSIExchangerEnd GenericClass 3
QSIExchangerFrontEnd QSIExchangerEnd 1
QSIExchangerPressureCalc GenericClass 2
QSIExchangerShell GenericClass 4
QSIExchangerTube GenericClass 7
QSIFlash GenericClass 17
QSIFlowsheet GenericClass 8
QSIGasPipe QSIUnitOperation 7
QSIGasPipeSection GenericClass 8
QSIGibbsReactor QSIPhaseSeparation 11
QSIGibbsReactorFlowSpec GenericClass 4
QSIGibbsReactorFormula GenericClass 2
QSIHeatCurve GenericClass 9
QSIHeatCurvePoint GenericClass 9
QSIHeatExchanger QSIUnitOperation 39
QSIHeatExchangerHTSide GenericClass 6
QSIHeatFlow GenericClass 2
QSIHeatLoss GenericClass 19
QSIHeatStream QSIHeatFlow 3
QSIHeatTransferProperties QSIPropertyGroup 2
QSIHeaterCooler QSIUnitOperation 36
QSIHeaterZone GenericClass 6
QSIHoldup GenericClass 4
QSIIdealGasProperties QSIPropertyGroup 4
QSIInsulationSpec GenericClass 3
QSIKineticReaction QSIReaction 5
QSILHHWReaction QSIKineticReaction 5
QSILiquidOnlyProperties QSIPropertyGroup 1
QSILoadStream QSIPropertyContainer 0
QSILocalConvReaction GenericClass 5
QSILocalConvReactionSet QSILocalReactionSet 1
QSILocalEquilReaction GenericClass 20
QSILocalEquilReactionSet QSILocalReactionSet 1
QSILocalReaction GenericClass 5
QSILocalReactionSet GenericClass 3
QSIMaterialFlow QSIPropertyContainer 21
QSIMaterialFraction GenericClass 9
QSIMaterialPort QSIPort 0
QSIMaterialStream QSIMaterialFlow 16
QSIMiscProperties QSIPropertyGroup 1
QSIMixedEquilibriumPhase QSIPhaseFlow 11
QSIMixer QSIUnitOperation 12
QSIModelSolution GenericClass 6
QSINPSHCurve GenericClass 10
QSINPSHPoint GenericClass 3
QSINozzle GenericClass 11
QSIOverallKineticReaction QSIKineticReaction 1
QSIPVTProperties QSIPropertyGroup 8
QSIPacking GenericClass 13
QSIParticleSizeSlice GenericClass 9
QSIPassPlugs GenericClass 2
QSIPasslane GenericClass 3
QSIPetroleumCutProperties GenericClass 2
QSIPetroleumProperties QSIPropertyGroup 37
QSIPhaseChangeProperties QSIPropertyGroup 8
QSIPhaseDistribution GenericClass 8
QSIPhaseFlow QSIMaterialFlow 14
QSIPhaseHoldup GenericClass 4
QSIPhaseSeparation QSIUnitOperation 21
QSIPhaseSeparator GenericClass 21
QSIPipe QSIUnitOperation 50
QSIPipeCell GenericClass 8
QSIPipeNode GenericClass 4
QSIPipeProfileElement GenericClass 29
QSIPipeSegment GenericClass 13
QSIPolymerProperties QSIPropertyGroup 2
QSIPort GenericClass 2
QSIPropertyContainer GenericClass 2
QSIPropertyCurve GenericClass 3
QSIPropertyCurveElement GenericClass 2
QSIPropertyGroup GenericClass 1
QSIPump QSIUnitOperation 30
QSIPumpAround GenericClass 21
QSIPumpCurve GenericClass 12
QSIPumpCurvePoint GenericClass 3
QSIPureComponentProperties QSIComponentFlowProperties 0
QSIPurePhase QSIPhaseFlow 2
QSIReactant GenericClass 2
QSIReactantBalance GenericClass 4
QSIReaction GenericClass 7
QSIReactionComponentOrder GenericClass 2
QSIReactionPkg GenericClass 2
QSIReactionRateFactor GenericClass 9
QSIReactionRateTerm GenericClass 2
QSIReactionSet GenericClass 8
QSIReboiler QSIPhaseSeparator 17
QSIReversibleKineticReaction QSIKineticReaction 2
QSIRheologyProperties QSIPropertyGroup 4
QSIRotor GenericClass 4
QSISeparator QSIPhaseSeparation 5
QSIShellSide GenericClass 20
QSISideColumn GenericClass 16
QSISideDraw GenericClass 6
QSISimpleComposition GenericClass 2
QSISimpleMassComposition GenericClass 2
QSISimpleRateReaction QSIReaction 11
QSISimpleStdVolComposition GenericClass 2
QSISimulation GenericClass 2
QSISolidOnlyProperties QSIPropertyGroup 3
QSISolidPhase QSIPurePhase 2
QSISoluteLiquidProperties QSIPropertyGroup 8
QSISoluteThermoProperties QSIPropertyGroup 5
QSISpeedFlowCurve GenericClass 4
QSISpeedFlowPoint GenericClass 2
QSISplit GenericClass 8
QSIStagePacking GenericClass 6
QSITee QSIUnitOperation 11
QSIThermodynamicProperties QSIPropertyGroup 15
QSITieRod GenericClass 5
QSITieRodSpacer GenericClass 0
QSITrayPanel GenericClass 3
QSITubeBundle GenericClass 13
QSITubeExternal GenericClass 7
QSITubeInternal GenericClass 1
QSITubeSheet GenericClass 2
QSITubeSide GenericClass 6
QSIUnitOperation QSIPropertyContainer 10
QSIUoBetweenPhases GenericClass 3
QSIUoFluidPhaseProperties GenericClass 22
QSIUoFluidProperties GenericClass 28
QSIUoMixedLiquid GenericClass 3
QSIUtility GenericClass 4
QSIValueWithRefState GenericClass 3
QSIValueWithTestMethod QSIValueWithRefState 1
QSIValve QSIUnitOperation 23
QSIValveActuator GenericClass 14
QSIValveCurvePoint GenericClass 5
QSIValvePiping GenericClass 11
QSIVaporOnlyProperties QSIPropertyGroup 3
QSIWeir GenericClass 5
QSIWorkStream GenericClass 3
OtherPhaseAnalysisCurve none 3
PhaseEnvelopeCurves GenericClass 16
PhaseEnvelopePoint GenericClass 7
""")

# Enumeration: whether it is closed, options.
ENUMERATIONS = table("""
aAtom 0 14
eActuatorMode 1 3
eBaffleType 0 6
eBundleType 0 2
eColumnSpecification 0 42
eColumnVary 0 0
eComponentID 0 0
eComponentName 0 0
eCompositionBasis 0 3
eCompositionSpecBasis 1 8
eCompressorOrExpander 0 2
eCompressorPerfCurveType 0 4
eCompressorType 0 3
eCondenserType 0 4
eCoolerType 0 2
eDepositionMethod 0 2
eDistillationCurveType 0 6
eDistillationCutBasis 0 3
eDrawType 0 2
eEnergyType 0 3
eEntraining 0 10
eEnvelopeCurveType 1 4
eEnvelopeIndependent 1 3
eEquilibriumType 1 3
eExpressionBasis 0 10
eFailMode 0 4
eFixedCurve 1 3
eFlowBehavior 0 4
eFlowRateBasis 1 4
eFlowRegime 0 26
eFractionBasis 0 2
eGibbsReactorMode 0 3
eHEXFlow 1 4
eHEXOrientation 1 2
eHeatLossModel 0 4
eHeaterCooler 0 2
eHotOrCold 1 2
eIndependentVariable 0 8
eNPSHVariable 0 2
eNomDiameter 0 48
eNormalFlow 1 3
eOnStage 1 5
eOrientation 0 2
ePackInternalType 0 4
ePackingType 0 137
ePerfCurveVariableDependent 0 7
ePerfCurveVariableIndependent 0 4
ePhaseForm 1 5
ePhaseRelationship 0 3
ePhaseType 0 9
ePhysicalPhase 1 3
ePipeInsulationType 0 0
ePipeMaterial 0 15
ePipeSchedule 0 11
ePipeSegmentType 0 0
ePipingConnection 0 4
ePropertyCurveBasis 0 3
ePropertyName 0 33
eRateExpression 1 2
eReactionPhase 0 7
eReactionSetType 0 16
eReactionType 0 5
eReboilerType 0 5
eSectionFunction 0 5
eSeparatorType 0 4
eSplitType 0 14
eStageType 0 3
eTEMABackEnd 0 8
eTEMAFrontEnd 0 5
eTEMAShell 0 7
eTestMethod 0 5
eTrayType 0 3
eTubeLayout 1 4
eUnitOperationStatus 0 5
eUnitOperationType 0 15
eUoPhase 0 4
eUtilityType 0 3
eValveType 0 6
eVesselShape 0 2
""")

# Semantic function: places in all maps that name it.
FUNCTIONS = table("""
CTActiveReactions 1
CTBubblePointCurve 1
CTColumnCompMoleFrac 1
CTColumnComponentEfficiency 1
CTColumnFeeds 1
CTColumnSideDraws 1
CTColumnStages 1
CTComponent 1
CTComponentArray 1
CTComprPerfCurve 2
CTCondDistillate 1
CTCondHeavyDistillate 1
CTCondNozzle 1
CTCondReflux 1
CTCondVapor 1
CTCutPercent 1
CTDewPointCurve 1
CTDistillationCurves 1
CTEfficiencyCurve 1
CTEntrainment 1
CTExchangerCold 1
CTExchangerHot 1
CTFlowsheets 1
CTFluidPhaseComponent 2
CTFluidPhaseComponentArray 1
CTGibbsFlowSpec 1
CTHeatStreams 1
CTHeaterProfile 1
CTHeaterVF 1
CTHeaterZone 1
CTHydratePointCurve 1
CTKL1L2 1
CTKL1L2Array 1
CTKVL 1
CTKVL2 1
CTKVL2Array 1
CTKVLArray 1
CTKVML 2
CTKVMLArray 1
CTLiquid2PhaseComponent 8
CTLiquid2PhaseComponentArray 4
CTLiquidFromComposition 1
CTLiquidPhaseComponent 8
CTLiquidPhaseComponentArray 4
CTLocalConvReaction 2
CTLocalEquilReaction 1
CTLocalReaction 4
CTMassFraction 1
CTMixerNozzle 1
CTMoleFraction 1
CTNPSHCurve 1
CTNPSHCurvePoint 1
CTPerfCurvePoint 2
CTPhaseComponent 6
CTPhaseComponentArray 6
CTPhaseEnvelopes 1
CTPhaseMassFraction 2
CTPhaseMoleFraction 2
CTPhaseVolumeFraction 2
CTPipeCell 1
CTPipeProfile 1
CTPipeSegment 1
CTPumpCurve 1
CTPumparoundDraw 1
CTPumparoundReturn 1
CTReactantBalance 4
CTReactionComponentOrder 1
CTReactionDenominatorTerm 1
CTReactions 1
CTRebBoilup 1
CTRebLiquid 1
CTRebLiquid2 1
CTRebNozzle 1
CTRebVapor 1
CTSectionTray 3
CTSideColumnBottoms 1
CTSideColumnDraw 1
CTSideColumnReboiler 1
CTSideColumnReturn 1
CTSideDrawFluid 1
CTSpeedFlowCurve 1
CTStreams 1
CTTeeNozzle 1
CTTeeSplit 1
CTUnitOperations 1
CTValveCurve 1
CTVaporPhaseComponent 8
CTVaporPhaseComponentArray 4
CTViscosity 1
CTVolumeFraction 1
Find1 1
""")
