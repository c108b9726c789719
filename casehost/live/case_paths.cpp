// SPDX-License-Identifier: Apache-2.0
// How objects of a case are named by text: paths of attachments, and monikers.

#include "live/basis_tree.h"
#include "live/case.h"
#include "naming/object_path.h"

namespace fixtop::casehost {

namespace {

bool IsFlowsheet(const Node* node) {
    return node && node->Class() == &types::kFlowSheet;
}

}  // namespace

// The case as a world of path.
struct Case::PathWorld {
    using List = const NodeList*;
    using Item = Node*;

    Case& of;

    Node* Find(const NodeList* list, const std::string& name) const { return list->Find(name); }
    const NodeList* Inner(Node* node) const {
        return node->Inner() ? &node->Inner()->Nodes() : nullptr;
    }
    const NodeList* Main() const { return &of.main_->Nodes(); }
    const NodeList* Special(std::string_view word) const {
        if (word == path::kUtilities) return &of.utilities_;
        if (word == path::kTables) return &of.data_tables_;
        if (word == path::kReactions) return &of.basis_->Nodes();
        return nullptr;
    }
};

Node* Case::FindByPath(std::string_view path, const Node* from) {
    FlowsheetNode* start = main_.get();
    if (from && IsFlowsheet(from->Owner())) start = static_cast<FlowsheetNode*>(from->Owner());
    return path::FindObject(PathWorld{*this}, &start->Nodes(), path);
}

std::string Case::PathOf(const Node& node, const Node* from) {
    const Node* owner = node.Owner();
    const bool from_flowsheet = from && IsFlowsheet(from->Owner());
    const Node* start = from_flowsheet ? from->Owner() : main_.get();
    std::string name = path::Escape(node.Name().Str());
    if (from && owner == start) return name;
    if (owner == main_.get()) return "/" + name;
    if (owner == basis_.get()) return std::string("/") + path::kReactions + "/" + name;
    if (IsFlowsheet(owner) && owner->Owner()) return PathOf(*owner->Owner(), nullptr) + "/" + name;
    const bool table = data_tables_.Holds(node);
    return std::string("/") + (table ? path::kTables : path::kUtilities) + "/" + name;
}

std::string Case::MonikerOf(const Node& node) const {
    if (&node == this || !node.Owner()) return "/";
    const Node* owner = node.Owner();
    std::string moniker = owner == this ? "/" : MonikerOf(*owner) + "/";
    const std::string name = "(" + node.Name().Str() + ")";
    const ObjectType* type = node.Class();
    if (type == &types::kFlowSheet) return moniker + step::kFlowSheet;
    if (&node == solver_.get()) return moniker + step::kSolver;
    if (&node == basis_.get()) return moniker + step::kBasis;
    if (&node == manager_.get()) return moniker + step::kManager;
    if (manager_ && owner == manager_.get()) {
        return moniker + step::kPublished + "." + std::to_string(manager_->Nodes().IndexOf(node));
    }
    if (owner == basis_.get()) return moniker + step::kReaction + name;
    if (IsFlowsheet(owner)) {
        if (type->IsA(&types::kStream)) return moniker + step::kStream + name;
        if (type->IsA(&types::kUnitOp)) return moniker + step::kUnitOp + name;
        return moniker + step::kUtility + name;
    }
    const bool table = type->IsA(&types::kDataTable);
    return moniker + (table ? step::kDataTable : step::kUtility) + name;
}

Node* Case::Follow(std::string_view& rest) {
    if (Skip(rest, step::kFlowSheet)) return main_.get();
    if (Skip(rest, step::kBasis)) return basis_.get();
    if (Skip(rest, step::kUtility)) return utilities_.FollowName(rest);
    if (Skip(rest, step::kDataTable)) return data_tables_.FollowName(rest);
    if (!manager_) return nullptr;
    if (Skip(rest, step::kManager)) return manager_.get();
    return manager_->FollowPublished(rest);
}

bool Case::DescribeMoniker(const std::string& moniker, host::VarDescription::Facts& out) const {
    // The stem of the last part, "Double.501" out of "StreamObject.400(Feed)/:Double.501.[]".
    const std::size_t colon = moniker.rfind(':');
    const std::string stem = moniker.substr(colon == std::string::npos ? 0 : colon + 1);
    if (basis_->Tree().Describe(stem, out)) return true;
    const std::size_t end = stem.find('.', stem.find('.') + 1);
    for (const auto& shape : shapes_.All()) {
        const Row* row = shape->ByStem(std::string_view(stem).substr(0, end));
        if (!row) continue;
        const host::VarDescription& known = row->description;
        out.kind = known.Kind();
        out.number = known.Number();
        out.type = known.Type();
        out.unit_type = known.UnitType();
        out.minimum = known.MinValue();
        out.maximum = known.MaxValue();
        return true;
    }
    return false;
}

}  // namespace fixtop::casehost
