// SPDX-License-Identifier: Apache-2.0
// The exports of paths, and of collections, whose items are found by them.

#include "collection/collection.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/fixtop.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/path/child_steps.h"
#include "framework/path/path_match.h"
#include "framework/path/path_names.h"
#include "front/own_iterator.h"
#include "path/prepared_path.h"

namespace fixtop {

struct FixtopPath {
    PreparedPath path;
};

namespace {

FIIteratorBase* Shown(FIIterator& node) {
    return &node;
}

const char* TextOrNull(const FIValue& value) {
    return value.IsNull() ? nullptr : value.CStr();
}

// What a client does within a visit is none of the module's work.
template <class Visitor, class Visited>
bool Ask(Visitor visit, void* owner, const Visited& visited) {
    return memory::Outside([&] { return visit(owner, &visited); });
}

void SetUnlessEmpty(FIValue& out, const std::string& text) {
    out.Clear();
    if (!text.empty()) out.SetText(text);
}

int ShowMatches(decltype(ForEachMatch)& find, const FixtopPath* path, FIIteratorBase* start,
                FixtopMatchVisitor visit, void* owner) {
    return memory::Or(0, [=, &find] {
        FIIterator* it = OwnIterator(start);
        if (!path || !it || !visit) return 0;
        return find(*it, path->path, [=](const PathMatch& match) {
            return Ask(
                visit, owner,
                FixtopMatch{Shown(match.node), match.path.c_str(), TextOrNull(match.attribute)});
        });
    });
}

}  // namespace

FixtopPath* FixtopPreparePath(const FIValue& expression, FIValue& error) {
    error.Clear();
    const auto give_up = [&]() -> FixtopPath* {
        error.SetText(memory::kOutOfMemoryText);
        return nullptr;
    };
    return memory::OrElse(give_up, [&]() -> FixtopPath* {
        auto made = std::make_unique<FixtopPath>(FixtopPath{PreparedPath(expression)});
        error = made->path.Error();
        return error.IsNull() ? made.release() : nullptr;
    });
}

void FixtopFreePath(FixtopPath* path) {
    delete path;
}

bool FixtopWalkPath(const FixtopPath* path, FIIteratorBase* node, FIValue& attribute) {
    return memory::OrTell(attribute, [&] {
        attribute.Clear();
        FIIterator* it = OwnIterator(node);
        return path && it && it->SeekPath(path->path, attribute);
    });
}

int FixtopMatchPath(const FixtopPath* path, FIIteratorBase* start, FixtopMatchVisitor visit,
                    void* owner) {
    return ShowMatches(ForEachMatch, path, start, visit, owner);
}

int FixtopMatchPathBelow(const FixtopPath* path, FIIteratorBase* start, FixtopMatchVisitor visit,
                         void* owner) {
    return ShowMatches(ForEachMatchBelow, path, start, visit, owner);
}

FIIteratorBase* FixtopEndOfPath(const FixtopPath* path, FIIteratorBase* start, FixtopPathEnd& end) {
    return memory::Or(nullptr, [&]() -> FIIteratorBase* {
        end = {};
        FIIterator* it = OwnIterator(start);
        if (!path || !it) return nullptr;
        const PathEnd found = EndOf(*it, path->path);
        end.found.SetText(found.found);
        end.name.SetText(found.name);
        end.step.SetText(found.step);
        end.parentheses = found.parentheses;
        end.moreFollows = found.goes_on;
        return found.node->Copy();
    });
}

void FixtopVisitChildren(FIIteratorBase* node, FixtopChildVisitor visit, void* owner) {
    memory::OrNothing([=] {
        FIIterator* it = OwnIterator(node);
        if (!it || !visit) return;
        ForEachChild(*it, [=](FIIterator& child, const ChildStep& step) {
            return Ask(visit, owner,
                       FixtopChild{Shown(child), step.name.c_str(), step.step.c_str(), step.index});
        });
    });
}

void FixtopPathTo(FIIteratorBase* node, FIValue& path) {
    memory::OrTell(path, [&] {
        FIIterator* it = OwnIterator(node);
        path.SetText(it ? PathTo(*it) : "");
    });
}

void FixtopWriteName(const FIValue& name, FIValue& written) {
    memory::OrTell(written, [&] { written.SetText(WrittenName(name.ToText())); });
}

void FixtopWriteKey(const FIValue& key, FIValue& written) {
    memory::OrTell(written, [&] { written.SetText(WrittenKey(key.ToText())); });
}

void FixtopKeyOf(FIIteratorBase* node, FIValue& key) {
    memory::OrTell(key, [&] {
        key.Clear();
        FIIterator* it = OwnIterator(node);
        if (it) SetUnlessEmpty(key, KeyOf(*it));
    });
}

FIEntry* FixtopEntryOf(FIIteratorBase* node) {
    return memory::Or(nullptr, [=]() -> FIEntry* {
        FIIterator* it = OwnIterator(node);
        return it ? Ref<FIEntry>::Share(it->EntryAt(it->Depth())).Detach() : nullptr;
    });
}

FICollectionBase* FixtopMakeCollection() {
    return memory::Or(nullptr, []() -> FICollectionBase* { return Collection::Make().Detach(); });
}

}  // namespace fixtop
