// SPDX-License-Identifier: Apache-2.0
#include "collection/item_units.h"

#include <cctype>
#include <string>

#include "framework/iterator/shown_scope.h"

namespace fixtop {

namespace {

const FIValue kOwnQuantity;

// The two faces of a node have different rows and operations for the same things.
struct Face {
    const char* row;
    void (FIVarSet::*read)(const FIValue& quantity, FIValue& out);
    void (FIVarSet::*write)(const FIValue& quantity, const FIValue& unit, FIValue& old);
    void (FIEntry::*show)(const FIValue& unit, const FIValue& quantity, FIValue& out);
};
constexpr Face kValueFace = {"uom", &FIVarSet::GetUnit, &FIVarSet::SetUnit,
                             &FIEntry::SetDisplayUnit};
constexpr Face kSpecFace = {"spec_uom", &FIVarSet::GetSpecUnit, &FIVarSet::SetSpecUnit,
                            &FIEntry::SetDisplaySpecUnit};

// Whether a node refuses because it knows nothing of units, and not because of this unit.
bool KnowsNoUnits(const FIValue& refusal) {
    static constexpr char kRefusal[] = "not supported";
    const std::string text = refusal.ToText();
    for (std::size_t i = 0; kRefusal[i]; ++i) {
        if (i >= text.size() || std::tolower(static_cast<unsigned char>(text[i])) != kRefusal[i]) {
            return false;
        }
    }
    return true;
}

// True when the node took the unit, or can't say anything of units.
bool Show(const Face& face, const FIValue& unit, FIIterator& it) {
    const ShownScope entry(Ref<FIEntry>::Share(it.EntryAt(it.Depth())), it.GetVarSet());
    FIValue refusal;
    (*entry.operator->().*face.show)(unit, kOwnQuantity, refusal);
    if (refusal.IsNull()) return true;
    if (!KnowsNoUnits(refusal)) return false;
    entry->SetAttribute(FIValue(face.row), unit, 0, refusal);
    if (refusal.IsNull()) return true;
    if (!KnowsNoUnits(refusal)) return false;
    FIValue old;
    (it.GetVarSet()->*face.write)(kOwnQuantity, unit, old);
    return true;
}

bool ShowFace(const Face& face, const FIValue& unit, FIIterator& it) {
    if (unit.IsNull() || Show(face, unit, it)) return true;
    const bool has_number =
        unit.IsText() && std::isdigit(static_cast<unsigned char>(*unit.CStr())) != 0;
    return has_number && Show(face, FIValue::OfInt(unit.AsInt()), it);
}

// Whether it was chosen to show the node in the unit that is the node's own.
bool IsChosen(const Face& face, const FIValue& unit, FIIterator& shown, FIIterator& plain) {
    const auto asked = Ref<FIIterator>::Adopt(plain.Copy());
    return unit.IsText() && Show(face, unit, *asked) && asked->HasUnits() &&
           shown.HasUnitsOf(*asked);
}

// One that is set for the node's own quantity stands in the set; one of a named quantity shows in
// what the node calls its unit.
FIValue UnitOf(const Face& face, FIIterator& shown, FIIterator& plain) {
    FIValue unit;
    (shown.GetVarSet()->*face.read)(kOwnQuantity, unit);
    if (!unit.IsNull()) return FIValue(unit.ToText().c_str());
    const FIValue row(face.row);
    FIValue other;
    shown.GetAttribute(row, unit);
    plain.GetAttribute(row, other);
    if (unit.IsText() && unit.Compare(other) != 0) return unit;
    return IsChosen(face, unit, shown, plain) ? unit : FIValue();
}

}  // namespace

ItemUnits UnitsShownBy(FIIterator& it) {
    if (!it.HasUnits()) return {};
    const auto plain = Ref<FIIterator>::Adopt(it.Copy());
    plain->ForgetUnits();
    return {UnitOf(kValueFace, it, *plain), UnitOf(kSpecFace, it, *plain)};
}

bool ShowIn(const ItemUnits& units, FIIterator& it) {
    it.ForgetUnits();
    if (units.IsEmpty()) return true;
    const bool is_shown = ShowFace(kValueFace, units.unit, it);
    ShowFace(kSpecFace, units.spec_unit, it);
    return is_shown;
}

}  // namespace fixtop
