// SPDX-License-Identifier: Apache-2.0
#include "objects/selection_object.h"

#include <utility>

#include "dispatch/walk.h"
#include "fixtop/client/error.h"
#include "fixtop/client/solver.h"
#include "objects/node_object.h"

namespace fixtop::hovex {

namespace {

constexpr char kNoSelection[] = "the text is no selection";

// As scripts read what became of an item, in the order of ItemState::Kind.
constexpr const char* kStateNames[] = {"Same", "ByPlace", "Moved", "Gone"};

client::Node RootOf(client::Node node) {
    while (auto parent = node.Parent()) node = *parent;
    return node;
}

std::vector<ScriptValue> ValuesOf(const std::vector<FIValue>& values) {
    std::vector<ScriptValue> made;
    made.reserve(values.size());
    for (const FIValue& value : values) made.push_back(ScriptValue::Of(value));
    return made;
}

// Texts are numbers as they are typed, and refused where they are none; one solve for both kinds.
std::vector<std::string> StoreAll(const client::Case& open_case, client::Selection& into,
                                  const std::vector<ScriptValue>& given, const std::string& unit) {
    std::vector<std::string> typed;
    std::vector<FIValue> values;
    for (const ScriptValue& each : given) {
        const bool is_text = IsText(each.Get());
        typed.push_back(is_text ? TextOf(each.Get()) : std::string());
        values.push_back(is_text ? FIValue() : ValueOf(each.Get()));
    }
    const client::Batch together(open_case.GetSolver());
    std::vector<std::string> refused = into.Store(std::span<const std::string>(typed), unit);
    const std::vector<std::string> others = into.Store(std::span<const FIValue>(values), unit);
    for (std::size_t i = 0; i < refused.size(); ++i) {
        if (refused[i].empty()) refused[i] = others[i];
    }
    return refused;
}

}  // namespace

constinit const MemberRow SelectionObject::kRows[] = {
    Reads<&SelectionObject::Item>("Item", 0, 1, 1),
    Reads<&SelectionObject::Count>("Count", 1),
    Reads<&SelectionObject::Add>("Add", 2, 1, 2),
    Reads<&SelectionObject::Remove>("Remove", 3, 1, 1),
    Reads<&SelectionObject::Path>("Path", 4, 1, 1),
    Reads<&SelectionObject::Paths>("Paths", 5),
    Reads<&SelectionObject::Unit>("Unit", 6, 1, 1),
    Reads<&SelectionObject::Units>("Units", 7),
    Reads<&SelectionObject::Read>("Read", 8),
    Reads<&SelectionObject::Statuses>("Statuses", 9),
    Reads<&SelectionObject::Write>("Write", 10, 1, 2),
    Reads<&SelectionObject::States>("States", 11),
    Reads<&SelectionObject::Candidates>("Candidates", 12, 1, 1),
    Reads<&SelectionObject::Save>("Save", 13, 1, 1),
    Reads<&SelectionObject::Load>("Load", 14, 1, 1),
    Reads<&SelectionObject::NewEnum>("_NewEnum", DISPID_NEWENUM),
};

SelectionObject::SelectionObject(SharedSession session, client::Selection selection)
    : session_(std::move(session)), selection_(std::move(selection)) {}

ScriptValue SelectionObject::Make(const SharedSession& session) {
    client::Selection empty(session->Open().Top());
    return ScriptValue::Object(new SelectionObject(session, std::move(empty)));
}

// The nodes are of the one view or of the other.
ScriptValue SelectionObject::MakeOfText(const SharedSession& session, const std::string& text) {
    const auto read = [&](const client::Node& root) {
        client::Selection selection(root);
        const bool is_one = selection.Collection().Load(text.c_str(), root.Iterator());
        if (!is_one) throw ScriptError(kNoSelection);
        return selection;
    };
    client::Selection selection = read(session->Open().Top());
    if (selection.Size() == 0) selection = read(session->Open().Neutral());
    return ScriptValue::Object(new SelectionObject(session, std::move(selection)));
}

std::span<const MemberRow> SelectionObject::Rows() const {
    return kRows;
}

std::size_t SelectionObject::ItemOf(const Call& call) const {
    const int item = call.Integer(0);
    if (item >= 0 && static_cast<std::size_t>(item) < selection_.Size()) {
        return static_cast<std::size_t>(item);
    }
    throw ScriptError("no item " + std::to_string(item) + ": there are " +
                      std::to_string(selection_.Size()) + ", counted from 0");
}

// A node, or a path from the root of the view; in an empty selection the view of the case's own
// tree goes first.
client::Node SelectionObject::NodeFor(const VARIANT& given) const {
    if (const client::Node* node = NodeObject::Of(given)) return *node;
    const std::string path = TextOf(given);
    if (selection_.Size() > 0) return selection_.Root()->At(path);
    if (auto found = session_->Open().Top().Find(path)) return found->node;
    if (auto found = session_->Open().Neutral().Find(path)) return found->node;
    return session_->Open().At(path);
}

ScriptValue SelectionObject::Item(const Call& call) {
    return NodeObject::Make(session_, selection_.NodeOf(ItemOf(call)));
}

ScriptValue SelectionObject::Count(const Call&) {
    return ScriptValue::Of(static_cast<int>(selection_.Size()));
}

ScriptValue SelectionObject::Add(const Call& call) {
    const client::Node node = NodeFor(call.At(0));
    if (selection_.Size() == 0) selection_ = client::Selection(RootOf(node));
    return ScriptValue::Of(selection_.Add(node, call.TextIfAny(1)));
}

ScriptValue SelectionObject::Remove(const Call& call) {
    return ScriptValue::Of(selection_.Remove(call.Text(0)));
}

ScriptValue SelectionObject::Path(const Call& call) {
    return ScriptValue::Of(selection_.Path(ItemOf(call)));
}

ScriptValue SelectionObject::Paths(const Call&) {
    return ScriptValue::Array(selection_.Paths());
}

ScriptValue SelectionObject::Unit(const Call& call) {
    return ScriptValue::Of(selection_.Unit(ItemOf(call)));
}

ScriptValue SelectionObject::Units(const Call&) {
    return ScriptValue::Array(selection_.Units());
}

ScriptValue SelectionObject::Read(const Call&) {
    std::vector<FIValue> values(selection_.Size());
    selection_.Read({values, {}, {}, {}});
    return ScriptValue::Array(ValuesOf(values));
}

ScriptValue SelectionObject::Statuses(const Call&) {
    std::vector<FIValue> statuses(selection_.Size());
    selection_.Read({{}, {}, statuses, {}});
    return ScriptValue::Array(ValuesOf(statuses));
}

// Answers for each item why it was refused, empty when it was not.
ScriptValue SelectionObject::Write(const Call& call) {
    session_->NeedsRest();
    const std::vector<ScriptValue> given = ElementsOf(call.At(0));
    if (given.size() > selection_.Size()) {
        throw ScriptError(std::to_string(given.size()) + " values for " +
                          std::to_string(selection_.Size()) + " items");
    }
    return ScriptValue::Array(StoreAll(session_->Open(), selection_, given, call.TextIfAny(1)));
}

ScriptValue SelectionObject::States(const Call&) {
    std::vector<std::string> names;
    for (const client::ItemState& state : selection_.States()) {
        names.emplace_back(kStateNames[static_cast<std::size_t>(state.kind)]);
    }
    return ScriptValue::Array(names);
}

ScriptValue SelectionObject::Candidates(const Call& call) {
    return ScriptValue::Array(selection_.States()[ItemOf(call)].candidates);
}

ScriptValue SelectionObject::Save(const Call& call) {
    if (call.Text(0).empty()) throw ScriptError("Save needs the name of a file");
    selection_.Save(call.Text(0));
    return {};
}

ScriptValue SelectionObject::Load(const Call& call) {
    selection_ = client::Selection::Load(call.Text(0), session_->Open());
    return {};
}

ScriptValue SelectionObject::NewEnum(const Call&) {
    std::vector<ScriptValue> elements;
    selection_.ForEachNode([&](const std::string&, const std::optional<client::Node>& node) {
        elements.push_back(NodeObject::Make(session_, node));
    });
    return Walk::Make(std::move(elements));
}

}  // namespace fixtop::hovex
