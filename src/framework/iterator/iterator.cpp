// SPDX-License-Identifier: Apache-2.0
// FIIterator: making, copying and moving.

#include "framework/iterator/iterator.h"

#include <algorithm>
#include <string>

#include "framework/iterator/shielded_iterator.h"
#include "framework/iterator/shown_scope.h"
#include "framework/nodes/cursor.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

namespace {

// What a root stands on: it tells itself, or the family that lies below it.
Ref<Liveness> LifeOf(FIEntry& root) {
    const auto* living = LivingOf(root);
    Ref<FIContext> context;
    if (!living) {
        context = Ref<FIContext>::Adopt(root.GetContext());
        living = dynamic_cast<const LivingNode*>(context.Get());
    }
    return Ref<Liveness>::Share(living ? living->Life() : nullptr);
}

// A seek from the end stands behind the last element in some families and on it in others; where it
// does not leave the present element, the last one is found by walking on.
bool SeekLast(FICursorBase& cursor) {
    if (!cursor.Seek(kFromEnd, 0)) return cursor.Seek(kFromPresent, -1);
    const Ref<FICursorBase> ahead = Ref<FICursorBase>::Adopt(cursor.Clone(true));
    int left = 0;
    while (ahead->Seek(kFromPresent, 1)) ++left;
    return left == 0 || cursor.Seek(kFromPresent, left);
}

}  // namespace

FIIterator::FIIterator(FrameRoom* room)
    : entry_(Ref<FIEntry>::Share(EmptyEntry())), frames_(room) {}

FIIterator::FIIterator(FIEntry* entry, bool history, FrameRoom* room)
    : entry_(Ref<FIEntry>::Share(entry ? entry : EmptyEntry())),
      life_(LifeOf(*entry_)),
      history_(history),
      frames_(room) {}

FIIterator::FIIterator(const FIIterator& other, FrameRoom* room)
    : FIIteratorBase(),
      HasVarSet(),
      Counted(),
      entry_(other.entry_),
      life_(other.life_),
      history_(other.history_),
      frames_(room),
      frozen_(CloneElements(other.frozen_)) {
    other.ShareLevels();
    if (FrameVars* chain = room ? nullptr : other.FindChain()) {
        frames_.Fold(*chain, other.frames_.Size());
    } else {
        other.LayFrames(frames_);
    }
    if (other.vars_) vars_ = Ref<FrameVars>::Adopt(new FrameVars(other.vars_->map));
    var_set_.CopyFrom(other.var_set_);
}

FIIterator* FIIterator::Copy() {
    return new Shielded<FIIterator>(*this);
}

FIReferenceBase* FIIterator::MakeReference() {
    return new Shielded<FIReference>(*this);
}

int FIIterator::Release() {
    const int left = --references_;
    if (left == 0) delete this;
    return left;
}

const void* FIIterator::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

// A copy sees variables that are set later at the levels above it, so these levels need a map that
// both can hold.
void FIIterator::ShareLevels() const {
    if (frames_.IsFolded()) return;
    for (int i = 0; i < frames_.Size(); ++i) {
        Ref<FrameVars>& vars = frames_[i].vars;
        if (!vars) vars = Ref<FrameVars>::Adopt(new FrameVars);
    }
}

void FIIterator::OwnVariables(int level) {
    FrameStack& frames = Frames();
    for (int i = level; i < frames.Size(); ++i) {
        Ref<FrameVars>& vars = frames[i].vars;
        if (vars) vars = Ref<FrameVars>::Adopt(new FrameVars(vars->map));
    }
}

// Host objects point at each other, so the tree unfolds a graph. All frames above the last were
// compared when they were entered.
bool FIIterator::IsCycle() const {
    if (history_ || frames_.Size() < 2) return false;
    FrameStack& frames = Frames();
    FICursorBase& last = *frames.Last().cursor;
    const void* const type = last.TypeId();
    for (int i = 0; i < frames.Size() - 1; ++i) {
        FICursorBase& earlier = *frames[i].cursor;
        if (earlier.TypeId() == type && earlier.Compare(last) == 0) return true;
    }
    return false;
}

bool FIIterator::CanDescend() {
    return !IsCycle() && ShownScope(entry_, &var_set_)->IsContainer();
}

template <class Seek>
bool FIIterator::Descend(Seek seek) {
    if (frames_.Size() >= kDepthLimit || IsCycle()) return false;
    const Ref<FIContext> context =
        Ref<FIContext>::Adopt(ShownScope(entry_, &var_set_)->GetContext());
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    Unshare(cursor);
    if (!seek(*cursor)) return false;
    Ref<FIEntry> child = Ref<FIEntry>::Adopt(cursor->GetEntry());
    if (!child) return false;
    FrameStack& frames = Frames();
    frames.MakeRoom();
    frozen_.reset();
    frames.Push({std::move(entry_), std::move(cursor), std::move(vars_)});
    entry_ = std::move(child);
    vars_.Reset();
    return true;
}

template <class Seek>
bool FIIterator::MoveAside(Seek seek) {
    if (frames_.IsEmpty()) return false;
    Ref<FICursorBase> cursor = ShareToMove(Frames().Last().cursor);
    const bool stands = seek(*cursor);
    Ref<FIEntry> sibling = Ref<FIEntry>::Adopt(cursor->GetEntry());
    frozen_.reset();
    Frames().Last().cursor = std::move(cursor);
    entry_ = sibling ? std::move(sibling) : Ref<FIEntry>::Share(EmptyEntry());
    vars_.Reset();
    return stands;
}

bool FIIterator::Down(int index) {
    return Descend([index](FICursorBase& cursor) { return cursor.Seek(kFromFirst, index); });
}

bool FIIterator::DownFirst() {
    return Down(0);
}

bool FIIterator::DownLast() {
    return Descend(SeekLast);
}

bool FIIterator::SeekChild(const char* name) {
    return Descend([name](FICursorBase& cursor) { return cursor.SeekName(kFromFirst, name); });
}

bool FIIterator::SeekChildFrom(const char* name) {
    return MoveAside([name](FICursorBase& cursor) { return cursor.SeekName(kFromPresent, name); });
}

bool FIIterator::Next() {
    return MoveAside([](FICursorBase& cursor) { return cursor.Seek(kFromPresent, 1); });
}

bool FIIterator::Prev() {
    if (AtFirst()) return false;
    return MoveAside([](FICursorBase& cursor) { return cursor.Seek(kFromPresent, -1); });
}

bool FIIterator::First() {
    return MoveAside([](FICursorBase& cursor) { return cursor.Seek(kFromFirst, 0); });
}

bool FIIterator::Last() {
    return MoveAside(SeekLast);
}

bool FIIterator::Up() {
    if (frames_.IsEmpty()) return false;
    IteratorFrame frame = Frames().Pop();
    frozen_.reset();
    entry_ = std::move(frame.entry);
    vars_ = std::move(frame.vars);
    return true;
}

void FIIterator::ReturnTo(int depth) {
    while (Depth() > depth) Up();
}

bool FIIterator::AtFirst() {
    return frames_.IsEmpty() || Frames().Last().cursor->AtBegin();
}

bool FIIterator::AtLast() {
    return frames_.IsEmpty() || Frames().Last().cursor->AtEnd();
}

int FIIterator::Compare(FIIteratorBase& other) {
    if (other.TypeId() != TypeId()) return kNotComparable;
    FIIterator& that = static_cast<FIIterator&>(other);
    const int shared = std::min(Depth(), that.Depth());
    for (int i = 0; i < shared; ++i) {
        const int result = Frames()[i].cursor->Compare(*that.Frames()[i].cursor);
        if (result != 0) return result;
    }
    if (Depth() != that.Depth()) return Depth() < that.Depth() ? -1 : 1;
    return entry_->Compare(*that.entry_);
}

namespace {

std::uint64_t NumberOf(const FIEntry& entry) {
    const auto* living = LivingOf(entry);
    return living ? living->ObjectNumber() : 0;
}

// The lowest level whose node has an object of its own; -1 for none.
int ObjectLevel(const FIIterator& it, int depth) {
    int level = depth;
    while (level >= 0 && NumberOf(*it.EntryAt(level)) == 0) --level;
    return level;
}

}  // namespace

int FIIterator::ComparePlaces(const FIIterator& other) const {
    const int depth = frames_.Size();
    const int other_depth = other.frames_.Size();
    if (depth != other_depth) return depth < other_depth ? -1 : 1;
    const int level = ObjectLevel(*this, depth);
    if (level != ObjectLevel(other, depth)) return kNotComparable;
    if (level >= 0 && NumberOf(*EntryAt(level)) != NumberOf(*other.EntryAt(level))) {
        return kNotComparable;
    }
    for (int each = level + 1; each <= depth; ++each) {
        const int order = EntryAt(each)->Compare(*other.EntryAt(each));
        if (order != 0) return order;
    }
    return 0;
}

std::uint64_t FIIterator::ObjectNumber() const {
    return NumberOf(*entry_);
}

bool FIIterator::IsTracked() const {
    const auto* living = LivingOf(*entry_);
    return living && living->IsTracked();
}

LivingNode::Mark FIIterator::MarkOf() const {
    LivingNode::Mark mark;
    const int level = ObjectLevel(*this, frames_.Size());
    if (level >= 0) mark.holder = NumberOf(*EntryAt(level));
    FIValue name;
    for (int each = level + 1; each <= frames_.Size(); ++each) {
        const auto* living = LivingOf(*EntryAt(each));
        EntryAt(each)->GetName(name);
        mark.way += name.ToText() + '\n' + std::to_string(living ? living->MarkOf().ordinal : 0);
        mark.way += '\n';
    }
    return mark;
}

ReadAhead FIIterator::WhereReadsLook() const {
    ReadAhead ahead{entry_.Get()};
    if (const auto* living = LivingOf(*entry_)) living->TellReads(ahead);
    return ahead;
}

FIEntry* FIIterator::EntryAt(int level) const {
    if (level >= frames_.Size()) return entry_.Get();
    return frames_.IsFolded() ? FoldedLevel(level).level.entry.Get() : frames_[level].entry.Get();
}

bool FIIterator::IsKeyName(const char* name) {
    const Ref<FIContext> context = Ref<FIContext>::Adopt(entry_->GetContext());
    const Ref<FICursorBase> keys = Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor));
    keys->SeekName(kFromFirst, name);
    return keys->IsHidden();
}

}  // namespace fixtop
