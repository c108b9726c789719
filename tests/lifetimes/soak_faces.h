// SPDX-License-Identifier: Apache-2.0
#pragma once

// A collection of the random client behind one face: as it is, or as an automation object.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/fixtop.h"

namespace fixtop::lifetimes {

class SelectionFace {
 public:
    static constexpr int kEars = 2;
    // Which of the ears hears of which place, and the kind of change; -1 where that is not told.
    using Heard = std::function<void(int ear, int place, int kind)>;

    virtual ~SelectionFace() = default;

    virtual bool Add(FIIteratorBase& node) = 0;
    virtual std::string AsXml() = 0;
    // The text of each item's row.
    virtual std::vector<std::string> Read(const char* row) = 0;
    // An empty text leaves an item as it is. False when one was refused.
    virtual bool Store(const std::vector<std::string>& texts) = 0;
    // False when it takes nobody.
    virtual bool Join(int ear) = 0;
    virtual void Leave(int ear) = 0;
    // Lets go of the collection, from within its own operations too; nothing else is called then.
    virtual void Drop() = 0;
    // The collection holds no ear any more.
    virtual bool IsLeft() const { return true; }
    // Null for an automation object.
    virtual FICollectionBase* Plain() { return nullptr; }
};

std::unique_ptr<SelectionFace> MakePlainFace(SelectionFace::Heard heard);
// Of what a text of the backup form has, sought from the root of an entry.
std::unique_ptr<SelectionFace> MakeAutomationFace(FIEntry& root, const std::string& text,
                                                  SelectionFace::Heard heard);

}  // namespace fixtop::lifetimes
