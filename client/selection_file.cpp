// SPDX-License-Identifier: Apache-2.0
// Selection: its files.

#include <filesystem>

#include "case_state.h"
#include "fixtop/client/selection.h"
#include "saved_text.h"
#include "selection_items.h"

namespace fixtop::client {

namespace {

[[noreturn]] void ThrowNoSelection(const std::string& file) {
    throw CaseError({file + ": no selection; expected XML with the root CollectionBackup or "
                            "Selection"});
}

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
    if (!Whole([&] { return collection->FromXml(text.c_str()); })) ThrowNoSelection(file);
    return {std::nullopt, std::move(collection)};
}

Selection Selection::Load(const std::string& file, const Case& on) {
    const std::string text = ReadSavedText(file);
    const Ref<FICollectionBase> read = NewCollection();
    const bool is_backup = Whole([&] { return read->FromXml(text.c_str()); });
    Selection selection(is_backup ? RootFor(*read, on) : on.Top());
    const auto load = [&] {
        return Whole(
            [&] { return selection.collection_->Load(text.c_str(), selection.root_->Iterator()); });
    };
    if (!load()) ThrowNoSelection(file);
    if (is_backup || selection.Size() > 0) return selection;
    selection.root_ = on.Neutral();
    if (!load()) ThrowNoSelection(file);
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
        Renewed(*collection_).ToXml(whole);
        return whole;
    });
    WriteSavedText(file, text.ToText());
}

}  // namespace fixtop::client
