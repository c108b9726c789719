// SPDX-License-Identifier: Apache-2.0
// CCDMClassEntry: reading.

#include <array>
#include <cstring>

#include "mapping/nodes/class_entry.h"
#include "mapping/translators/unit_and_enum_converter.h"

namespace fixtop {

namespace {

const FIValue kValue("value");
const FIValue kSpecValue("spec_value");
const FIValue kUom("uom");
const FIValue kSpecUom("spec_uom");
const FIValue kId("id");

// Whether the expression asks for an attribute of the node itself.
bool StaysOnNode(const PathStep& step) {
    return step.name.empty() && !step.isVariable && step.count.IsNull() && step.filters.empty() &&
           step.Next() == nullptr;
}

void SetText(std::string_view text, FIValue& out) {
    out.SetText(text.data(), text.size());
}

const FIValue& AttributeOf(const FIValue& attribute) {
    return attribute.IsNull() ? kValue : attribute;
}

// Null when the face has no node, or no override of this name.
const PathStep* FindOverride(const AppFace& face, const FIValue& name) {
    if (!face.overrides || !name.CStr()) return nullptr;
    const auto found = face.overrides->find(name.CStr());
    return found == face.overrides->end() || !face.Node() ? nullptr : found->second.get();
}

void ReadExpression(const PathStep& step, FIReference& node, FIValue& out) {
    if (StaysOnNode(step)) return node.GetAttribute(AttributeOf(step.attribute), out);
    out.Clear();
    const Ref<FIReference> walker = node.UnboundCopy();
    FIValue attribute;
    if (!walker || !walker->GetIterator()->Walk(step, attribute)) return;
    walker->GetIterator()->GetAttribute(AttributeOf(attribute), out);
}

}  // namespace

const std::array<CCDMClassEntry::Row, CCDMClassEntry::kRows>& CCDMClassEntry::Rows() {
    using Entry = CCDMClassEntry;
    static constexpr std::array<Row, kRows> rows = {{
        {"id", Crossing::kNone, &Entry::ReadId},
        {"value", Crossing::kValue},
        {"dimension"},
        {"uom", Crossing::kUnit, nullptr, &Entry::WriteDisplayUnit},
        {"spec_value", Crossing::kValue},
        {"spec_uom", Crossing::kUnit, nullptr, &Entry::WriteDisplaySpecUnit},
        {"can_enter"},
        {"option_list"},
        {"uom_options", Crossing::kUnits},
        {"browser_name", Crossing::kNone, &Entry::ReadId},
        {"type", Crossing::kNone, &Entry::ReadType},
        {"container", Crossing::kNone, &Entry::ReadContainer},
        {"container_category"},
        {"container_type", Crossing::kNone, &Entry::ReadContainerType},
        {"display_name", Crossing::kNone, &Entry::ReadDisplayName},
        {"isleaf", Crossing::kNone, &Entry::ReadIsLeaf},
        {"has_children", Crossing::kNone, &Entry::ReadHasChildren},
        {"path", Crossing::kNone, &Entry::ReadPath},
        {"upper_limit"},
        {"lower_limit"},
        {"description"},
        {"status"},
        {"enabled"},
        {"history_enabled"},
        {"is_container"},
        {"no_containers_below"},
        {"is_hierarchy"},
        {"parent", Crossing::kNone, &Entry::ReadParent},
        {"converters", Crossing::kNone, &Entry::ReadConverters},
        {"dumpvars", Crossing::kNone, &Entry::ReadVariables},
    }};
    return rows;
}

const CCDMClassEntry::Row* CCDMClassEntry::FindRow(const char* name) {
    if (!name) return nullptr;
    for (const Row& row : Rows()) {
        if (*row.name == *name && std::strcmp(row.name, name) == 0) return &row;
    }
    return nullptr;
}

bool CCDMClassEntry::IsAnsweredByModel(const char* name) {
    const Row* row = FindRow(name);
    return row && row->own;
}

const AppFace& CCDMClassEntry::ValueFace() const {
    return faces_.OfValue();
}

// Where one node has both faces, it tells them apart itself.
const AppFace& CCDMClassEntry::SpecFace() const {
    return faces_.IsSplit() && !faces_.IsSwapped() ? faces_.secondary : faces_.primary;
}

const AppFace& CCDMClassEntry::AnyFace() const {
    return ValueFace().Node() ? ValueFace() : SpecFace();
}

CCDMClassEntry::Source CCDMClassEntry::SourceOf(const FIValue& name) const {
    const char* text = name.CStr();
    const bool is_value = text && std::strcmp(text, "spec_value") == 0;
    const bool is_spec = is_value || (text && std::strcmp(text, "spec_uom") == 0);
    if (!is_spec) return {&ValueFace(), name, Shown::kValue};
    if (!faces_.IsSplit()) return {&faces_.primary, name, Shown::kSpecification};
    return {&SpecFace(), is_value ? kValue : kUom, Shown::kSpecification};
}

void CCDMClassEntry::GetAttribute(const FIValue& name, FIValue& out) {
    const Row* row = FindRow(name.CStr());
    const Crossing crossing = row ? row->crossing : Crossing::kNone;
    const bool has_node = !faces_.IsEmpty();
    if (const AppFace* face = OverridingFace(name)) {
        ReadOverride(*face, name, out);
        return Cross(name, {face, name, ShownOn(*face)}, crossing, out);
    }
    if (row && row->own) return (this->*row->own)(out);
    const Source source = SourceOf(name);
    if (has_node && ReadSource(source, out)) return Cross(name, source, crossing, out);
    out.Clear();
    if (!has_node && crossing == Crossing::kValue && !IsMissing()) SetText(path_.className, out);
}

// Of either node under the name that was asked for, whatever it is called on its face.
const AppFace* CCDMClassEntry::OverridingFace(const FIValue& name) const {
    for (const AppFace* face : {&faces_.primary, &faces_.secondary}) {
        if (face->overrides && FindOverride(*face, name)) return face;
    }
    return nullptr;
}

CCDMClassEntry::Shown CCDMClassEntry::ShownOn(const AppFace& face) const {
    return &face == &faces_.primary ? Shown::kValue : Shown::kSpecification;
}

void CCDMClassEntry::ReadOverride(const AppFace& face, const FIValue& name, FIValue& out) const {
    const PathStep& step = *FindOverride(face, name);
    if (!step.IsLiteral()) return ReadExpression(step, *face.Node(), out);
    step.ResolveName(*face.Node()->GetIterator(), out);
    if (name.Compare(kValue) != 0 || out.IsNull()) return;
    if (attribute_.type == CCDMAttrType::kReal) out.ConvertTo(FIValue::kReal);
    if (attribute_.type == CCDMAttrType::kInteger) out.ConvertTo(FIValue::kInt);
}

bool CCDMClassEntry::ReadSource(const Source& source, FIValue& out) {
    FIReference* node = source.face->Node();
    if (!node) return false;
    node->GetAttribute(source.name, out);
    return true;
}

void CCDMClassEntry::ReadUncrossed(const FIValue& name, FIValue& out) const {
    if (const AppFace* face = OverridingFace(name)) {
        ReadOverride(*face, name, out);
    } else {
        ReadSource(SourceOf(name), out);
    }
}

CCDMClassEntry::Shown CCDMClassEntry::ShownAs(const FIValue& value_name) const {
    const AppFace* face = OverridingFace(value_name);
    return face ? ShownOn(*face) : SourceOf(value_name).shown;
}

// A value and its unit cross alike: what the unit says holds for the value. A text crosses as it
// is, so its unit does too.
void CCDMClassEntry::Cross(const FIValue& name, const Source& source, Crossing crossing,
                           FIValue& out) {
    if (crossing == Crossing::kNone || (out.IsNull() && crossing != Crossing::kUnit)) return;
    // A node that is gone answers with a text that is no value.
    if (source.face->Node()->GetState() == FIReference::kDeleted) return;
    const bool is_unit = crossing == Crossing::kUnit;
    const FIValue& value_name = is_unit && name.Compare(kSpecUom) == 0 ? kSpecValue : kValue;
    const Shown shown = is_unit ? ShownAs(value_name) : source.shown;
    UnitAndEnumConverter values(Library(), attribute_, GetVarSet(), shown == Shown::kSpecification);
    FIValue other;
    if (is_unit) {
        if (values.HasDisplayUnit()) ReadUncrossed(value_name, other);
        values.NameUnit(other, out);
    } else if (crossing == Crossing::kUnits) {
        values.NameUnits(out);
    } else {
        if (values.HasDisplayUnit()) {
            ReadUncrossed(name.Compare(kSpecValue) == 0 ? kSpecUom : kUom, other);
        }
        values.FromApplication(other, out);
    }
}

// The unit stands beside the value.
const FIValue& CCDMClassEntry::UnitNameOf(const Source& source) {
    return std::strcmp(source.name.CStr(), "spec_value") == 0 ? kSpecUom : kUom;
}

// ---- the model's own answers ----

void CCDMClassEntry::ReadId(FIValue& out) {
    GetName(out);
}

void CCDMClassEntry::ReadType(FIValue& out) {
    out.SetText(AttrTypeText(attribute_.type));
    if (attribute_.type != CCDMAttrType::kEnumeration && !IsObject()) return;
    out.AppendText("(");
    out.AppendText(std::string(path_.className).c_str());
    out.AppendText(")");
}

void CCDMClassEntry::ReadContainer(FIValue& out) {
    const AncestorPath* container = IsObject() ? &path_ : path_.parent;
    SetText(container ? container->id : "", out);
}

void CCDMClassEntry::ReadContainerType(FIValue& out) {
    const AncestorPath* container = IsObject() ? &path_ : path_.parent;
    SetText(container ? container->className : "", out);
}

void CCDMClassEntry::ReadParent(FIValue& out) {
    SetText(path_.parent ? path_.parent->id : "", out);
}

// An element's keys stand behind the name in such a way that the whole is a step of a path.
void CCDMClassEntry::ReadDisplayName(FIValue& out) {
    out.SetText(attribute_.name);
    if (path_.index < 0 || attribute_.keys.empty()) return;
    const auto context = Ref<FIContext>::Adopt(GetContext());
    const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor));
    FIValue part;
    for (const FIValue& key : attribute_.keys) {
        if (!cursor->SeekName(kFromFirst, key.CStr())) continue;
        const auto child = Ref<FIEntry>::Adopt(cursor->GetEntry());
        child->GetAttribute(kId, part);
        out.AppendText("[");
        out.AppendValue(part, true);
        child->GetAttribute(kValue, part);
        out.AppendText("=");
        out.AppendValue(part, true);
        out.AppendText("]");
    }
}

void CCDMClassEntry::ReadIsLeaf(FIValue& out) {
    out.SetInt(IsObject() && !IsMissing() ? 0 : 1);
}

void CCDMClassEntry::ReadHasChildren(FIValue& out) {
    out.SetInt(IsObject() && !IsMissing() ? 1 : 0);
}

// Where the value comes from: the path of the application's node; of a pure entry its own.
void CCDMClassEntry::ReadPath(FIValue& out) {
    out.Clear();
    const AppFace& face = AnyFace();
    if (FIReference* node = face.Node()) {
        node->GetPath(out);
    } else if (FIVarSet* vars = GetVarSet()) {
        vars->GetPath(out);
    }
}

void CCDMClassEntry::ReadConverters(FIValue& out) {
    std::string dump;
    const AncestorPath asked = context_->PathOf(attribute_);
    const FaceQuery query = context_->QueryFor(attribute_, asked);
    const AppFace& face = AnyFace();
    const bool is_second = &face == &faces_.secondary && query.parent.secondary;
    DumpChoice(query, face, (is_second ? query.parent.secondary : query.parent.primary).Get(),
               dump);
    out.SetText(dump);
}

void CCDMClassEntry::ReadVariables(FIValue& out) {
    out.Clear();
    const AppFace& face = AnyFace();
    if (FIReference* node = face.Node()) node->DumpVars(out);
}

}  // namespace fixtop
