// SPDX-License-Identifier: Apache-2.0
#include "semantic/links.h"

#include <string>

#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

// Lists of the objects of a flowsheet.
constexpr const char* kObjectLists[] = {"Streams", "UnitOps"};

bool GoUp(FIIteratorBase& it, int levels) {
    while (levels > 0 && it.Up()) --levels;
    return levels == 0;
}

// To the object in one of the lists below the present node; in place when none has it.
bool SeekListed(FIIteratorBase& it, const char* name) {
    for (const char* list : kObjectLists) {
        if (!SeekNames(it, {list})) continue;
        if (it.SeekChild(name)) return true;
        it.Up();
    }
    return false;
}

// In place when no flowsheet from the present level up has it.
bool SeekInFlowsheet(FIIteratorBase& it, const char* name) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    int levels = 0;
    while (!SeekListed(*walker, name)) {
        if (!walker->Up()) return false;
        ++levels;
    }
    GoUp(it, levels);
    return SeekListed(it, name);
}

}  // namespace

// The text is a name and no path, so it may hold any character; no object has the empty name.
bool SeekLinked(FIIteratorBase& it, const FIValue& name, int levels) {
    if (!GoUp(it, levels)) return false;
    const std::string text = name.ToText();
    return it.SeekChild(text.c_str()) || SeekInFlowsheet(it, text.c_str());
}

bool FollowLink(FIIteratorBase& it, int levels) {
    const FIValue name = ReadValue(it);
    return !name.IsNull() && SeekLinked(it, name, levels);
}

}  // namespace fixtop::semantic
