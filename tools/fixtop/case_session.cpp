// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"

#include <array>

#include "terminal.h"

namespace fixtop {

CaseSession::CaseSession(client::Case open_case, std::string name, bool is_neutral)
    : case_(std::move(open_case)),
      name_(std::move(name)),
      is_neutral_(is_neutral),
      top_(is_neutral ? case_.Neutral() : case_.Top()),
      here_(top_) {}

Node CaseSession::Listed(const Node& node) const {
    return is_neutral_ ? case_.AsListed(node).value_or(node) : node;
}

std::unique_ptr<CaseSession> CaseSession::InNeutralView() const {
    if (is_neutral_) return nullptr;
    return std::unique_ptr<CaseSession>(new CaseSession(case_, name_, true));
}

client::Hold& CaseSession::Hold() {
    if (!hold_) hold_ = std::make_unique<client::Hold>(Solver());
    return *hold_;
}

void CaseSession::DropHold() {
    hold_.reset();
}

client::Released CaseSession::Release(const client::Solver::Progress& progress) {
    client::Released released = Hold().Release(progress);
    hold_.reset();
    return released;
}

std::unique_ptr<CaseSession> CaseSession::Open(const std::string& name, const ViewOptions& view,
                                               std::string& problem) {
    client::Case::SetStopButton(terminal::IsInterrupted);
    try {
        client::Case opened = client::Case::Open(name);
        if (view.neutral || HasFiles(view)) problem = OneLineEach(opened.OpenNeutral(view.files));
        return std::unique_ptr<CaseSession>(new CaseSession(std::move(opened), name, view.neutral));
    } catch (const client::CaseError& error) {
        problem = MessageOf(error);
        return nullptr;
    }
}

std::unique_ptr<CaseSession> CaseSession::Open(const std::string& name, const ViewOptions& view,
                                               Output& out) {
    std::string problem;
    auto session = Open(name, view, problem);
    if (!problem.empty()) out.Note(problem);
    if (!session || !terminal::NotesAreSeen()) return session;
    for (const std::string& remark : session->OpenCase().Remarks()) {
        out.Note(OneLineMessage(remark));
    }
    return session;
}

client::Released SolveCase(CaseSession& session, const client::Solver::Progress& progress) {
    // Whether a case was solved before it was opened its solver can't tell.
    session.TheChanges().SetUnsaved(true);
    if (session.IsHeld()) return session.Release(progress);
    return {session.Solver().Solve(progress), {}, {}};
}

ExitCode SaveTo(CaseSession& session, const std::string& file, Output& out) {
    if (file.empty()) return ExitCode::kOk;
    try {
        session.OpenCase().Save(file);
    } catch (const client::CaseError& error) {
        out.Note(MessageOf(error));
        return ExitCode::kUnreadable;
    }
    session.TheChanges().SetUnsaved(false);
    if (session.OpenCase().HasOldResults()) {
        out.Note(OneLineMessage(file) +
                 ": results that are older than a change are saved as stale");
    }
    return ExitCode::kOk;
}

namespace {

// The node that is meant by a path whose walk found one. Null when it leads to several of which
// none is told, which the problem then names, or to none: a walk goes on to the next sibling, of
// whatever name, when the named one does not pass a filter.
std::optional<client::Place> Meant(const Node& start, client::Place found, const std::string& path,
                                   Several several, std::string& problem) {
    constexpr int kNamed = 5;
    // A path in the host's notation leads to one.
    if (path.starts_with('/')) return found;
    const client::Pattern pattern(path);
    if (!pattern.MayMeanMore(start, found.node)) return found;
    std::string names;
    int count = 0;
    const int most = several == Several::kFirst ? 1 : kNamed + 1;
    pattern.ForEach(start, [&](const client::Place& match) {
        if (count == 0) found = match;
        if (++count <= kNamed) names += "\n  " + PathOf(match);
        return count < most;
    });
    if (count == 1) return found;
    problem = count == 0 ? "nothing matches: " + OneLine(path)
                         : "leads to several nodes: " + OneLine(path) + names +
                               (count > kNamed ? "\n  and more" : "");
    return std::nullopt;
}

}  // namespace

std::optional<client::Place> Locate(CaseSession& session, const std::string& path,
                                    std::string& problem, Several several) {
    try {
        for (const Node* start : std::array{&session.Here(), &session.Top()}) {
            auto found = start->Find(path);
            if (found) return Meant(*start, std::move(*found), path, several, problem);
        }
        problem = MessageOf(client::Pattern(path).WhyMissing(session.Here()));
    } catch (const client::PathError& error) {
        problem = MessageOf(error);
    }
    return std::nullopt;
}

std::string ForEachMeant(
    CaseSession& session, const std::string& path, bool first, bool all,
    const std::function<void(const client::Place& place, const std::string& path)>& visit) {
    if (all && !path.starts_with('/')) {
        return ForEachMatch(session, path,
                            [&](const client::Place& match) { visit(match, PathOf(match)); });
    }
    std::string problem;
    const auto found = Locate(session, path, problem, first ? Several::kFirst : Several::kRefuse);
    if (found) visit(*found, OneLine(path));
    return problem;
}

std::string PathOf(const client::Place& match) {
    const std::string& name = match.attribute;
    return OneLine(name.empty() ? match.path : match.path + '(' + client::WrittenName(name) + ')');
}

std::string ForEachMatch(CaseSession& session, const std::string& pattern,
                         const std::function<void(const client::Place& match)>& visit) {
    try {
        const client::Pattern prepared(pattern);
        return ForEachFound(
            session,
            [&](const Node& start, const FoundVisitor& found) { prepared.ForEach(start, found); },
            visit, "nothing matches: " + OneLine(pattern));
    } catch (const client::PathError& error) {
        return MessageOf(error);
    }
}

std::string ForEachFound(CaseSession& session, const Seeker& seek,
                         const std::function<void(const client::Place& match)>& visit,
                         const std::string& nothing) {
    int matches = 0;
    const auto count = [&](const client::Place& match) {
        if (terminal::IsInterrupted()) throw Interrupted();
        ++matches;
        visit(match);
        return true;
    };
    seek(session.Here(), count);
    const bool is_below = session.Here().Iterator().Depth() > 0;
    if (matches == 0 && is_below) seek(session.Top(), count);
    return matches > 0 ? "" : nothing;
}

namespace {

// "at least 0 kPa", or nothing.
std::string LimitOf(const Node& node, const char* attribute, const char* words) {
    const FIValue limit = node.Attribute(attribute);
    if (!limit.IsNumber()) return "";
    const std::string unit = node.UnitOf(attribute);
    return words + OneLine(limit) + (unit.empty() ? "" : ' ' + OneLine(unit));
}

// What the node tells of a value that it did not take.
std::string WhyNotStored(const Node& node) {
    if (node.Attribute("status").ToText() == "Calculated") return "; it is calculated";
    std::string expected = TextOf(node, "option_list");
    for (std::size_t at = 0; (at = expected.find(';', at)) != std::string::npos; at += 2) {
        expected.replace(at, 1, ", ");
    }
    for (const std::string& limit :
         {LimitOf(node, "lower_limit", "at least "), LimitOf(node, "upper_limit", "at most ")}) {
        expected += (expected.empty() || limit.empty() ? "" : ", ") + limit;
    }
    return expected.empty() ? "" : "; expected " + expected;
}

}  // namespace

std::string Store(CaseSession& session, const client::Place& place, const std::string& value,
                  const std::string& unit) {
    const bool is_value = place.attribute.empty() || place.attribute == "value";
    client::Hold& hold = session.Hold();
    Changes& changes = session.TheChanges();
    changes.Remember(place);
    try {
        if (is_value) {
            hold.Store(place.node, value, unit);
        } else {
            if (!unit.empty()) place.node.ShowIn(unit, place.attribute);
            place.node.SetAttribute(place.attribute, FIValue(value.c_str()));
        }
    } catch (const client::Refused& refused) {
        const bool is_bare = is_value && refused.Text() == "Value not stored";
        return OneLine(refused.Text()) + (is_bare ? WhyNotStored(place.node) : "");
    }
    changes.SetUnsaved(true);
    return "";
}

std::string MessageOf(const client::NotFound& error) {
    std::string near;
    for (const std::string& step : error.Near()) near += (near.empty() ? "" : ", ") + OneLine(step);
    const std::string& found = error.Found();
    return "no such node: " + OneLine(error.Path()) +
           (found.empty() ? "\n  nothing of it was found" : "\n  found: " + OneLine(found)) +
           (near.empty() ? "" : "\n  near: " + near);
}

std::string MessageOf(const client::PathError& error) {
    return OneLine(std::string_view(error.what()));
}

std::string MessageOf(const client::CaseError& error) {
    std::string lines;
    for (const std::string& problem : error.Problems()) {
        lines += (lines.empty() ? "" : "\n") + OneLineMessage(problem);
    }
    return lines;
}

}  // namespace fixtop
