#include <array>

#include "case_session.h"
#include "near_names.h"

namespace fixtop {

namespace {

using Writer = std::string (*)(const std::string& name);

std::string Joined(const std::vector<std::string>& names, Writer write,
                   const std::string& before = "", const std::string& behind = "") {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + OneLine(before + write(name) + behind);
    }
    return text;
}

// A path may also be one of the host's own, as the attribute moniker shows it.
NodeRef OpenHostPath(FIIteratorBase& start, const std::string& path) {
    if (!path.starts_with('/')) return NodeRef();
    return NodeRef::Adopt(start.OpenAttribute(FIValue(path.c_str())));
}

// The attribute in which the path ends that led down to the node. Parentheses behind a node that
// has no key end a path, whatever follows them.
std::string AttributeAt(FIIteratorBase& node, int levels, const std::string& path) {
    const std::vector<StepText> steps = SplitPath(path);
    const std::string key = KeyOf(node);
    for (const StepText& step : steps) {
        if (!step.Stays()) --levels;
        if (levels == 0 && step.key != key && !step.key.empty()) return step.key;
    }
    const std::string& attribute = steps.back().attribute;
    return attribute == key ? "" : attribute;
}

std::string NearSteps(FIIteratorBase& parent, const StepText& step) {
    return Joined(NearNames(step.name, ChildNames(parent)), QuotedName);
}

// Whether the text in the parentheses of the step is a key or an attribute; `node` goes there. An
// attribute ends a path, so before another step it is only one where nothing has keys.
bool EnterParentheses(const StepText& step, NodeRef& node) {
    const NodeRef entered = CopyOf(*node);
    const std::string path = step.bare + '(' + QuotedKey(step.Parentheses()) + ')';
    if (!entered->SeekPath(FIValue(path.c_str()))) return false;
    const std::string key = KeyOf(*entered);
    if (!step.key.empty() && !key.empty() && key != step.key) return false;
    node = entered;
    return true;
}

// What may stand in the parentheses: the keys of the nodes that the step may mean and, where they
// end the path, the attributes of the one on which it stands.
std::vector<std::string> KeysAndAttributes(FIIteratorBase& parent, FIIteratorBase& node,
                                           const StepText& step) {
    std::vector<std::string> texts;
    ForEachChild(parent, [&](FIIteratorBase& child, const ChildPlace& place) {
        const bool is_meant = step.TakesAnyName() || place.name == step.name;
        if (is_meant && !step.Stays()) texts.push_back(KeyOf(child));
        return true;
    });
    if (step.key.empty() || KeyOf(node).empty()) {
        for (const auto& attribute : AttributesOf(node)) texts.push_back(attribute.first);
    }
    // A key that is there may be one that the filters pass over.
    std::erase(texts, step.Parentheses());
    return texts;
}

std::string NearParentheses(FIIteratorBase& parent, FIIteratorBase& node, const StepText& step) {
    return Joined(NearNames(step.Parentheses(), KeysAndAttributes(parent, node, step)), QuotedKey,
                  step.bare + '(', ")");
}

}  // namespace

std::string DescribeMissing(FIIteratorBase& start, const std::string& path) {
    NodeRef node = CopyOf(start);
    std::string found;
    std::string near;
    for (const StepText& step : SplitPath(path)) {
        const NodeRef parent = node;
        node = CopyOf(*parent);
        if (!node->SeekPath(FIValue(step.bare.c_str()))) {
            near = NearSteps(*parent, step);
            break;
        }
        NodeRef entered = step.Parentheses().empty() ? node : parent;
        if (!step.Parentheses().empty() && !EnterParentheses(step, entered)) {
            found = JoinPath(found, step.bare);
            near = NearParentheses(*parent, *node, step);
            break;
        }
        node = entered;
        found = JoinPath(found, step.text);
    }
    std::string problem = "no such node: " + OneLine(path);
    problem += found.empty() ? "\n  nothing of it was found" : "\n  found: " + OneLine(found);
    if (!near.empty()) problem += "\n  near: " + near;
    return problem;
}

std::optional<Located> Locate(CaseSession& session, const std::string& path, std::string& problem) {
    const std::array starts = {CopyOf(session.Here()), session.Top()};
    for (const NodeRef& start : starts) {
        if (const NodeRef node = OpenHostPath(*start, path)) return Located{node, ""};
    }
    problem = ParseError(path);
    if (!problem.empty()) return std::nullopt;
    const FIValue expression(path.c_str());
    for (const NodeRef& node : starts) {
        const int depth = node->Depth();
        if (!node->SeekPath(expression)) continue;
        const bool has_parentheses = path.find('(') != std::string::npos;
        const int levels = node->Depth() - depth;
        return Located{node, has_parentheses ? AttributeAt(*node, levels, path) : ""};
    }
    problem = DescribeMissing(session.Here(), path);
    return std::nullopt;
}

}  // namespace fixtop
