// SPDX-License-Identifier: Apache-2.0
#pragma once

// Selection: chosen nodes of a case in an order, each with the unit in which it is shown, that can
// be saved and found again, on the same case or on another.
//
// The nodes are found once, and find themselves again after a change of the case. Items are counted
// from 0 in their order. Where an item has no node its path, place and unit are kept.

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fixtop/client/case.h"
#include "fixtop/collection.h"

namespace fixtop::client {

// How old a value is.
enum class Freshness : unsigned char {
    kUnknown,    // no value, or nothing tells
    kSpecified,  // or set by default
    kCalculated,
    kOld,  // from before the last change of the case
};

// Where a bulk read writes: as many as there are items, or empty for what is not wanted. A value
// that a node does not have is NULL; that of an item without a node is as a value of one that is
// gone: the text that says so.
struct SelectedValues {
    std::span<FIValue> values;
    std::span<FIValue> units;
    std::span<FIValue> statuses;
    std::span<Freshness> freshness;
};

// What has become of an item on a case on which it was looked for by its path.
struct ItemState {
    enum class Kind {
        kSame,     // its path leads to it
        kByPlace,  // its place in a list leads to it: by a name of its own nothing is called there
        kMoved,    // its path leads nowhere, or to another node by now; the candidates may be it
        kGone,     // nothing is like it
    };
    Kind kind = Kind::kSame;
    std::string path;                     // below the root, as it was chosen
    std::vector<std::string> candidates;  // paths that lead to nodes, the likeliest first
    // The unit that the selection has for it is none of its node, which shows its own.
    bool lacks_unit = false;
};

// It has a node.
inline bool IsThere(const ItemState& state) {
    return state.kind == ItemState::Kind::kSame || state.kind == ItemState::Kind::kByPlace;
}

class Selection {
 public:
    // Empty, of nodes of the tree of this one: Case::Top, or Case::Neutral. Copies share their
    // items.
    explicit Selection(const Node& root);
    // Reads a file in which a selection was saved, and looks for its nodes in the view that it was
    // chosen from. Throws CaseError, with the file and what is wrong.
    static Selection Load(const std::string& file, const Case& on);
    // There is something under this name that Load can try to read.
    static bool IsFile(const std::string& file);
    // The same without a case: items can be told and removed, and what is left be saved.
    static Selection Load(const std::string& file);
    // For who reads a file, changes the selection and saves it again: another one who asks for his
    // turn at the file, in this process or another, waits until what is answered ends.
    static std::shared_ptr<const void> TurnAt(const std::string& file);
    // What in the file was passed over when it was read, since it is not known or leads nowhere: it
    // is no item, and would be missing after a save.
    const std::vector<std::string>& Remarks() const { return remarks_; }
    // Throws CaseError, also for items whose nodes were given names since then that can't be kept;
    // the file is as it was then.
    void Save(const std::string& file) const;
    // Saves it beside the file of its case, which lists its items as "QSI Published Variables" from
    // then on; answers the name of the file. Throws CaseError: for a case without a file or of a
    // host that is not the library's own, nodes of the neutral view, and items that the case does
    // not have, or not in their units, which are named.
    std::string Publish() const;

    std::size_t Size() const;
    // False when it is an item already, whose unit becomes this one unless that is empty. Throws
    // Refused when the node can't be shown in the unit, its path can't be saved, or it is of
    // another tree. Where the node of an item is gone, one of the same path takes its place.
    bool Add(const Node& node, const std::string& unit = "");
    // By the path of an item, however it is written. False when there is no such one.
    bool Remove(const std::string& path);

    // Below which its nodes are; null without a case.
    const std::optional<Node>& Root() const { return root_; }
    // Below the root.
    std::string Path(std::size_t item) const;
    // In which it was chosen to be shown; empty for the node's own.
    std::string Unit(std::size_t item) const;
    // Null when the item has none. It shows its value in its own unit, not in that of the item.
    std::optional<Node> NodeOf(std::size_t item) const;
    using NodeVisitor =
        std::function<void(const std::string& path, const std::optional<Node>& node)>;
    void ForEachNode(const NodeVisitor& visit) const;
    // Of all items, in one pass.
    std::vector<std::string> Paths() const;
    std::vector<std::string> Units() const;

    // What has become of each item. One that is not the same has no node: nothing else is ever
    // shown in its place.
    std::vector<ItemState> States() const;
    // All items in one pass.
    void Read(const SelectedValues& into) const;
    // Stores into the first items in one batch, which solves once; NULL leaves an item as it is. A
    // unit that is not empty is that of all values, else each is in the unit of its item, and
    // refused where that is none of the node. Answers for each the text by which it was refused,
    // empty when it was taken.
    std::vector<std::string> Store(std::span<const FIValue> values, const std::string& unit = "");
    // The same with values as they are typed: where the node is a number the text has to be one. An
    // empty text leaves an item as it is.
    std::vector<std::string> Store(std::span<const std::string> typed,
                                   const std::string& unit = "");

    // For what this face does not have; lent.
    FICollectionBase& Collection() const { return *collection_; }

 private:
    Selection(std::optional<Node> root, Ref<FICollectionBase> collection)
        : root_(std::move(root)), collection_(std::move(collection)) {}
    Ref<FICollectionIteratorBase> ItemAt(std::size_t item) const;
    std::optional<Node> NodeAt(FICollectionIteratorBase& item) const;

    std::optional<Node> root_;
    Ref<FICollectionBase> collection_;
    std::vector<std::string> remarks_;
};

}  // namespace fixtop::client
