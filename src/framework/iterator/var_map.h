// SPDX-License-Identifier: Apache-2.0
#pragma once

// VarMap: variables by name, in the order of FIValue::Compare. FrameVars: the counted map of one
// level of an iterator, which copies of the iterator share. A handful of variables is usual, so the
// map is a sorted array.
//
// Iterators are copied more often than variables are set: copies of a map share the array until one
// of them changes.
//
// Some variables may be late: they are set when one of them is first asked for, by who owns the
// map.

#include <span>
#include <vector>

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "fixtop/semantic_function.h"
#include "fixtop/value.h"
#include "framework/nodes/small_object.h"

namespace fixtop {

// Counts the references to itself, from one on.
template <class T>
class CountedFromOne : public SmallObject {
 public:
    int AddRef() { return ++references_; }
    int Release() {
        const int left = --references_;
        if (left == 0) delete static_cast<T*>(this);
        return left;
    }
    bool IsShared() const { return references_ > 1; }

 protected:
    ~CountedFromOne() = default;

 private:
    int references_ = 1;
};

class VarMap {
 public:
    struct Variable {
        FIValue name;
        FIValue value;
    };

    // Replaces a variable of the same name.
    void Set(const FIValue& name, const FIValue& value);
    // Null when there is none; valid until the map changes.
    const FIValue* Find(const FIValue& name) const;
    bool Remove(const FIValue& name);

    // Late variables of the element of a list; none without variables.
    struct Late {
        const LateVariables* variables = nullptr;
        int index = 0;

        bool Has(const FIValue& name) const { return variables && IsAmong(name); }

     private:
        bool IsAmong(const FIValue& name) const;
    };
    Late GetLate() const { return array_ ? array_->late : Late(); }
    bool IsLate(const FIValue& name) const { return array_ && array_->late.Has(name); }
    // In place of those of before; what has one of their names goes.
    void SetLate(const Late& late);

    std::span<const Variable> Variables() const {
        return array_ ? std::span<const Variable>(array_->variables) : std::span<const Variable>();
    }

 private:
    struct Array : CountedFromOne<Array> {
        std::vector<Variable> variables;
        Late late;
    };

    // The array of this map alone.
    Array& Own();

    Ref<Array> array_;  // null before the first variable
};

class FrameVars : public CountedFromOne<FrameVars> {
 public:
    FrameVars() = default;
    explicit FrameVars(const VarMap& source) : map(source) {}

    VarMap map;

    // The level itself, for iterators that do not keep their frames (see FrameStack): its node, its
    // cursor where that can't be made again, and the level above. The first of them enters it.
    struct Level {
        Ref<FIEntry> entry;
        Ref<FICursorBase> cursor;
        Ref<FrameVars> above;
    };
    Level level;

    // False when another level was entered before.
    bool Enter(FIEntry* entry, FICursorBase* cursor, FrameVars* above) {
        if (!level.entry) {
            level = {Ref<FIEntry>::Share(entry), Ref<FICursorBase>::Share(cursor),
                     Ref<FrameVars>::Share(above)};
        }
        return level.entry.Get() == entry && level.cursor.Get() == cursor &&
               level.above.Get() == above;
    }

 private:
    friend class CountedFromOne<FrameVars>;
    ~FrameVars() = default;
};

}  // namespace fixtop
