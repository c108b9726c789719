// SPDX-License-Identifier: Apache-2.0
#include "live/basis_spec.h"

#include "live/basis_tree.h"

namespace fixtop::casehost {

namespace {

// The constants of a compound that the view shows, in the units of CompoundData.
struct Constant {
    const char* name;
    double CompoundData::*value;
};

constexpr Constant kConstants[] = {
    {"Molecular Weight", &CompoundData::molar_mass},
    {"Normal Boiling Point", &CompoundData::normal_boiling_point_K},
    {"Critical Temperature", &CompoundData::critical_temperature_K},
    {"Critical Pressure", &CompoundData::critical_pressure_kPa},
    {"Acentricity", &CompoundData::acentric_factor},
};

}  // namespace

void SpecInfo::Clear() {
    while (list_.Size() > 0) list_.Erase(list_.Size() - 1);
    elements_.clear();
    children_.clear();
    blocks_.clear();
}

host::CSpecElement& SpecInfo::Add(std::string tag) {
    elements_.push_back(std::make_unique<host::CSpecElement>());
    elements_.back()->tag = host::Text(std::move(tag));
    list_.Append(elements_.back().get());
    return *elements_.back();
}

SpecInfo& SpecInfo::AddChild(std::string tag) {
    children_.push_back(std::make_unique<SpecInfo>());
    children_.back()->SetOwner(owner_);
    Add(std::move(tag)).child = children_.back().get();
    return *children_.back();
}

host::ArraySetBlock& SpecInfo::AddArraySet(std::string tag) {
    blocks_.push_back(std::make_unique<host::ArraySetBlock>());
    Add(std::move(tag)).array_set = blocks_.back().get();
    return *blocks_.back();
}

bool BasisSpecSource::FillSpecInfo(host::CSpecInfo* out) {
    auto* info = dynamic_cast<SpecInfo*>(out);
    const bool has_compounds = !basics_.compounds.empty();
    if (!info || !info->OwnerView()) return false;
    if (!has_compounds && basics_.property_package.empty() && tree_.IsEmpty()) return false;
    info->Clear();
    info->AddText("Property Package", basics_.property_package);
    if (has_compounds) AddCompounds(*info);
    tree_.AddTo(*info);
    return true;
}

void BasisSpecSource::AddCompounds(SpecInfo& info) const {
    SpecInfo& compounds = info.AddChild("Compounds");
    for (const CompoundData& compound : basics_.compounds) {
        SpecInfo& constants = compounds.AddChild(compound.name);
        constants.AddText("Formula", compound.formula);
        for (const Constant& each : kConstants)
            constants.AddNumber(each.name, compound.*each.value);
    }
    host::ArraySetBlock& table = info.AddArraySet("Constants");
    for (const Constant& each : kConstants) {
        host::GrowableArray<double> column;
        for (const CompoundData& compound : basics_.compounds) column.Append(compound.*each.value);
        table.source_names.Append(host::Text(each.name));
        table.source_numbers.Append(column);
    }
}

}  // namespace fixtop::casehost
