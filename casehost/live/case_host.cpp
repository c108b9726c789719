// SPDX-License-Identifier: Apache-2.0
#include "casehost/case_host.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "casehost/file_path.h"
#include "casehost/units.h"
#include "fixtop/host/local_services.h"
#include "live/case.h"
#include "live/services_impl.h"

namespace fixtop::casehost {

namespace {

constexpr char kOwnExtension[] = ".json";

// The readers or the writers that are known, by extension.
template <class Function>
std::map<std::string, Function>& Known() {
    static std::map<std::string, Function> known;
    return known;
}

std::string LowerExtension(const std::string& path) {
    std::string extension = host::FileName(host::Text(path), host::Text()).Extension().Str();
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return extension;
}

// The extensions of all readers or writers: ".dwxmz or .json".
template <class Function>
std::string Extensions() {
    std::string text;
    for (const auto& each : Known<Function>()) text += (text.empty() ? "" : " or ") + each.first;
    return text;
}

bool IsNoFile(const std::string& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(FilePath(path), ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

}  // namespace

void RegisterReader(const std::string& extension, CaseReader reader) {
    Known<CaseReader>()[extension] = std::move(reader);
}

void RegisterWriter(const std::string& extension, CaseWriter writer) {
    Known<CaseWriter>()[extension] = std::move(writer);
}

CaseHost::CaseHost(bool with_window)
    : watch_(std::make_shared<StoreWatch>()),
      services_(std::make_unique<ServicesImpl>(*this, with_window)) {
    host::SetLocalServices(services_.get());
}

CaseHost::~CaseHost() {
    while (!cases_.empty()) Close(*cases_.back());
    closed_.clear();
    if (host::LocalServices() == services_.get()) host::SetLocalServices(nullptr);
}

host::HostServices& CaseHost::Services() {
    return *services_;
}

unsigned long CaseHost::ViewUpdates() const {
    return services_->ViewUpdates();
}

double CaseHost::ConfigData(const std::string& key) const {
    return services_->ConfigData(key);
}

OpenResult CaseHost::Open(const std::string& path) {
    const auto reader = Known<CaseReader>().find(LowerExtension(path));
    if (reader == Known<CaseReader>().end()) {
        const std::string expected = Extensions<CaseReader>();
        std::error_code ignored;
        if (!std::filesystem::exists(FilePath(path), ignored)) {
            return {nullptr, {{path, "there is no such file; expected " + expected}}};
        }
        return {nullptr, {{path, "no reader for this kind of file; expected " + expected}}};
    }
    ReadResult read = reader->second(path);
    if (!read.data) return {nullptr, std::move(read.problems)};
    OpenResult result = Open(*read.data);
    result.opened->SetDocumentName(host::FileName(host::Text(path), host::Text()));
    result.problems.insert(result.problems.begin(), read.problems.begin(), read.problems.end());
    return result;
}

OpenResult CaseHost::Open(const CaseData& data) {
    cases_.push_back(std::make_unique<Case>(data, watch_));
    active_ = cases_.back().get();
    if (engine_maker_ && !data.recorded) active_->SetEngine(engine_maker_());
    active_->Solver().SetStopButton(stop_button_);
    active_->SetSaver([this](Case& each) { return static_cast<bool>(Save(each)); });
    return {active_, active_->Problems()};
}

SaveResult CaseHost::Save(Case& open_case) {
    return Save(open_case, open_case.GetDocumentName().FullPath().Str());
}

SaveResult CaseHost::Save(Case& open_case, const std::string& path) {
    std::string extension = LowerExtension(path);
    // Who names a folder or a device does not mean a file beside it.
    if (extension.empty() && IsNoFile(path)) return {false, {path, "can't be written: not a file"}};
    const std::string target = extension.empty() ? path + kOwnExtension : path;
    if (extension.empty()) extension = kOwnExtension;
    const auto writer = Known<CaseWriter>().find(extension);
    if (writer == Known<CaseWriter>().end()) {
        const std::string expected = Extensions<CaseWriter>();
        return {false, {path, "cases can't be written to this kind of file; expected " + expected}};
    }
    SaveResult result = writer->second(open_case.ToData(), target);
    if (result) open_case.SetDocumentName(host::FileName(host::Text(target), host::Text()));
    return result;
}

std::string CaseHost::PublishedFile() const {
    if (!active_) return "";
    const host::FileName& document = active_->GetDocumentName();
    return document.Name().IsEmpty() ? "" : document.PublishedFile().Str();
}

void CaseHost::Close(Case& open_case) {
    const auto found = std::find_if(cases_.begin(), cases_.end(),
                                    [&](const auto& each) { return each.get() == &open_case; });
    if (found == cases_.end()) return;
    closed_.push_back(std::move(*found));
    cases_.erase(found);
    if (active_ == &open_case) active_ = cases_.empty() ? nullptr : cases_.back().get();
    open_case.Close();
}

std::string CaseHost::SolveProblem() const {
    return active_ ? active_->Solver().Message() : std::string();
}

std::optional<double> CaseHost::SolveShare() const {
    return active_ ? active_->Solver().DoneShare() : std::nullopt;
}

bool CaseHost::HasOldResults() const {
    return active_ && active_->HasOldResults();
}

bool CaseHost::UseUnitSet(const std::string& name) {
    const auto set = std::ranges::find(kUnitSetNames, name);
    if (!active_ || set == kUnitSetNames.end()) return false;
    active_->SetUnitSet(static_cast<unsigned>(set - kUnitSetNames.begin()));
    return true;
}

std::string CaseHost::UnitSet() const {
    return active_ ? kUnitSetNames[active_->UnitSet()] : "";
}

host::SimulationCase* CaseHost::ActiveCase() {
    return active_ && active_->IsVisible() ? active_ : nullptr;
}

// Cases and events may come and go while a turn runs, so neither is walked by iterator.
void CaseHost::Turn() {
    std::vector<std::function<void()>> due;
    due.swap(events_);
    for (const auto& event : due) event();
    for (std::size_t i = 0; i < cases_.size(); ++i) cases_[i]->Turn();
}

void CaseHost::RunHostLoop() {
    Turn();
    for (const auto& each : cases_) each->PurgeDeleted();
    closed_.clear();
}

}  // namespace fixtop::casehost
