// SPDX-License-Identifier: Apache-2.0
// Selection: its files.

#include <algorithm>
#include <filesystem>
#include <set>

#include "case_state.h"
#include "fixtop/client/selection.h"
#include "module_log.h"
#include "saved_text.h"
#include "selection_items.h"

namespace fixtop::client {

namespace {

// Reads a text by `read`, false for one that is none; answers what the module has to say of it.
template <class Reader>
std::vector<std::string> ReadWith(const std::string& file, const char* expected,
                                  const Reader& read) {
    const ModuleLog log("");
    const bool is_read = Whole(read);
    std::vector<std::string> said;
    if (!is_read) said.push_back(file + ": no selection; " + expected);
    // The same was said as often as the text was tried.
    for (const std::string& line : log.Lines()) {
        if (std::find(said.begin(), said.end(), line) == said.end()) said.push_back(line);
    }
    if (!is_read) throw CaseError(std::move(said));
    return said;
}

std::string JoinedSteps(FICollectionIteratorBase& item) {
    std::string joined;
    for (const std::string& step : StepsOf(item)) joined += step + '\n';
    return joined;
}

// The items that would not come back of the text that is saved, by their paths: their nodes were
// given other names since they were chosen.
std::vector<std::string> LostIn(const std::string& text, FICollectionBase& saved) {
    std::vector<std::string> suspects;
    for (const auto at = FirstOf(saved); at->IsValid(); at->Next()) {
        if (!IsPlain(PathOf(*at))) suspects.push_back(JoinedSteps(*at));
    }
    if (suspects.empty()) return {};
    const Ref<FICollectionBase> read = NewCollection();
    std::set<std::string> back;
    if (Whole([&] { return read->FromXml(text.c_str()); })) {
        for (const auto at = FirstOf(*read); at->IsValid(); at->Next()) {
            back.insert(JoinedSteps(*at));
        }
    }
    std::erase_if(suspects, [&](const std::string& steps) { return back.contains(steps); });
    return suspects;
}

constexpr char kEitherRoot[] = "expected XML with the root CollectionBackup or Selection";
constexpr char kOneRoot[] =
    "expected XML with the root CollectionBackup; what has the root Selection is read with a case";

// The tree that the steps of a file begin in. Whole paths say it by their first name, so that those
// are looked for in both.
Node RootFor(FICollectionBase& read, const Case& on) {
    FIValue id;
    read.GetRootId(id);
    return id.IsNull() || id.ToText() == on.Top().Name() ? on.Top() : on.Neutral();
}

}  // namespace

bool Selection::IsFile(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::exists(std::u8string(file.begin(), file.end()), ignored);
}

std::shared_ptr<const void> Selection::TurnAt(const std::string& file) {
    return TakeTurnAt(file);
}

Selection Selection::Load(const std::string& file) {
    const std::string text = ReadSavedText(file);
    Selection selection(std::nullopt, NewCollection());
    selection.remarks_ =
        ReadWith(file, kOneRoot, [&] { return selection.collection_->FromXml(text.c_str()); });
    return selection;
}

Selection Selection::Load(const std::string& file, const Case& on) {
    const std::string text = ReadSavedText(file);
    const Ref<FICollectionBase> read = NewCollection();
    bool is_backup = false;
    Selection selection(on.Top());
    selection.remarks_ = ReadWith(file, kEitherRoot, [&] {
        is_backup = read->FromXml(text.c_str());
        if (is_backup) selection.root_ = RootFor(*read, on);
        return selection.collection_->Load(text.c_str(), selection.root_->Iterator());
    });
    if (is_backup || selection.Size() > 0) return selection;
    selection.root_ = on.Neutral();
    selection.remarks_ = ReadWith(file, kEitherRoot, [&] {
        return selection.collection_->Load(text.c_str(), selection.root_->Iterator());
    });
    return selection;
}

std::string Selection::Publish() const {
    std::string file = root_ ? Case(root_->OpenCase()).PublishedFile() : "";
    if (file.empty()) throw CaseError({"variables are published beside the file of a case"});
    if (!(*root_ == Case(root_->OpenCase()).Top())) {
        throw CaseError({file + ": published variables are of the case's own tree; these nodes are "
                                "of the neutral view"});
    }
    std::vector<std::string> missing;
    for (const ItemState& state : States()) {
        if (!IsThere(state)) missing.push_back(state.path + ": not in the case");
        if (state.lacks_unit) missing.push_back(state.path + ": not in the unit of the selection");
    }
    if (!missing.empty()) throw CaseError(std::move(missing));
    Save(file);
    return file;
}

void Selection::Save(const std::string& file) const {
    const FIValue text = Whole([this] {
        FIValue whole;
        collection_->ToXml(whole);
        return whole;
    });
    const std::string written = text.ToText();
    std::vector<std::string> lost = LostIn(written, *collection_);
    for (std::string& steps : lost) {
        std::replace(steps.begin(), steps.end(), '\n', '.');
        steps.insert(0, file + ": not saved, for this name would not come back: ");
    }
    if (!lost.empty()) throw CaseError(std::move(lost));
    WriteSavedText(file, written);
}

}  // namespace fixtop::client
