// SPDX-License-Identifier: Apache-2.0
#include "host/variables/variable_values.h"

#include <array>
#include <cmath>
#include <cstring>
#include <string>

#include "diagnostics/memory_guard.h"
#include "host/adapter.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/solver/solve_wait.h"

namespace fixtop {

namespace {

constexpr char kHiddenKeyPrefix[] = "Key: ";
constexpr char kHiddenKeyText[] = "Unknown Key";
constexpr double kMostOrdinal = 1e9;

// Where the host is asked for the state of a value.
HVariablePlace StatePlace(const HVariable& variable) {
    const HVariablePlace place = FindPlace(variable.object, *variable.description);
    if (place.description && !place.description->IsEmpty()) return place;
    return {variable.object, variable.description};
}

host::VarEnumInfo* EnumOf(const HVariable& variable) {
    return variable.row->GetEnumInfo(variable.object);
}

void ReadReal(const HVariable& variable, const HVariablePlace& place, FIVarSet* vars,
              FIValue& out) {
    const bool may_be_correlation = place.object != variable.no_correlation;
    if (may_be_correlation && IsCorrelationHolder(place.object) && IsSkippingCorrelations(vars)) {
        return;
    }
    const double number = place.object->GetRealValue(*place.description);
    if (number != host::kEmptyReal) out.SetReal(number);
}

void ReadEnumeration(const HVariable& variable, const HVariablePlace& place, FIValue& out) {
    host::VarEnumInfo* options = EnumOf(variable);
    if (!options) return;
    const double number = place.object->GetRealValue(*place.description);
    // No ordinal is so large, and none is no number.
    if (!(std::abs(number) < kMostOrdinal)) return;
    const host::VarEnumEntry* option = options->FindEntry(static_cast<long>(number));
    if (option && option->name) out.SetText(option->name);
}

void ReadText(const HVariablePlace& place, FIValue& out) {
    const host::Text text = place.object->GetTextValue(*place.description);
    const bool hidden = text.Str().starts_with(kHiddenKeyPrefix);
    out.SetText(hidden ? kHiddenKeyText : text.CStr());
}

void ReadAttachment(const HVariablePlace& place, FIValue& out) {
    host::Viewable* attached = place.object->GetVariableAttachment(*place.description);
    if (attached) out.SetText(attached->GetName().CStr());
}

// What a store runs may take the object or the case away: asked before anything is read back.
template <class Store, class IsStored>
const char* StoreAndSolve(const HVariablePlace& place, const Ref<CaseLife>& life, Store store,
                          IsStored is_stored) {
    const HostObject<host::Viewable> object(place.object, life);
    memory::Outside([&] { store(*place.object, *place.description); });
    if (!TheAdapter().EditBatch().IsOpen()) SolveAndWait(*life);
    host::Viewable* left = object.Get();
    if (!left) return kNodeDeletedText;
    return is_stored(*left, *place.description) ? nullptr : kNotStored;
}

const char* StoreNumber(const HVariablePlace& place, double number, const Ref<CaseLife>& life) {
    return StoreAndSolve(
        place, life,
        [number](auto& object, auto& variable) { object.SetRealValue(variable, number); },
        [number](auto& object, auto& variable) { return object.GetRealValue(variable) == number; });
}

const char* StoreText(const HVariablePlace& place, const std::string& text,
                      const Ref<CaseLife>& life) {
    return StoreAndSolve(
        place, life,
        [&](auto& object, auto& variable) { object.SetTextValue(variable, host::Text(text)); },
        [&](auto& object, auto& variable) { return object.GetTextValue(variable).Str() == text; });
}

const char* StoreEnumeration(const HVariable& variable, const HVariablePlace& place,
                             const std::string& name, const Ref<CaseLife>& life) {
    host::VarEnumInfo* options = EnumOf(variable);
    int ordinal = 0;
    if (!options || !options->FindEntry(host::Text(name), ordinal)) return kNotStored;
    return StoreNumber(place, ordinal, life);
}

// What is no number.
void ReadOther(const HVariable& variable, const HVariablePlace& place, FIValue& out) {
    switch (variable.row->value_kind) {
        case host::kEnumeration:
            ReadEnumeration(variable, place, out);
            break;
        case host::kText:
            ReadText(place, out);
            break;
        case host::kAttachment:
            ReadAttachment(place, out);
            break;
        default:
            break;
    }
}

}  // namespace

HVariablePlace FindPlace(host::Viewable* object, const host::VarDescription& description) {
    host::Viewable* holder = object->ResolveVariableOwner(description);
    if (!holder) return {object, &description};
    return {holder, description.GetVariablePart()};
}

host::Viewable* FindHolder(host::Viewable* owner, host::Viewable* object,
                           const host::VarDescription& description) {
    host::Viewable* holder = object->ResolveVariableOwner(description);
    if (holder && holder != owner) {
        const host::VarDescription* part = description.GetVariablePart();
        if (!part || part->IsEmpty() || part->IsEqual(description, false)) return holder;
    }
    return (holder ? holder : object)->GetVariableAttachment(description);
}

void ReadFullMoniker(host::Viewable* attached, FIValue& out) {
    out.Clear();
    host::HostServices* services = TheAdapter().Services();
    if (attached && services)
        out.SetText(services->RelativeMoniker(nullptr, attached, true).CStr());
}

bool LeadsInside(host::Viewable* owner, host::Viewable* attached) {
    FIValue moniker;
    ReadFullMoniker(attached, moniker);
    const std::string own = "(" + owner->GetName().Str() + ")";
    return moniker.IsText() && std::strstr(moniker.CStr(), own.c_str());
}

void ReadRaw(const HVariable& variable, FIVarSet* vars, FIValue& out) {
    out.Clear();
    if (!variable.object) return;
    const HVariablePlace place = FindPlace(variable.object, *variable.description);
    if (variable.row->value_kind == host::kReal) {
        ReadReal(variable, place, vars, out);
    } else {
        ReadOther(variable, place, out);
    }
}

const char* ReadStatus(const HVariable& variable, FIVarSet* vars) {
    static constexpr std::array<const char*, 4> kTexts = {"Calculated", "Specified", "Default",
                                                          "Specified"};
    constexpr const char* missing = "Missing";
    FIValue raw;
    ReadRaw(variable, vars, raw);
    host::HostServices* services = TheAdapter().Services();
    if (raw.IsNull() || !services) return missing;
    HVariablePlace place = StatePlace(variable);
    if (variable.row->value_kind == host::kAttachment) {
        place.object = place.object->GetVariableAttachment(*place.description);
    }
    // The host may leave both as they are.
    host::ModifyState state = host::kSpecified;
    int detail = 0;
    if (place.object && variable.row->value_kind != host::kMessage) {
        services->GetVariableStatus(place.object, *place.description, state, detail);
    }
    const auto index = static_cast<std::size_t>(state);
    return index < kTexts.size() ? kTexts[index] : missing;
}

bool IsOutdated(const HVariable& variable) {
    const int kind = variable.row->value_kind;
    host::HostServices* services = TheAdapter().Services();
    if (!services || !variable.object || kind == host::kAttachment || kind == host::kMessage) {
        return false;
    }
    const HVariablePlace place = StatePlace(variable);
    return services->IsOutdated(place.object, *place.description);
}

void ReadOptions(const HVariable& variable, FIValue& out) {
    out.Clear();
    host::VarEnumInfo* options = EnumOf(variable);
    if (!options) return;
    std::string names;
    for (const auto* option = options->Reset(); option; option = options->Next()) {
        if (!names.empty()) names += ';';
        if (option->name) names += option->name;
    }
    out.SetText(names);
}

const char* ScalarTypeText(int value_kind) {
    switch (value_kind) {
        case host::kReal:
            return "Real";
        case host::kAttachment:
            return "Attachment";
        case host::kMessage:
            return "Message";
        default:
            return "String";
    }
}

double InternalNumber(const FIValue& value) {
    return value.IsNull() ? host::kEmptyReal : value.AsDouble();
}

bool IsNoNumber(const FIValue& value) {
    return std::isnan(InternalNumber(value));
}

const char* StoreValue(const HVariable& variable, const FIValue& value, const Ref<CaseLife>& life) {
    if (!variable.object) return kNotStored;
    const HVariablePlace place = FindPlace(variable.object, *variable.description);
    switch (variable.row->value_kind) {
        case host::kReal:
            return StoreNumber(place, InternalNumber(value), life);
        case host::kEnumeration:
            return StoreEnumeration(variable, place, value.ToText(), life);
        case host::kText:
            return StoreText(place, value.ToText(), life);
        case host::kAttachment:
            return "Cannot set attachment";
        default:
            return "Cannot set message";
    }
}

bool IsComposition(const host::Viewable* owner, const host::VarDescription& description) {
    const int number = description.Number();
    if (number != 501 && number != 502 && number != 530) return false;
    const host::VariableType type = description.GetVariablePart()->Type();
    return type >= 9 && type <= 14 && IsStream(owner);
}

void StoreComposition(const HVariable& variable, const FIValue& value) {
    // The number of the variable that the host edits in place of the shown one.
    const int number = variable.description->GetVariablePart()->Number();
    const int edited = number == 530 ? 1353 : number == 522 ? 1352 : 1351;
    host::VarDescription address = *variable.description;
    address.SetOffset(0, edited, false);
    const HVariablePlace place = FindPlace(variable.object, address);
    memory::Outside([&] { place.object->SetRealValue(*place.description, InternalNumber(value)); });
}

host::VarType EffectiveUnitType(host::VarType unit_type, host::Viewable* object,
                                const host::VarDescription& description) {
    host::HostServices* services = TheAdapter().Services();
    if (unit_type != host::kVariableUnitType || !services || !object) return unit_type;
    return services->GetUnitConvTypeFromVarType(object->GetVariableUnitType(description));
}

// The host is asked anew each time: it may show a set by other units at any moment.
const host::UnitRecord* ShownUnit(host::HostServices& services, host::VarType type,
                                  FIVarSet* vars) {
    static const FIValue own_quantity;
    const host::UnitRecord* unit = services.def_unit(type, services.DefaultUnits());
    if (!vars) return unit;
    FIValue wanted;
    vars->GetUnit(own_quantity, wanted);
    if (!wanted.IsText()) return unit;
    if (unit && unit->name && std::strcmp(unit->name, wanted.CStr()) == 0) return unit;
    const host::UnitRecord* other = services.findunit(wanted.CStr(), type);
    return other ? other : unit;
}

void ToShownUnit(host::VarType type, FIVarSet* vars, FIValue& value) {
    host::HostServices* services = TheAdapter().Services();
    if (value.Kind() != FIValue::kReal || !services) return;
    if (const host::UnitRecord* unit = ShownUnit(*services, type, vars)) {
        value.SetReal(services->calc_ounit(value.AsDouble(), unit));
    }
}

void ToInternalUnit(host::VarType type, FIVarSet* vars, FIValue& value) {
    host::HostServices* services = TheAdapter().Services();
    if (value.IsNull() || !services) return;
    if (const host::UnitRecord* unit = ShownUnit(*services, type, vars)) {
        value.SetReal(services->calc_unit(value.AsDouble(), unit));
    }
}

void ReadUnitType(host::VarType type, FIValue& out) {
    host::HostServices* services = TheAdapter().Services();
    out.Clear();
    if (services) out.SetText(services->utypetoa(type));
}

void ReadUnit(host::VarType type, FIVarSet* vars, FIValue& out) {
    static const FIValue own_quantity;
    out.Clear();
    if (vars) vars->GetUnit(own_quantity, out);
    host::HostServices* services = TheAdapter().Services();
    if (!out.IsNull() || !services) return;
    if (const auto* unit = ShownUnit(*services, type, nullptr)) out.SetText(unit->name);
}

void ReadUnitOptions(host::VarType type, FIValue& out) {
    out.Clear();
    host::HostServices* services = TheAdapter().Services();
    if (!services) return;
    services->UnitConvList(type);
    std::string names;
    for (host::Text name = services->GetFirstConvName(); !name.IsEmpty();
         name = services->GetNextConvName()) {
        if (!names.empty()) names += '\n';
        names += name.Str();
    }
    out.SetText(names);
}

void SetShownUnit(host::VarType type, FIVarSet* vars, const FIValue& unit, FIValue& out) {
    static const FIValue own_quantity;
    host::HostServices* services = TheAdapter().Services();
    if (!vars || !services) {
        out = FIValue(kNotSupportedHere);
    } else if (!services->findunit(unit.ToText().c_str(), type)) {
        out = FIValue("Invalid unit for variable type");
    } else {
        FIValue before;
        vars->SetUnit(own_quantity, unit, before);
        out.Clear();
    }
}

}  // namespace fixtop
