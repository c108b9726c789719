// CCDMClassEntry: reading.

#include <array>
#include <cstring>

#include "mapping/class_entry.h"
#include "mapping/value_crossing.h"

namespace {

const FIValue kValue("value");
const FIValue kUom("uom");
const FIValue kSpecUom("spec_uom");
const FIValue kId("id");

// Whether the expression asks for an attribute of the node itself.
bool StaysOnNode(const PathStep& step) {
    return step.name.empty() && !step.isVariable && step.count.IsNull() && step.filters.empty() &&
           step.Next() == nullptr;
}

const FIValue& AttributeOf(const FIValue& attribute) {
    return attribute.IsNull() ? kValue : attribute;
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
        {"uom", Crossing::kUnit},
        {"spec_value", Crossing::kValue},
        {"spec_uom", Crossing::kUnit},
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

const AppFace& CCDMClassEntry::ValueFace() const {
    return faces_.IsSwapped() && faces_.secondary.reference ? faces_.secondary : faces_.primary;
}

// Where one node has both faces, it tells them apart itself.
const AppFace& CCDMClassEntry::SpecFace() const {
    return faces_.IsSplit() && !faces_.IsSwapped() ? faces_.secondary : faces_.primary;
}

const AppFace& CCDMClassEntry::AnyFace() const {
    return ValueFace().reference ? ValueFace() : SpecFace();
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
    if (has_node && ReadOverride(name, crossing, out)) return;
    if (row && row->own) return (this->*row->own)(out);
    if (has_node) return ReadSource(SourceOf(name), crossing, out);
    out.Clear();
    if (crossing == Crossing::kValue && !IsMissing()) out.SetText(path_.className);
}

// Of either node under the name that was asked for, whatever it is called on its face.
bool CCDMClassEntry::ReadOverride(const FIValue& name, Crossing crossing, FIValue& out) {
    return ReadOverrideOf({&faces_.primary, name, Shown::kValue}, crossing, out) ||
           ReadOverrideOf({&faces_.secondary, name, Shown::kSpecification}, crossing, out);
}

bool CCDMClassEntry::ReadOverrideOf(const Source& source, Crossing crossing, FIValue& out) {
    const AppFace& face = *source.face;
    if (!face.overrides || !face.reference || !source.name.CStr()) return false;
    const auto found = face.overrides->find(source.name.CStr());
    if (found == face.overrides->end() || !found->second) return false;
    const PathStep& step = *found->second;
    if (!step.IsLiteral()) {
        ReadExpression(step, *face.reference, out);
    } else {
        step.ResolveName(*face.reference->GetIterator(), out);
        if (source.name.Compare(kValue) == 0 && !out.IsNull()) {
            if (attribute_.type == CCDMAttrType::kReal) out.ConvertTo(FIValue::kReal);
            if (attribute_.type == CCDMAttrType::kInteger) out.ConvertTo(FIValue::kInt);
        }
    }
    Cross(source, crossing, out);
    return true;
}

void CCDMClassEntry::ReadSource(const Source& source, Crossing crossing, FIValue& out) {
    if (!source.face->reference) return out.Clear();
    source.face->reference->GetAttribute(source.name, out);
    Cross(source, crossing, out);
}

void CCDMClassEntry::Cross(const Source& source, Crossing crossing, FIValue& out) {
    // A node that is gone answers with a text that is no value.
    const bool is_gone = source.face->reference->GetState() == FIReference::kDeleted;
    if (crossing == Crossing::kNone || out.IsNull() || is_gone) return;
    ValueCrossing values(Library(), attribute_, GetVarSet(), source.shown == Shown::kSpecification);
    switch (crossing) {
        case Crossing::kValue:
            values.FromApplication(*source.face->reference, UnitNameOf(source), out);
            break;
        case Crossing::kUnit:
            values.NameUnit(out);
            break;
        default:
            values.NameUnits(out);
            break;
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
    out.AppendText(path_.className.c_str());
    out.AppendText(")");
}

void CCDMClassEntry::ReadContainer(FIValue& out) {
    const AncestorPath* container = IsObject() ? &path_ : path_.parent;
    out.SetText(container ? container->id : "");
}

void CCDMClassEntry::ReadContainerType(FIValue& out) {
    const AncestorPath* container = IsObject() ? &path_ : path_.parent;
    out.SetText(container ? container->className : "");
}

void CCDMClassEntry::ReadParent(FIValue& out) {
    out.SetText(path_.parent ? path_.parent->id : "");
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
    out.SetInt(IsObject() ? 0 : 1);
}

void CCDMClassEntry::ReadHasChildren(FIValue& out) {
    out.SetInt(IsObject() ? 1 : 0);
}

// Where the value comes from: the path of the application's node; of a pure entry its own.
void CCDMClassEntry::ReadPath(FIValue& out) {
    out.Clear();
    const AppFace& face = AnyFace();
    if (face.reference) {
        face.reference->GetPath(out);
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
    if (face.reference) face.reference->DumpVars(out);
}
