// SPDX-License-Identifier: Apache-2.0
// FIReference: state, subscriptions and notifications.

#include "framework/reference/reference.h"

#include <algorithm>

#include "framework/iterator/shielded_iterator.h"

namespace fixtop {

namespace {

// The callbacks that the nodes are given; the owner is the reference.
template <void (FIReference::*kMember)()>
void Notify(void* owner, int) {
    (static_cast<FIReference*>(owner)->*kMember)();
}

constexpr FICallback kOnDeleted = &Notify<&FIReference::OnDeleted>;
constexpr FICallback kOnValue = &Notify<&FIReference::OnValueChanged>;
constexpr FICallback kOnAncestor = &Notify<&FIReference::OnAncestorChanged>;
constexpr FICallback kOnStructure = &Notify<&FIReference::OnStructureChanged>;

// What clients are told: a deletion is told as a change of value.
constexpr int kTellChange = kValueChanged;
constexpr int kTellStructure = kStructureChanged;

bool IsKindOfChange(int kind) {
    return std::ranges::count(ReferenceClients::kKinds, kind) > 0;
}

}  // namespace

FIReference::FIReference(FIIterator& iterator)
    : iterator_(Ref<FIIterator>::Adopt(iterator.CopyToHold())) {
    Listen([this] {
        SubscribeBasics();
        NoteRevision();
        Watch();
    });
}

FIReference::FIReference(const FIReference& other)
    : FIReferenceBase(),
      Counted(),
      state_(other.state_),
      iterator_(Ref<FIIterator>::Adopt(other.iterator_->CopyToHold())),
      revision_(other.revision_) {
    was_read_ = other.was_read_;
    Listen([this] {
        if (state_ == kLive) SubscribeBasics();
        if (state_ != kDeleted && !IsUnbound()) Watch();
    });
}

Ref<FIReference> FIReference::Unbound(Ref<FIIterator> iterator) {
    return Ref<FIReference>::Adopt(new Shielded<FIReference>(std::move(iterator), NotYetBound()));
}

FIReference::~FIReference() {
    if (Life()) Life()->Leave(*this);
    ++rounds_;
    ++stays_;
    memory::Contain([this] { clients_.Call(kNodeDeleted, kTellChange); });
    clients_.Clear();
    if (state_ != kDeleted) memory::Contain([this] { UnsubscribeAll(); });
}

int FIReference::Release() {
    const int left = --references_;
    if (left == 0) SafeDelete();
    return left;
}

void FIReference::SafeDelete() {
    if (stays_ == 0) {
        delete this;
    } else {
        delete_pending_ = true;
    }
}

bool FIReference::SubscribeEntry(int kind, FICallback callback) {
    return iterator_->EntryAt(iterator_->Depth())->Subscribe(this, kind, callback);
}

bool FIReference::SubscribeFrames(int kind, FICallback callback) {
    for (int level = iterator_->Depth() - 1; level >= 0; --level) {
        if (iterator_->EntryAt(level)->Subscribe(this, kind, callback)) return true;
    }
    return false;
}

bool FIReference::UnsubscribeFrames(int kind) {
    for (int level = iterator_->Depth() - 1; level >= 0; --level) {
        if (iterator_->EntryAt(level)->Unsubscribe(this, kind)) return true;
    }
    return false;
}

void FIReference::Watch() {
    if (Life()) Life()->Watch(*this);
}

void FIReference::CatchUp() {
    if (state_ == kDeleted || !IsBehind()) return;
    if (!Life()->Look()) return OnDeleted();
    // A place that nobody has bound or read yet is where its iterator stands.
    if (IsUnbound() && was_read_) state_ = kLive;
    if (!IsUnbound()) MarkStale();
}

template <class Begin>
void FIReference::Listen(Begin begin) {
    try {
        begin();
    } catch (...) {
        if (Life()) Life()->Leave(*this);
        UnsubscribeAll();
        throw;
    }
}

void FIReference::SubscribeBasics() {
    NoteReads();
    on_delete_ = SubscribeEntry(kNodeDeleted, kOnDeleted);
    on_ancestor_ = SubscribeFrames(kValueChanged, kOnAncestor);
}

// Values and structure only when a client wants them.
void FIReference::SubscribeAgain() {
    NoteReads();
    on_delete_ = SubscribeEntry(kNodeDeleted, kOnDeleted);
    on_value_ = !clients_.IsEmpty(kValueChanged) && SubscribeEntry(kValueChanged, kOnValue);
    on_ancestor_ = SubscribeFrames(kValueChanged, kOnAncestor);
    on_structure_ =
        !clients_.IsEmpty(kStructureChanged) && (SubscribeEntry(kStructureChanged, kOnStructure) ||
                                                 SubscribeFrames(kStructureChanged, kOnStructure));
}

void FIReference::DropValueSubscriptions() {
    if (on_value_) iterator_->EntryAt(iterator_->Depth())->Unsubscribe(this, kValueChanged);
    if (on_ancestor_) UnsubscribeFrames(kValueChanged);
    on_value_ = on_ancestor_ = false;
}

void FIReference::DropStructureSubscription() {
    if (!on_structure_) return;
    on_structure_ = false;
    FIEntry* entry = iterator_->EntryAt(iterator_->Depth());
    if (!entry->Unsubscribe(this, kStructureChanged)) UnsubscribeFrames(kStructureChanged);
}

void FIReference::UnsubscribeAll() {
    if (on_delete_) iterator_->EntryAt(iterator_->Depth())->Unsubscribe(this, kNodeDeleted);
    on_delete_ = false;
    DropValueSubscriptions();
    DropStructureSubscription();
}

bool FIReference::MarkStale() {
    if (state_ == kDeleted) return false;
    if (state_ == kLive) iterator_->Freeze();
    state_ = kStale;
    return true;
}

bool FIReference::Rebind() {
    CatchUp();
    if (state_ != kStale) return state_ == kLive;
    UnsubscribeAll();
    if (!iterator_->Thaw()) {
        OnDeleted();
        return false;
    }
    state_ = kLive;
    iterator_->Fold();
    NoteRevision();
    Listen([this] {
        SubscribeAgain();
        Watch();
    });
    return true;
}

bool FIReference::Subscribe(void* owner, int kind, FICallback callback) {
    const Stay stay(*this);
    if (!Rebind() || !IsKindOfChange(kind)) return false;
    if (kind == kValueChanged) {
        if (!on_value_) on_value_ = SubscribeEntry(kValueChanged, kOnValue);
        if (!on_ancestor_ && !on_value_) on_ancestor_ = SubscribeFrames(kValueChanged, kOnAncestor);
        if (!on_ancestor_ && !on_value_) return false;
    } else if (kind == kStructureChanged) {
        if (!on_structure_) {
            on_structure_ = SubscribeEntry(kStructureChanged, kOnStructure) ||
                            SubscribeFrames(kStructureChanged, kOnStructure);
        }
        if (!on_structure_) return false;
    }
    clients_.Add(kind, owner, callback);
    return true;
}

bool FIReference::Unsubscribe(void* owner, int kind) {
    const bool in_round = rounds_ > 0;
    if (!IsKindOfChange(kind) || !clients_.Leave(kind, owner, in_round)) return false;
    if (in_round) {
        erase_pending_ = true;
    } else {
        DropUnused(kind);
    }
    return true;
}

// After a client of this kind has left.
void FIReference::DropUnused(int kind) {
    if (state_ == kDeleted || !clients_.IsEmpty(kind)) return;
    if (kind == kValueChanged) DropValueSubscriptions();
    if (kind == kStructureChanged) DropStructureSubscription();
}

void FIReference::EndRound() {
    if (--rounds_ > 0 || !erase_pending_) return;
    erase_pending_ = false;
    for (int kind : ReferenceClients::kKinds) {
        if (clients_.EraseInactive(kind)) DropUnused(kind);
    }
}

void FIReference::OnAncestorChanged() {
    if (state_ == kDeleted) return;
    MarkStale();
    OnValueChanged();
}

void FIReference::OnValueChanged() {
    if (Life()) Life()->Heard(*this);
    const Stay stay(*this);
    ++rounds_;
    clients_.Call(kValueChanged, kTellChange);
    EndRound();
}

void FIReference::OnStructureChanged() {
    const Stay stay(*this);
    ++rounds_;
    clients_.Call(kStructureChanged, kTellStructure);
    EndRound();
}

void FIReference::OnDeleted() {
    if (state_ == kDeleted) return;
    const Stay stay(*this);
    ++rounds_;
    if (Life()) Life()->Leave(*this);
    UnsubscribeAll();
    state_ = kDeleted;
    clients_.Call(kNodeDeleted, kTellChange);
    clients_.Call(kValueChanged, kTellChange);
    EndRound();
}

}  // namespace fixtop
