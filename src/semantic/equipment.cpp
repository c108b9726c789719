// SPDX-License-Identifier: Apache-2.0
// The parts of pipes, mixers, tees, separators, heaters and exchangers. The host holds them as
// arrays, one for each property, so an element is mostly a name by which paths go into all of them.

#include <optional>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

using semantic::ArrayList;
using semantic::CopyOf;
using semantic::CountChildren;
using semantic::Exported;
using semantic::ReadValue;
using semantic::SeekNames;
using semantic::SetElementIndex;
using semantic::SetElementName;
using semantic::WrappedSum;

namespace {

constexpr char kIncrements[] = "No of Increments";
constexpr char kZoneDuty[] = "Zone duty";

// Where a segment lies among the cells of its pipe.
constexpr char kFirstCell[] = "SegStartCell";
constexpr char kCellCount[] = "SegNumCell";

// The cells of all segments are one array, so a segment begins behind those of the ones before it.
// A segment behind the last one gets the last one's place.
void SetSegmentCells(FIIteratorBase& it, int segment) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    int first = 0;
    int count = 0;
    if (SeekNames(*walker, {kIncrements}) && walker->DownFirst()) {
        count = ReadValue(*walker).AsInt();
        for (int i = 0; i < segment && walker->Next(); ++i) {
            first = WrappedSum(first, count);
            count = ReadValue(*walker).AsInt();
        }
    }
    SetElementIndex(it, kFirstCell, first);
    SetElementIndex(it, kCellCount, count);
}

int CountCells(FIIteratorBase& it) {
    FIValue count;
    return it.GetVarText(kCellCount, count) ? count.AsInt() : 0;
}

// Of a pipe whose segments were not read the name is left without a number.
void SetCellName(FIIteratorBase& it, int cell) {
    FIValue name("Elem");
    FIValue first;
    if (it.GetVarText(kFirstCell, first)) name.AppendInt(WrappedSum(first.AsInt(), cell));
    it.SetVarText("CellElemNum", name);
}

// A profile has a point more than there are zones: nothing is transferred up to the first.
void SetHeatTransferred(FIIteratorBase& it, int point) {
    constexpr char kVariable[] = "HeatTransferred";
    if (point == 0) return it.SetVarText(kVariable, FIValue::OfReal(0.0));
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {kZoneDuty}) || !walker->Down(point - 1)) return;
    it.SetVarText(kVariable, ReadValue(*walker));
}

// The host's names on either side of an exchanger.
struct SideRow {
    const char* variable;
    const char* tube;
    const char* shell;
};

constexpr SideRow kSideRows[] = {
    {"DeltaT", "Tube Side Delta T", "Shell Side Delta T"},
    {"DeltaP", "Tube Side Pressure Drop", "Shell Side Pressure Drop"},
    {"OutletT", "Tube Outlet Temperature", "Shell Outlet Temperature"},
    {"OutletP", "Tube Outlet Pressure", "Shell Outlet Pressure"},
};

// Also at equal temperatures, so that hot and cold are never one side. Nothing without both inlets.
std::optional<bool> IsShellHot(FIIteratorBase& it) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {"Tube Inlet Temperature"})) return {};
    const double tube = ReadValue(*walker).AsDouble();
    walker->Up();
    if (!SeekNames(*walker, {"Shell Inlet Temperature"})) return {};
    return !(tube > ReadValue(*walker).AsDouble());
}

bool ExchangerSide(FIIteratorBase& it, int move, bool hot) {
    if (!move) return true;
    const std::optional<bool> shell_is_hot = IsShellHot(it);
    if (!shell_is_hot) return true;
    const bool is_shell = *shell_is_hot == hot;
    for (const SideRow& row : kSideRows) {
        it.SetVarText(row.variable, is_shell ? row.shell : row.tube);
    }
    return true;
}

}  // namespace

// ---- Pipes

int CTPipeSegment(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountChildren(*it, {"Pipe Length"});
        SetSegmentCells(*it, index);
        return SetElementName(*it, "SegElemNum", index);
    });
}

int CTPipeCell(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountCells(*it);
        SetCellName(*it, index);
        return index;
    });
}

int CTPipeProfile(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return ArrayList(*it, index, "ProfileElemNum", {"Profile Length"}); });
}

// ---- Nozzles, splits, entrainment

// The host writes the name of the one array as one word, that of the other as two.
int CTTeeNozzle(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return ArrayList(*it, index, "Elem", {"Enhanced Holdup", "Product Nozzle Diameter"});
    });
}

int CTMixerNozzle(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return ArrayList(*it, index, "Elem", {"Enhanced Hold Up", "Feed Nozzle Diameter"});
    });
}

int CTTeeSplit(FIIteratorBase* it, FIValue*, int index) {
    return Exported(
        [=] { return semantic::NumberList(*it, index, "SplitElem", "Number of Product Streams"); });
}

int CTEntrainment(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return ArrayList(*it, index, "EntrainmentElem", {"CO results label"}); });
}

// ---- Heaters, coolers, exchangers

// What is held at both ends of a zone has an element more than there are zones.
int CTHeaterZone(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountChildren(*it, {kZoneDuty});
        SetElementName(*it, "HeaterZoneElemNum1", index + 1);
        SetElementIndex(*it, "ZoneNo", index + 1);
        return SetElementName(*it, "HeaterZoneElemNum", index);
    });
}

int CTHeaterProfile(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountChildren(*it, {"Zone pressures"});
        SetHeatTransferred(*it, index);
        SetElementIndex(*it, "ProfileZoneNo", index);
        return SetElementName(*it, "ProfileElemNum", index);
    });
}

// The outlet is that of the last zone.
bool CTHeaterVF(FIIteratorBase* it, int move) {
    return Exported([=] {
        const Ref<FIIteratorBase> walker = semantic::CopyUnlessMove(*it, move);
        if (!SeekNames(*walker, {"Zone vapour frac"})) return false;
        if (walker->DownLast()) return true;
        walker->Up();
        return false;
    });
}

bool CTExchangerHot(FIIteratorBase* it, int move) {
    return Exported([=] { return ExchangerSide(*it, move, true); });
}

bool CTExchangerCold(FIIteratorBase* it, int move) {
    return Exported([=] { return ExchangerSide(*it, move, false); });
}

}  // namespace fixtop
