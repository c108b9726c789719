// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/making.h"

namespace fixtop::lifetimes {

namespace {

using Iterator = Ref<FIIteratorBase>;

std::unique_ptr<Subject> MakeChildCursor(const Ref<FIEntry>& root, const Path& path,
                                         const Access& access) {
    const Ref<FIEntry> parent = EntryAt(root, Path(path.begin(), path.end() - 1));
    if (!parent) return nullptr;
    const auto context = Ref<FIContext>::Adopt(parent->GetContext());
    auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    if (!cursor->SeekName(kFromFirst, path.back().name.c_str())) return nullptr;
    if (path.back().number > 0) cursor->Seek(kFromPresent, path.back().number);
    return MakeChildCursorSubject(cursor, access);
}

std::unique_ptr<Subject> MakeAttributeCursor(const Ref<FIEntry>& root, const Path& path,
                                             const Access& access) {
    const Ref<FIEntry> entry = EntryAt(root, path);
    if (!entry) return nullptr;
    const auto source = Ref<FIAttributeSource>::Adopt(entry->GetAttributeSource());
    auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    cursor->SeekName(kFromFirst, access.row);
    return MakeAttributeCursorSubject(cursor);
}

// The iterator that lends its variables goes at once.
std::unique_ptr<Subject> MakeLentCursor(const Ref<FIEntry>& root, const Path& path,
                                        const Access& access) {
    const Iterator it = IteratorAt(root, path);
    if (!it) return nullptr;
    const auto copy = Iterator::Adopt(it->Copy());
    const auto source = Ref<FIAttributeSource>::Adopt(copy->GetAttributeSource());
    auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    cursor->SetVarSet(copy->GetVarSet());
    cursor->SeekName(kFromFirst, access.row);
    return MakeAttributeCursorSubject(cursor);
}

std::unique_ptr<Subject> MakeFrozen(Kind kind, Iterator it, const Path& path,
                                    const Access& access) {
    if (kind == Kind::frozen_again) {
        it->Freeze();
        it->Thaw();
        // Away and back, so that there is something new to save.
        it->Up();
        it->SeekPath(FIValue(TextOf({path.back()}).c_str()));
    }
    it->Freeze();
    return MakeIteratorSubject(std::move(it), access, true);
}

std::unique_ptr<Subject> MakeOnEntry(Kind kind, const Ref<FIEntry>& entry, const Access& access) {
    if (!entry) return nullptr;
    return kind == Kind::node ? MakeNodeSubject(entry, access) : MakeBatchSubject(entry, access);
}

}  // namespace

std::string TextOf(const Path& path) {
    std::string text;
    for (const Step& step : path) {
        text += (text.empty() ? "\"" : ".\"") + step.name + "\"";
        if (step.number > 0) text += "#" + std::to_string(step.number);
    }
    return text;
}

Ref<FIIteratorBase> IteratorAt(const Ref<FIEntry>& root, const Path& path) {
    auto it = Iterator::Adopt(FixtopMakeIterator(root.Get(), false));
    if (path.empty()) return it;
    return it->SeekPath(FIValue(TextOf(path).c_str())) ? it : Iterator();
}

// The entries above are let go on the way.
Ref<FIEntry> EntryAt(const Ref<FIEntry>& root, const Path& path) {
    Ref<FIEntry> entry = root;
    for (const Step& step : path) {
        const auto context = Ref<FIContext>::Adopt(entry->GetContext());
        const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
        if (!cursor->SeekName(kFromFirst, step.name.c_str())) return {};
        if (step.number > 0 && !cursor->Seek(kFromPresent, step.number)) return {};
        entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
    }
    return entry;
}

std::unique_ptr<Subject> MakeSubject(Kind kind, const Ref<FIEntry>& root, const Path& path,
                                     const Access& access) {
    switch (kind) {
        case Kind::node:
        case Kind::batch:
            return MakeOnEntry(kind, EntryAt(root, path), access);
        case Kind::attribute_cursor:
            return MakeAttributeCursor(root, path, access);
        case Kind::lent_cursor:
            return MakeLentCursor(root, path, access);
        case Kind::child_cursor:
            return MakeChildCursor(root, path, access);
        default:
            break;
    }
    Iterator it = IteratorAt(root, path);
    if (!it) return nullptr;
    switch (kind) {
        case Kind::reference:
            return MakeReferenceSubject(it, access);
        case Kind::subscriber:
            return MakeSubscriberSubject(it, access);
        case Kind::frozen:
        case Kind::frozen_again:
            return MakeFrozen(kind, it, path, access);
        case Kind::copy:
            it = Iterator::Adopt(it->Copy());
            break;
        default:
            break;
    }
    return MakeIteratorSubject(it, access, false);
}

}  // namespace fixtop::lifetimes
