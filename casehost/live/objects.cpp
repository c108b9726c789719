// SPDX-License-Identifier: Apache-2.0
#include "live/objects.h"

#include <charconv>
#include <cmath>

#include "casehost/units.h"
#include "live/basis_spec.h"
#include "live/basis_tree.h"
#include "live/case.h"
#include "live/solver_node.h"

namespace fixtop::casehost {

std::vector<double> StreamNode::Fractions(const Row& row) {
    std::vector<double> fractions;
    fractions.reserve(row.cell_count);
    for (const Cell& cell : CellsOf(row)) fractions.push_back(cell.number);
    return fractions;
}

void StreamNode::StartCompositionEditSession() {
    saved_.clear();
    if (!GetShape()) return;
    for (const auto& row : GetShape()->AllRows()) {
        if (row->IsComposition()) saved_.emplace(row.get(), Fractions(*row));
    }
}

void StreamNode::CompositionChanged(Row& row) {
    if (!deferring_) return Normalise(row, {});
    edited_.insert(&row);
}

void StreamNode::EndDeferCompNormalize() {
    deferring_ = false;
    for (const Row* row : edited_) Normalise(*row, saved_[row]);
    if (!edited_.empty()) OwnerCase().ValueStored(*this);
    edited_.clear();
    saved_.clear();
}

// Fractions that are whole but for the rounding of their sum keep their digits.
void StreamNode::Normalise(const Row& row, const std::vector<double>& before) {
    constexpr double kRounding = 1e-12;
    double sum = 0;
    for (double fraction : Fractions(row)) sum += fraction == kEmpty ? 0 : fraction;
    if (std::abs(sum - 1) <= kRounding) sum = 1;
    std::size_t place = 0;
    for (Cell& cell : CellsOf(row)) {
        if (sum > 0) {
            cell.number = (cell.number == kEmpty ? 0 : cell.number) / sum;
            cell.state = static_cast<std::uint8_t>(VariableState::specified);
        } else if (!before.empty()) {
            cell.number = before[place++];
        }
    }
}

host::FlowSheetSolver* FlowsheetNode::Solver() {
    return OwnerCase().MainSolver();
}

Node* FlowsheetNode::Follow(std::string_view& rest) {
    if (Owner() == &OwnerCase() && Skip(rest, step::kSolver)) return &OwnerCase().Solver();
    for (const char* prefix : {step::kStream, step::kUnitOp, step::kUtility}) {
        if (Skip(rest, prefix)) return objects_.FollowName(rest);
    }
    return nullptr;
}

double PublishedNode::GetValue() {
    const Row* row = ValueRow();
    return row ? ReadReal(row->description) : host::kEmptyReal;
}

// The name alone is told, so it must not stand for another quantity: 50 in % are no fraction of 50.
host::Text PublishedNode::UnitText() {
    const Row* row = ValueRow();
    const Quantity* quantity = row ? FindQuantity(row->spec->quantity) : nullptr;
    if (!quantity) return host::Text();
    for (const host::UnitRecord& unit : quantity->units) {
        if (FindQuantityOfUnit(unit.name) == quantity) return host::Text(unit.name);
    }
    return host::Text();
}

void ManagerNode::put_ModelCallback(host::IModelCallback* callback) {
    if (callback) callback->AddRef();
    std::swap(callback_, callback);
    if (callback) callback->Release();
}

void ManagerNode::GetVariableDimensions(const host::VarDescription& variable, host::DimInfo& out) {
    out = host::DimInfo();
    if (published_.Size() == 0) return;
    if (!(variable.GetMoniker() == step::kPublished)) return;
    out.count = 1;
    out.high[0] = static_cast<std::int32_t>(published_.Size()) - 1;
}

Node* ManagerNode::Follow(std::string_view& rest) {
    if (!Skip(rest, step::kPublished) || !Skip(rest, ".")) return nullptr;
    std::size_t index = 0;
    const auto [stop, error] = std::from_chars(rest.data(), rest.data() + rest.size(), index);
    if (error != std::errc() || index >= published_.Size()) return nullptr;
    rest.remove_prefix(static_cast<std::size_t>(stop - rest.data()));
    return &published_.At(index);
}

BasisNode::BasisNode(CaseContext& context, Node* owner, const ObjectType* type, std::string name)
    : NodeOf(context, owner, type, std::move(name)),
      tree_(std::make_unique<BasisTree>(*this, *context.watch)) {}

BasisNode::~BasisNode() = default;

host::Reaction* BasisNode::RxnNumber(int number) {
    if (number < 0 || number >= ReactionCount()) return nullptr;
    return reactions_.At(static_cast<std::size_t>(number)).View();
}

host::CSpecSource* BasisNode::SpecSource() {
    if (!spec_source_) {
        spec_source_ = std::make_unique<BasisSpecSource>(OwnerCase().Basics(), *tree_);
    }
    return spec_source_.get();
}

}  // namespace fixtop::casehost
