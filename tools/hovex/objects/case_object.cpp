// SPDX-License-Identifier: Apache-2.0
#include "objects/case_object.h"

#include <filesystem>

#include "dispatch/text.h"
#include "fixtop/fixtop.h"
#include "objects/node_list.h"
#include "objects/node_object.h"
#include "objects/selection_object.h"
#include "objects/solver_object.h"

namespace fixtop::hovex {

constinit const MemberRow CaseObject::kRows[] = {
    Reads<&CaseObject::Open>("Open", 1, 1, 1),
    Reads<&CaseObject::IsOpen>("IsOpen", 2),
    Reads<&CaseObject::Save>("Save", 3, 0, 1),
    Reads<&CaseObject::Close>("Close", 4),
    Reads<&CaseObject::Raw>("Raw", 5),
    Reads<&CaseObject::Neutral>("Neutral", 6),
    Reads<&CaseObject::Flowsheet>("Flowsheet", 7),
    Reads<&CaseObject::Find>("Find", 8, 1, 1),
    Reads<&CaseObject::Matches>("Matches", 9, 1, 1),
    Reads<&CaseObject::Collect>("Collect", 10),
    Reads<&CaseObject::Paste>("Paste", 11, 0, 1),
    Reads<&CaseObject::Solve>("Solve", 12),
    Reads<&CaseObject::Solver>("Solver", 13),
    Reads<&CaseObject::Remarks>("Remarks", 14),
    Reads<&CaseObject::HasOldResults>("HasOldResults", 15),
    Reads<&CaseObject::UseUnitSet>("UseUnitSet", 16, 1, 1),
    Reads<&CaseObject::Folder>("Folder", 17),
    Stores<&CaseObject::PutFolder>("Folder", 17),
    Reads<&CaseObject::Version>("Version", 18),
    Reads<&CaseObject::ProcessId>("ProcessId", 19),
};

std::span<const MemberRow> CaseObject::Rows() const {
    return kRows;
}

ScriptValue CaseObject::Open(const Call& call) {
    session_->OpenFile(call.Text(0));
    return {};
}

ScriptValue CaseObject::IsOpen(const Call&) {
    return ScriptValue::Of(session_->IsOpen());
}

ScriptValue CaseObject::Save(const Call& call) {
    session_->Save(call.TextIfAny(0));
    return {};
}

ScriptValue CaseObject::Close(const Call&) {
    session_->Close();
    return {};
}

ScriptValue CaseObject::Raw(const Call&) {
    return NodeObject::Make(session_, session_->Open().Top());
}

ScriptValue CaseObject::Neutral(const Call&) {
    return NodeObject::Make(session_, session_->Open().Neutral());
}

ScriptValue CaseObject::Flowsheet(const Call&) {
    return NodeObject::Make(session_, session_->Open().Neutral().At("Flowsheet"));
}

ScriptValue CaseObject::Find(const Call& call) {
    return NodeObject::Make(session_, session_->Open().At(call.Text(0)));
}

ScriptValue CaseObject::Matches(const Call& call) {
    return NodeList::Make(session_, session_->Open().Matches(call.Text(0)));
}

ScriptValue CaseObject::Collect(const Call&) {
    return SelectionObject::Make(session_);
}

// Nothing when no text is given and the clipboard has none.
ScriptValue CaseObject::Paste(const Call& call) {
    if (call.Count() > 0) return SelectionObject::MakeOfText(session_, call.Text(0));
    session_->Open();
    FIValue text;
    const bool is_there = FixtopReadClipboard(text) == kResultOk && *text.CStr();
    return is_there ? SelectionObject::MakeOfText(session_, text.CStr())
                    : ScriptValue::Object(nullptr);
}

ScriptValue CaseObject::Solve(const Call&) {
    return ScriptValue::Of(session_->Solve().complete);
}

ScriptValue CaseObject::Solver(const Call&) {
    session_->Open();
    return ScriptValue::Object(new SolverObject(session_));
}

ScriptValue CaseObject::Remarks(const Call&) {
    return ScriptValue::Array(session_->Open().Remarks());
}

ScriptValue CaseObject::HasOldResults(const Call&) {
    return ScriptValue::Of(session_->Open().HasOldResults());
}

ScriptValue CaseObject::UseUnitSet(const Call& call) {
    session_->Open().UseUnitSet(call.Text(0));
    return {};
}

// From which names of files are told that have none of their own.
ScriptValue CaseObject::Folder(const Call&) {
    return ScriptValue::Of(Utf8(std::filesystem::current_path().wstring()));
}

ScriptValue CaseObject::PutFolder(const Call& call) {
    const std::string folder = call.Text(0);
    std::error_code error;
    std::filesystem::current_path(Wide(folder), error);
    if (error) throw ScriptError(folder + ": is no folder that can be used");
    return {};
}

ScriptValue CaseObject::Version(const Call&) {
    return ScriptValue::Of(std::string(FixtopVersion()));
}

ScriptValue CaseObject::ProcessId(const Call&) {
    return ScriptValue::Of(static_cast<int>(GetCurrentProcessId()));
}

}  // namespace fixtop::hovex
