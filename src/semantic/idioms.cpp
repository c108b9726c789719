// SPDX-License-Identifier: Apache-2.0
#include "semantic/idioms.h"

#include <cstring>

namespace fixtop::semantic {

namespace {

// More than any key that is looked for, so that none is cut to one of them.
constexpr int kKeyLimit = 32;

}  // namespace

Ref<FIIteratorBase> CopyOf(FIIteratorBase& it) {
    return Ref<FIIteratorBase>::Adopt(it.Copy());
}

Ref<FIIteratorBase> CopyUnlessMove(FIIteratorBase& it, int move) {
    return move ? Ref<FIIteratorBase>::Share(&it) : CopyOf(it);
}

bool SeekNames(FIIteratorBase& it, Names names) {
    for (const char* name : names) {
        if (!it.SeekPath(FIValue(name))) return false;
    }
    return true;
}

FIValue ReadValue(FIIteratorBase& it) {
    FIValue value;
    it.GetAttribute(FIValue("value"), value);
    return value;
}

FIValue ReadValueBelow(FIIteratorBase& it, Names names) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    return SeekNames(*walker, names) ? ReadValue(*walker) : FIValue();
}

FIValue ReadChildValue(FIIteratorBase& it, const char* name) {
    if (!SeekNames(it, {name})) return FIValue();
    FIValue value = ReadValue(it);
    it.Up();
    return value;
}

FIValue ReadElementValue(FIIteratorBase& it, const char* array, int index) {
    if (!SeekNames(it, {array})) return FIValue();
    FIValue value;
    if (it.Down(index)) {
        value = ReadValue(it);
        it.Up();
    }
    it.Up();
    return value;
}

FIValue ReadId(FIIteratorBase& it) {
    FIValue id;
    it.GetAttribute(FIValue("id"), id);
    return id;
}

FIValue AsText(FIValue value) {
    if (value.IsNumber()) value.SetText(value.ToText());
    return value;
}

int CountChildren(FIIteratorBase& it, Names names) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, names) || !walker->DownFirst()) return 0;
    int count = 1;
    while (walker->Next()) ++count;
    return count;
}

int SetElementName(FIIteratorBase& it, const char* variable, int index) {
    FIValue name("Elem");
    name.AppendInt(index);
    it.SetVarText(variable, name);
    return index;
}

int SetElementIndex(FIIteratorBase& it, const char* variable, int index) {
    it.SetVarText(variable, FIValue::OfInt(index));
    return index;
}

int MoveToElement(FIIteratorBase& it, const char* array, int index) {
    if (SeekNames(it, {array})) it.Down(index);
    return index;
}

int ArrayList(FIIteratorBase& it, int index, const char* variable, Names array) {
    return index == kCountIndex ? CountChildren(it, array) : SetElementName(it, variable, index);
}

int NumberList(FIIteratorBase& it, int index, const char* variable, const char* number) {
    if (index == kCountIndex) return ReadValueBelow(it, {number}).AsInt();
    return SetElementName(it, variable, index);
}

int MovingList(FIIteratorBase& it, int index, const char* array) {
    return index == kCountIndex ? CountChildren(it, {array}) : MoveToElement(it, array, index);
}

bool SeekOfKey(FIIteratorBase& it, const char* key, int index) {
    if (index < 0) return false;
    FIValue path(key);
    path.AppendChar('#');
    path.AppendInt(index);
    return it.SeekPath(path);
}

bool NextOfKey(FIIteratorBase& it, const char* key) {
    char name[kKeyLimit];
    while (it.Next()) {
        it.NameText(name, sizeof name);
        if (std::strcmp(name, key) == 0) return true;
    }
    return false;
}

int IndexList(FIIteratorBase& it, int index, const char* variable, Names names) {
    return index == kCountIndex ? CountChildren(it, names) : SetElementIndex(it, variable, index);
}

bool FindChild(FIIteratorBase& it, const ChildTest& accepts, int limit) {
    for (int i = 0; i < limit && it.Down(i); ++i) {
        if (accepts(it)) return true;
        it.Up();
    }
    return false;
}

bool NextTimes(FIIteratorBase& it, int times) {
    for (int i = 0; i < times; ++i) {
        if (!it.Next()) return false;
    }
    return true;
}

bool HasElement(FIIteratorBase& it, const char* array, const std::string& text, int limit) {
    if (!SeekNames(it, {array})) return false;
    const auto has_text = [&text](FIIteratorBase& element) {
        const FIValue value = ReadValue(element);
        return !value.IsNull() && value.ToText() == text;
    };
    const bool found = FindChild(it, has_text, limit);
    if (found) it.Up();
    it.Up();
    return found;
}

// Asked of every child of a list for each of its elements.
FIValue ReadType(FIIteratorBase& it) {
    static const FIValue name("type");
    FIValue type;
    it.GetAttribute(name, type);
    if (!type.IsText()) type.SetText(type.ToText());
    return type;
}

namespace {

int CountAccepted(FIIteratorBase& it, const char* container, const ChildTest& accepts) {
    const Ref<FIIteratorBase> walker = CopyOf(it);
    if (!SeekNames(*walker, {container}) || !walker->DownFirst()) return 0;
    int count = 0;
    do {
        count += accepts(*walker);
    } while (walker->Next());
    return count;
}

int NextAccepted(FIIteratorBase& it, const ChildTest& accepts) {
    while (it.Next()) {
        if (accepts(it)) return kNextIndex;
    }
    return kCountIndex;
}

}  // namespace

int CountAcceptedChildren(FIIteratorBase& it, const char* container, const ChildTest& accepts,
                          int index) {
    if (index == kCountIndex) return CountAccepted(it, container, accepts);
    if (index == kNextIndex) return NextAccepted(it, accepts);
    if (!SeekNames(it, {container}) || !it.DownFirst()) return index;
    int position = accepts(it) ? 0 : -1;
    // Not Next's answer ends the walk but the index. A list that has lost elements since it was
    // counted is left at its end, or where running off it leads.
    while (position != index) {
        if (!it.Next() && (it.AtLast() || it.AtFirst())) break;
        position += accepts(it);
    }
    return index;
}

int CountTypedChildren(FIIteratorBase& it, const char* container, const char* type, int index) {
    const auto has_type = [type](FIIteratorBase& child) {
        return std::strcmp(ReadType(child).CStr(), type) == 0;
    };
    return CountAcceptedChildren(it, container, has_type, index);
}

bool CompositionStep(FIIteratorBase& it, int move, const char* array, const char* variable) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    if (!SeekNames(*walker, {array})) return false;
    FIValue index;
    if (walker->GetVarText(variable, index) && walker->Down(index.AsInt())) return true;
    walker->Up();
    return false;
}

bool PhaseComponentStep(FIIteratorBase& it, int move, const char* array) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    FIValue phase;
    if (!walker->GetVarText("PhaseName", phase) || !SeekNames(*walker, {array})) return false;
    return CompositionStep(*walker, 1, phase.ToText().c_str(), "PhaseCmpCnt");
}

bool NestedStep(FIIteratorBase& it, int move, const char* variable, Names names) {
    const Ref<FIIteratorBase> walker = CopyUnlessMove(it, move);
    FIValue index;
    return walker->GetVarText(variable, index) && SeekNames(*walker, names) &&
           walker->Down(index.AsInt());
}

bool FlashPhaseStep(FIIteratorBase& it, int move, const char* phase) {
    return NestedStep(it, move, "FlashPhaseCmpCnt", {phase, "Comp Mole Frac"});
}

}  // namespace fixtop::semantic
