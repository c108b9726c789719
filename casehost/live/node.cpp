// SPDX-License-Identifier: Apache-2.0
#include "live/node.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>

#include "live/case.h"

namespace fixtop::casehost {

namespace {

// A composition store names one of these forms in dimension 0 of its description.
constexpr int kFirstForm = 1351;
constexpr int kLastForm = 1353;

constexpr std::string_view kNameMoniker = ":Name.0";

std::uint8_t Code(VariableState state) {
    return static_cast<std::uint8_t>(state);
}

// A number that is not given yet becomes so by its store, though it stands there.
bool HoldsAlready(const Cell& cell, double value) {
    const bool missing = cell.state == Code(VariableState::missing);
    return IsSameNumber(cell.number, value) && (!missing || value == kEmpty);
}

std::array<int, 3> OffsetsOf(const host::VarDescription& variable) {
    return {variable.Offset(0), variable.Offset(1), variable.Offset(2)};
}

// The offsets that a moniker such as "Double.501.3.[]" has written out, in place of those that were
// set; answers "Double.501".
std::string_view SplitMoniker(std::string_view moniker, std::array<int, 3>& offsets) {
    const std::size_t dot = moniker.find('.');
    if (dot == std::string_view::npos) return moniker;
    std::size_t end = moniker.find('.', dot + 1);
    const std::string_view stem = moniker.substr(0, end);
    for (std::size_t d = 0; d < 3 && end != std::string_view::npos; ++d) {
        const std::size_t from = end + 1;
        end = moniker.find('.', from);
        const std::string_view digits = moniker.substr(from, end - from);
        int value = 0;
        const auto [stop, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error == std::errc() && stop == digits.data() + digits.size()) offsets[d] = value;
    }
    return stem;
}

}  // namespace

Node::Node(CaseContext& context, Node* owner, const ObjectType* type, std::string name)
    : context_(&context), owner_(owner), type_(type), name_(std::move(name)) {}

void Node::SetVariables(const Shape* shape, const std::vector<VariableData>& variables) {
    shape_ = shape;
    cells_ = std::make_unique<Cell[]>(static_cast<std::size_t>(shape->CellCount()));
    texts_.clear();
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const Row& row = *shape->AllRows()[i];
        const std::vector<ValueData>& values = variables[i].values;
        const std::span<Cell> cells = CellsOf(row);
        for (std::size_t c = 0; c < std::min(cells.size(), values.size()); ++c) {
            FillCell(row, values[c], cells[c]);
        }
    }
    for (const auto& row : shape->AllRows()) {
        if (row->value_kind != host::kAttachment) continue;
        for (Cell& cell : CellsOf(*row)) cell.target = nullptr;
    }
}

void Node::FillCell(const Row& row, const ValueData& from, Cell& cell) {
    cell.number = from.number;
    cell.state = Code(from.state);
    const bool holds_text = row.value_kind == host::kText || row.value_kind == host::kMessage;
    if (holds_text && !from.text.empty()) SetTextAt(cell, from.text);
}

std::vector<VariableData> Node::VariablesToData() {
    std::vector<VariableData> variables;
    if (!shape_) return variables;
    for (std::size_t i = 0; i < shape_->VariableCount(); ++i) {
        const Row& row = *shape_->AllRows()[i];
        VariableData& variable = variables.emplace_back();
        variable.spec = row.spec;
        for (const Cell& cell : CellsOf(row)) {
            ValueData& value = variable.values.emplace_back();
            value.state = static_cast<VariableState>(cell.state);
            if (row.value_kind == host::kAttachment) {
                if (Node* target = Target(cell)) value.text = OwnerCase().PathOf(*target, this);
            } else if (!IsHidden(cell)) {
                value.number = cell.number;
                value.text = TextAt(cell);
            }
        }
    }
    return variables;
}

void Node::SetDeleted() {
    deleted_ = true;
    if (FlowsheetNode* inner = Inner()) {
        for (std::size_t i = 0; i < inner->Nodes().Size(); ++i) inner->Nodes().At(i).SetDeleted();
        inner->deleted_ = true;
    }
    EndIdentity();
}

void Node::EndIdentity() {
    identity_.End();
    if (FlowsheetNode* inner = Inner()) {
        for (std::size_t i = 0; i < inner->Nodes().Size(); ++i) inner->Nodes().At(i).EndIdentity();
        inner->identity_.End();
    }
}

const std::string& Node::TextAt(const Cell& cell) const {
    static const std::string none;
    return cell.text < 0 ? none : texts_[static_cast<std::size_t>(cell.text)];
}

void Node::SetTextAt(Cell& cell, std::string text) {
    if (cell.text < 0) {
        cell.text = static_cast<std::int32_t>(texts_.size());
        texts_.emplace_back();
    }
    texts_[static_cast<std::size_t>(cell.text)] = std::move(text);
}

Node::Place Node::Locate(const host::VarDescription& variable) {
    if (!shape_) return {};
    Row* row = shape_->ByWord(variable.HostWord());
    if (!row) return LocateByMoniker(variable);
    if (row->spec->dimensions.empty()) return {row, row->first_cell};
    return {row, row->labels ? -1 : row->CellOf(OffsetsOf(variable))};
}

Node::Place Node::LocateByMoniker(const host::VarDescription& variable) {
    if (variable.NextPart()) return {};
    const host::Text moniker = variable.GetMoniker();
    std::string_view text = moniker.Str();
    if (!text.empty() && text[0] == ':') text.remove_prefix(1);
    std::array<int, 3> offsets = OffsetsOf(variable);
    Row* row = shape_->ByStem(SplitMoniker(text, offsets));
    if (!row) return {};
    return {row, row->labels ? -1 : row->CellOf(offsets)};
}

Node::Place Node::LocateForStore(const host::VarDescription& variable) {
    Place place = Locate(variable);
    if (place.cell >= 0 || !place.row || !place.row->IsComposition()) return place;
    const int form = variable.Offset(0);
    if (form < kFirstForm || form > kLastForm) return place;
    place.cell = place.row->CellOf({variable.ReplacedOffset(0), 0, 0});
    return place;
}

double Node::ReadOtherReal(const host::VarDescription& variable) {
    const Place place = Locate(variable);
    if (place.cell < 0) {
        Node* holder = Holder(variable);
        return holder ? holder->ReadReal(*variable.GetVariablePart()) : host::kEmptyReal;
    }
    if (place.row->value_kind > host::kEnumeration) return host::kEmptyReal;
    const Cell& cell = CellAt(place.cell);
    return IsHidden(cell) ? host::kEmptyReal : cell.number;
}

bool Node::MayStoreReal(const Place& place, double value) {
    if (place.cell < 0 || deleted_) return false;
    const Row& row = *place.row;
    if (CellAt(place.cell).state == Code(VariableState::calculated)) return false;
    if (row.value_kind == host::kEnumeration) {
        return std::floor(value) == value && std::abs(value) < 1e9 &&
               row.names->FindEntry(static_cast<long>(value));
    }
    if (row.value_kind != host::kReal || !std::isfinite(value)) return false;
    if (value == kEmpty) return true;
    if (StoresCompositions() && row.IsComposition() && value < 0) return false;
    return (row.spec->minimum == kEmpty || value >= row.spec->minimum) &&
           (row.spec->maximum == kEmpty || value <= row.spec->maximum);
}

void Node::StoreReal(const host::VarDescription& variable, double value) {
    const Place place = LocateForStore(variable);
    if (Node* holder = place.cell < 0 ? Holder(variable) : nullptr) {
        return holder->StoreReal(*variable.GetVariablePart(), value);
    }
    if (!context_->watch->MayStore() || !MayStoreReal(place, value)) return;
    context_->watch->InStore();
    // What ran in the middle may have taken the object away.
    if (deleted_) return;
    Cell& cell = CellAt(place.cell);
    const bool changes = !HoldsAlready(cell, value);
    cell.number = value;
    if (!changes) return;
    cell.state = Code(value == kEmpty ? VariableState::missing : VariableState::specified);
    if (StoresCompositions() && place.row->IsComposition()) CompositionChanged(*place.row);
    OwnerCase().ValueStored(*this);
}

host::Text Node::LabelAt(const Row& row, const host::VarDescription& variable) const {
    const std::int64_t index = std::int64_t{variable.Offset(0)} - row.labels->low;
    const auto& labels = row.labels->labels;
    return index >= 0 && index < static_cast<std::int64_t>(labels.size())
               ? host::Text(labels[static_cast<std::size_t>(index)])
               : host::Text();
}

host::Text Node::ReadText(const host::VarDescription& variable) {
    const Place place = shape_ ? Locate(variable) : Place();
    if (place.row && place.row->labels) return LabelAt(*place.row, variable);
    if (place.cell < 0) {
        if (Node* holder = Holder(variable)) return holder->ReadText(*variable.GetVariablePart());
        const bool whole = !variable.NextPart();
        return whole && variable.GetMoniker() == kNameMoniker.data() ? name_ : host::Text();
    }
    const Cell& cell = CellAt(place.cell);
    if (place.row->value_kind < host::kText || place.row->value_kind == host::kAttachment)
        return {};
    return IsHidden(cell) ? host::Text() : host::Text(TextAt(cell));
}

void Node::StoreText(const host::VarDescription& variable, const host::Text& value) {
    const Place place = Locate(variable);
    if (Node* holder = place.cell < 0 ? Holder(variable) : nullptr) {
        return holder->StoreText(*variable.GetVariablePart(), value);
    }
    if (!context_->watch->MayStore() || place.cell < 0 || deleted_) return;
    if (place.row->value_kind != host::kText) return;
    if (CellAt(place.cell).state == Code(VariableState::calculated)) return;
    context_->watch->InStore();
    if (deleted_) return;
    Cell& cell = CellAt(place.cell);
    if (TextAt(cell) == value.Str()) return;
    SetTextAt(cell, value.Str());
    cell.state = Code(VariableState::specified);
    OwnerCase().ValueStored(*this);
}

host::Viewable* Node::ReadAttachment(const host::VarDescription& variable) {
    if (!shape_) return nullptr;
    const Place place = Locate(variable);
    if (!place.row || place.row->value_kind != host::kAttachment) return nullptr;
    Node* target = nullptr;
    if (place.row->labels) {
        target = OwnerCase().FindByPath(LabelAt(*place.row, variable).Str(), this);
    } else if (place.cell >= 0) {
        target = Target(CellAt(place.cell));
    }
    return target ? target->View() : nullptr;
}

const host::LinkedList* Node::ListVariables() const {
    return shape_ && shape_->Rows().Size() > 0 ? &shape_->Rows() : nullptr;
}

void Node::Dimensions(const host::VarDescription& variable, host::DimInfo& out) {
    out = host::DimInfo();
    if (!shape_) return;
    const Row* row = Locate(variable).row;
    if (!row) return;
    out.count = static_cast<unsigned>(row->spec->dimensions.size());
    for (unsigned d = 0; d < out.count && d < 3; ++d) {
        out.low[d] = row->spec->dimensions[d].low;
        const std::int64_t high = std::int64_t{out.low[d]} + row->spec->dimensions[d].count - 1;
        out.high[d] = static_cast<int>(std::clamp<std::int64_t>(high, INT_MIN, INT_MAX));
    }
}

host::VariableType Node::UnitTypeOf(const host::VarDescription& variable) {
    const Row* row = shape_ ? Locate(variable).row : nullptr;
    const host::VarType unit_type = row ? row->description.UnitType() : host::kVariableUnitType;
    return unit_type == host::kVariableUnitType ? host::kEmptyDimensionMarker
                                                : VariableTypeOfUnitType(unit_type);
}

host::Viewable* Node::OwnerOfType(const host::ObjectTypeInfo* type) {
    for (Node* owner = owner_; owner; owner = owner->owner_) {
        if (!type || owner->type_->IsA(type)) return owner->View();
    }
    return nullptr;
}

bool Node::LiesIn(host::Viewable* flowsheet) {
    return owner_ && flowsheet && owner_->View() == flowsheet &&
           owner_->Class() == &types::kFlowSheet;
}

void Node::Status(const host::VarDescription& variable, host::ModifyState& state) {
    if (!shape_) return;
    const Place place = Locate(variable);
    if (place.cell < 0) return;
    const Cell& cell = CellAt(place.cell);
    state = IsHidden(cell) ? host::kMissing : static_cast<host::ModifyState>(cell.state);
}

bool Node::IsOutdated(const host::VarDescription& variable) {
    const Place place = shape_ ? Locate(variable) : Place();
    return place.cell >= 0 && context_->keeps_results && IsStaleCell(CellAt(place.cell));
}

bool Node::HasOldResults() const {
    if (!stale_ || !context_->keeps_results || !shape_) return false;
    const auto is_stale = [this](const Cell& cell) { return IsStaleCell(cell); };
    return std::any_of(cells_.get(), cells_.get() + shape_->CellCount(), is_stale);
}

// Parts before the one that names a variable are either steps of a moniker path or attachment
// variables of the object reached so far.
host::Viewable* Node::ResolveElsewhere(const host::VarDescription& variable) {
    if (variable.IsEmpty()) return nullptr;
    const host::Text moniker = variable.GetMoniker();
    std::string_view path = moniker.Str();
    if (path.empty() || (path[0] == ':' && !variable.NextPart())) return nullptr;
    Node* found = FollowPath(path);
    return found && found != this ? found->View() : nullptr;
}

Node* Node::FollowPath(std::string_view path) {
    Node* node = this;
    while (!path.empty()) {
        if (path[0] == '/') {
            path.remove_prefix(1);
            continue;
        }
        if (path[0] == ':') {
            const std::size_t cut = path.find('/');
            if (cut == std::string_view::npos) return node;
            const std::string step(path.substr(0, cut));
            node = Of(node->ReadAttachment(host::VarDescription(step.c_str(), 0)));
            path.remove_prefix(cut);
        } else {
            node = node->Follow(path);
        }
        if (!node) return nullptr;
    }
    return node;
}

}  // namespace fixtop::casehost
