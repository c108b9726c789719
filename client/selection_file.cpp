// SPDX-License-Identifier: Apache-2.0
// Selection: its files.

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "case_state.h"
#include "fixtop/client/selection.h"
#include "module_log.h"
#include "saved_text.h"
#include "selection_items.h"

namespace fixtop::client {

namespace {

// Reads a text by `read`, false for one that is none, and what the module has to say of it.
template <class Reader>
void ReadWith(const std::string& file, const char* expected, const Reader& read) {
    const ModuleLog log("");
    if (Whole(read)) return;
    std::vector<std::string> problems = {file + ": no selection; " + expected};
    // The same was said as often as the text was tried.
    std::unique_copy(log.Lines().begin(), log.Lines().end(), std::back_inserter(problems));
    throw CaseError(std::move(problems));
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

Selection Selection::Load(const std::string& file) {
    const std::string text = ReadSavedText(file);
    Ref<FICollectionBase> collection = NewCollection();
    ReadWith(file, kOneRoot, [&] { return collection->FromXml(text.c_str()); });
    return {std::nullopt, std::move(collection)};
}

Selection Selection::Load(const std::string& file, const Case& on) {
    const std::string text = ReadSavedText(file);
    const Ref<FICollectionBase> read = NewCollection();
    bool is_backup = false;
    Selection selection(on.Top());
    ReadWith(file, kEitherRoot, [&] {
        is_backup = read->FromXml(text.c_str());
        if (is_backup) selection.root_ = RootFor(*read, on);
        return selection.collection_->Load(text.c_str(), selection.root_->Iterator());
    });
    if (is_backup || selection.Size() > 0) return selection;
    selection.root_ = on.Neutral();
    ReadWith(file, kEitherRoot, [&] {
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
        if (IsThere(state)) continue;
        missing.push_back(state.path + ": not in the case");
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
    WriteSavedText(file, text.ToText());
}

}  // namespace fixtop::client
