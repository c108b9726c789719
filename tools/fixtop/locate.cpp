#include <array>

#include "case_session.h"
#include "near_names.h"

namespace {

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + OneLine(QuotedName(name));
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

}  // namespace

std::string DescribeMissing(FIIteratorBase& start, const std::string& path) {
    const NodeRef node = CopyOf(start);
    std::string found;
    std::string wanted;
    for (const StepText& step : SplitPath(path)) {
        wanted = step.name;
        if (!node->SeekPath(FIValue(step.text.c_str()))) break;
        found = JoinPath(found, step.text);
    }
    std::string problem = "no such node: " + OneLine(path);
    problem += found.empty() ? "\n  nothing of it was found" : "\n  found: " + OneLine(found);
    const std::string near = Joined(NearNames(wanted, ChildNames(*node)));
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
