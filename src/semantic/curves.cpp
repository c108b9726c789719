// SPDX-License-Identifier: Apache-2.0
// Curves of compressors, pumps and valves, of phase envelopes and of distillation. Curves are
// objects or elements of arrays to which a list goes; their points are elements of several arrays
// side by side, told by name.

#include <iterator>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

using semantic::ArrayList;
using semantic::CountChildren;
using semantic::Exported;
using semantic::MovingList;
using semantic::SeekNames;
using semantic::SetElementIndex;
using semantic::SetElementName;

namespace {

constexpr char kCompressorCurves[] = "Compressor curve";
constexpr char kExpanderCurves[] = "Expander Curve";
constexpr char kPumpCurve[] = "Pump Curve";
constexpr char kDewPoints[] = "Number of Points, Dew Point Curve";
constexpr char kBubblePoints[] = "Number of Points, Bubble Point Curve";
constexpr char kHydratePoints[] = "Number of Points, Hydrate Curve";

constexpr char kPoint[] = "PointElem";
constexpr char kPointNumber[] = "PointNo";
constexpr char kEnvelopePoint[] = "CurveElement";

// An expander has the one array, a compressor the other.
const char* MachineCurves(FIIteratorBase& it) {
    const Ref<FIIteratorBase> walker = semantic::CopyOf(it);
    return SeekNames(*walker, {kCompressorCurves}) ? kCompressorCurves : kExpanderCurves;
}

// To the curve, which gets its name; the list is one longer than the curves of the host.
void SeekPumpCurve(FIIteratorBase& it, int index) {
    if (!SeekNames(it, {kPumpCurve}) || !it.Down(index)) return;
    if (!SeekNames(it, {"Object Name"})) return;
    const FIValue name = semantic::ReadValue(it);
    it.Up();
    it.SetVarText("Name", name);
}

void SetPoint(FIIteratorBase& it, const char* element, int index, int number) {
    SetElementName(it, element, index);
    SetElementIndex(it, kPointNumber, number);
}

int EnvelopeCurve(FIIteratorBase& it, int index, const char* points) {
    if (index != kCountIndex) SetElementIndex(it, kPointNumber, index);
    return semantic::NumberList(it, index, kEnvelopePoint, points);
}

struct NpshRow {
    const char* npsh;
    const char* flow;
    int number;
};

constexpr NpshRow kNpshRows[] = {
    {"Point 1 NPSH", "Point 1 Vol Flow", 1},
    {"Point 2 NPSH", "Point 2 Vol Flow", 2},
};
constexpr int kNpshCount = std::size(kNpshRows);

// Percents of the cut as the host writes them in its names.
constexpr const char* kCuts[] = {
    "0.0",   "1.00",  "2.00",  "3.50",  "5.00",  "7.50",  "10.00",  "12.50",
    "15.00", "17.50", "20.00", "25.00", "30.00", "35.00", "40.00",  "45.00",
    "50.00", "55.00", "60.00", "65.00", "70.00", "75.00", "80.00",  "85.00",
    "90.00", "92.50", "95.00", "96.50", "98.00", "99.00", "100.00",
};
constexpr int kCutCount = std::size(kCuts);

struct ViscosityRow {
    const char* name;
    double temperature_F;
};

constexpr ViscosityRow kViscosityRows[] = {
    {"Viscosity at 100 F", 100.0},
    {"Viscosity at 210 F", 210.0},
};
constexpr int kViscosityCount = std::size(kViscosityRows);

}  // namespace

// ---- Compressors, pumps, valves

int CTComprPerfCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return MovingList(*it, index, MachineCurves(*it)); });
}

int CTPerfCurvePoint(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountChildren(*it, {"Head"});
        SetPoint(*it, kPoint, index, index + 1);
        return index;
    });
}

int CTSpeedFlowCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return ArrayList(*it, index, kPoint, {"Speed"}); });
}

// The rows are counted from 0.
int CTValveCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        const int answer =
            ArrayList(*it, index, "Elem", {"Performance Curve", "\"Lift (% of max)\""});
        return index == kCountIndex && answer > 0 ? answer - 1 : answer;
    });
}

// The curve of the coefficients takes the place of the last one of the host.
int CTPumpCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        const int curves = CountChildren(*it, {kPumpCurve});
        if (index == kCountIndex) return curves + 1;
        if (index == curves - 1) {
            it->SetVarText("Name", "CoefficientCurve");
        } else {
            SeekPumpCurve(*it, index);
        }
        return index;
    });
}

int CTEfficiencyCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return MovingList(*it, index, kPumpCurve); });
}

int CTNPSHCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return MovingList(*it, index, "NPSH Curve"); });
}

int CTNPSHCurvePoint(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return kNpshCount;
        const NpshRow& row = kNpshRows[index == 0 ? 0 : 1];
        it->SetVarText("NPSH", row.npsh);
        it->SetVarText("Flow", row.flow);
        SetElementIndex(*it, kPointNumber, row.number);
        return index;
    });
}

// ---- Phase envelopes

// Enthalpies and entropies are arrays of all points, those of the dew curve behind the others.
int CTDewPointCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index != kCountIndex) {
            const int before = semantic::ReadValueBelow(*it, {kBubblePoints}).AsInt();
            SetElementName(*it, "DewCurveElement", semantic::WrappedSum(before, index));
        }
        return EnvelopeCurve(*it, index, kDewPoints);
    });
}

int CTBubblePointCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return EnvelopeCurve(*it, index, kBubblePoints); });
}

int CTHydratePointCurve(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return EnvelopeCurve(*it, index, kHydratePoints); });
}

// ---- Distillation curves

int CTCutPercent(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return kCutCount;
        if (index < 0 || index >= kCutCount) return index;
        FIValue name("Cut Pt-");
        name.AppendText(kCuts[index]);
        name.AppendChar('%');
        it->SetVarText("CutPercent", name);
        it->SetVarText("CutPoint", FIValue::OfReal(FIValue(kCuts[index]).AsDouble()));
        return index;
    });
}

int CTViscosity(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return kViscosityCount;
        if (index < 0 || index >= kViscosityCount) return 0;
        const ViscosityRow& row = kViscosityRows[index];
        it->SetVarText("ViscosityName", row.name);
        it->SetVarText("ReferenceTemp", FIValue::OfReal(row.temperature_F));
        return index;
    });
}

}  // namespace fixtop
