// How objects of a case are named by text: paths of attachments, and monikers.

#include "casehost/live_case.h"

namespace casehost {

namespace {

constexpr char kUtilitiesPath[] = "@utilities";
constexpr char kTablesPath[] = "@tables";
constexpr char kReactionsPath[] = "@reactions";

std::string Escape(const std::string& name) {
    std::string text;
    for (char c : name) {
        if (c == '~') {
            text += "~0";
        } else if (c == '/') {
            text += "~1";
        } else if (c == '@' && text.empty()) {
            text += "~2";
        } else {
            text += c;
        }
    }
    return text;
}

std::string Unescape(std::string_view text) {
    constexpr std::string_view kMeant = "~/@";
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t code = i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '0') : 9;
        if (text[i] == '~' && code < kMeant.size()) {
            name += kMeant[code];
            ++i;
        } else {
            name += text[i];
        }
    }
    return name;
}

std::string_view TakeStep(std::string_view& path) {
    const std::size_t cut = path.find('/');
    const std::string_view step = path.substr(0, cut);
    path = cut == std::string_view::npos ? std::string_view() : path.substr(cut + 1);
    return step;
}

// Walks names down from a list; the steps before the last one are template operations.
Node* Descend(const NodeList* list, std::string_view path) {
    while (list) {
        Node* node = list->Find(Unescape(TakeStep(path)));
        if (!node || path.empty()) return node;
        list = node->Inner() ? &node->Inner()->Nodes() : nullptr;
    }
    return nullptr;
}

bool IsFlowsheet(const Node* node) { return node && node->Class() == types::FlowSheet(); }

}  // namespace

NodeList* Case::ListOfPrefix(std::string_view prefix) {
    if (prefix == kUtilitiesPath) return &utilities_;
    if (prefix == kTablesPath) return &data_tables_;
    if (prefix == kReactionsPath) return &basis_->Nodes();
    return nullptr;
}

Node* Case::FindByPath(std::string_view path, const Node* from) {
    if (path.empty()) return nullptr;
    FlowsheetNode* start = main_.get();
    if (from && IsFlowsheet(from->Owner())) start = static_cast<FlowsheetNode*>(from->Owner());
    std::string_view rest = path;
    if (path[0] == '/') {
        start = main_.get();
        rest.remove_prefix(1);
        std::string_view behind = rest;
        if (NodeList* list = ListOfPrefix(TakeStep(behind))) return Descend(list, behind);
    }
    if (Node* found = Descend(&start->Nodes(), rest)) return found;
    // Names as other programs write them, not escaped.
    if (Node* found = start->Nodes().Find(path)) return found;
    return start == main_.get() ? nullptr : Descend(&main_->Nodes(), rest);
}

std::string Case::PathOf(const Node& node, const Node* from) {
    const Node* owner = node.Owner();
    const bool from_flowsheet = from && IsFlowsheet(from->Owner());
    const Node* start = from_flowsheet ? from->Owner() : main_.get();
    const std::string name = Escape(node.Name().Str());
    if (from && owner == start) return name;
    if (owner == main_.get()) return "/" + name;
    if (owner == basis_.get()) return std::string("/") + kReactionsPath + "/" + name;
    if (IsFlowsheet(owner) && owner->Owner()) return PathOf(*owner->Owner(), nullptr) + "/" + name;
    if (data_tables_.IndexOf(node) < data_tables_.Size()) {
        return std::string("/") + kTablesPath + "/" + name;
    }
    return std::string("/") + kUtilitiesPath + "/" + name;
}

std::string Case::MonikerOf(const Node& node, bool full) const {
    if (&node == this || !node.Owner()) return "/";
    const Node* owner = node.Owner();
    std::string moniker = owner == this ? "/" : MonikerOf(*owner, full) + "/";
    const std::string name = full ? "(" + node.Name().Str() + ")" : node.Name().Str();
    const ObjectType* type = node.Class();
    if (type == types::FlowSheet()) return moniker + step::kFlowSheet;
    if (&node == solver_.get()) return moniker + step::kSolver;
    if (&node == basis_.get()) return moniker + step::kBasis;
    if (&node == manager_.get()) return moniker + step::kManager;
    if (manager_ && owner == manager_.get()) {
        return moniker + step::kPublished + "." + std::to_string(manager_->Nodes().IndexOf(node));
    }
    if (owner == basis_.get()) return moniker + step::kReaction + name;
    if (IsFlowsheet(owner)) {
        if (type->IsA(types::Stream())) return moniker + step::kStream + name;
        if (type->IsA(types::UnitOp())) return moniker + step::kUnitOp + name;
        return moniker + step::kUtility + name;
    }
    const bool table = type->IsA(types::DataTable());
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

}  // namespace casehost
