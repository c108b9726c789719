// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIReference: the one reference of the framework; fixtop/reference.h tells the operations.
//
// State: live until the host tells of a change above the node, or has changed without telling, or
// after every use when nobody on the path tells of changes; then stale, the position frozen, until
// the next use finds the node again; deleted for good when the host says so, when the case is gone
// or the node can't be found. It watches the case by itself, so whatever becomes of the records
// that it has at the nodes, it hears of changes and of the end. Re-entrance: callbacks may read,
// subscribe, unsubscribe and release. Destruction waits for the end of the outermost round and of
// the guarded operation in whose middle the round came.

#include "diagnostics/instance_counts.h"
#include "fixtop/reference.h"
#include "framework/iterator/iterator.h"
#include "framework/reference/reference_clients.h"

namespace fixtop {

class FIReference : public FIReferenceBase,
                    private Liveness::Watcher,
                    private Counted<CountedClass::FIReference> {
 public:
    enum State : std::uint8_t { kLive = 0, kStale = 1, kDeleted = 2 };

    explicit FIReference(FIIterator& iterator);
    FIReference(const FIReference& other);
    struct NotYetBound {};
    FIReference(Ref<FIIterator> iterator, NotYetBound)
        : state_(kStale), iterator_(std::move(iterator)) {
        NoteRevision();
    }
    // One that listens to nobody yet. Whoever asked for it may move it through GetIterator; its
    // first guarded use binds it to where it stands then, but for reads while the host's number
    // says that no structure has changed: nobody need tell of that. Shares no position with
    // anybody.
    static Ref<FIReference> Unbound(Ref<FIIterator> iterator);
    // The same on a copy of this one's place, null when the node is gone. One that is not bound
    // itself is copied as it stands.
    Ref<FIReference> UnboundCopy();
    // One holder alone has it, and since it was made as an unbound copy it was led elsewhere and
    // read at most: it may be led on where another copy would be made.
    bool MayBeLedOn() const {
        return references_ == 1 && stays_ == 0 && MayReadUnbound() && !iterator_->ShowsOwn();
    }
    FIReference& operator=(const FIReference&) = delete;

    int AddRef() override { return ++references_; }
    int Release() override;

    FIIteratorBase* Copy() override;
    int Depth() override;
    void GetName(FIValue& out) override;
    void NameText(char* buffer, int size) override;
    int NameLength() override;
    void GetPath(FIValue& out) override;
    void PathText(char* buffer, int size) override;
    int PathLength() override;
    void KeyText(char* buffer, int size) override;
    int KeyLength() override;
    void DumpVars(FIValue& out) override;
    FIVarSet* GetVarSet() override;

    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    void SetValue(const FIValue& value, int mode, FIValue& out) override;
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out) override;
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override;
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override;
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetUnit(const FIValue& unit, FIValue& out) override;
    void SetSpecUnit(const FIValue& unit, FIValue& out) override;

    bool GetVarText(const char* name, FIValue& out) override;
    bool GetVar(const FIValue& name, FIValue& out) override;
    bool RemoveVar(const FIValue& name) override;
    bool RemoveVarText(const char* name) override;
    void SetVar(const FIValue& name, const FIValue& value) override;

    void DumpXml(FIValue& out, int levels) override;
    void DumpXmlDefault(FIValue& out) override;
    void DumpNode(FIValue& out) override;
    void DumpNodeFlat(FIValue& out) override;
    void DumpNodeDeep(FIValue& out) override;

    int Compare(FIReferenceBase& other) override;
    bool Less(FIReferenceBase& other) override;
    bool Greater(FIReferenceBase& other) override;
    bool Equal(FIReferenceBase& other) override;
    bool NotEqual(FIReferenceBase& other) override;

    bool Subscribe(void* owner, int kind, FICallback callback) override;
    bool Unsubscribe(void* owner, int kind) override;
    SavedStep* MakeElement() override;
    void SafeDelete() override;
    FIIteratorBase* GetIterator() override { return iterator_.Get(); }
    bool MarkStale() override;
    bool Rebind() override;
    void OnAncestorChanged() override;
    void OnValueChanged() override;
    void OnStructureChanged() override;
    void OnDeleted() override;

    State GetState() const { return state_; }
    // Asks for the memory that a read is going to touch: the first must have come before the second
    // is asked for.
    void PrefetchSelf() const { Prefetch(this, sizeof *this); }
    void PrefetchNode() const {
        Prefetch(iterator_.Get(), ReadAhead::kAsked);
        ahead_.Ask(this);
    }
    // Several attributes as one guarded read; what it can't read they all answer.
    void GetAttributes(const FIValue* names, int count, FIValue* out);
    // The node does not live any more, whether that was found out by a use or not.
    bool IsGone() const { return state_ == kDeleted || iterator_->IsGone(); }
    // As FIIterator::ComparePlaces, of the places where they stood when they were last sure of
    // them.
    int ComparePlaces(const FIReference& other) const {
        return iterator_->ComparePlaces(*other.iterator_);
    }
    const FIIterator& Place() const { return *iterator_; }
    // Of what the node stands on; null when that can't go. Lent.
    Liveness* Life() const { return iterator_->Life(); }

    // Has `move` take the iterator of the live reference elsewhere, by its operations; who listens
    // is subscribed there afterwards. Answers what `move` answers, false when the node is gone.
    template <class Mover>
    bool Move(Mover move) {
        const Stay stay(*this);
        if (MayMoveUnbound()) return move(static_cast<FIIteratorBase&>(*iterator_));
        if (!Rebind()) return false;
        UnsubscribeAll();
        const bool moved = move(static_cast<FIIteratorBase&>(*iterator_));
        SubscribeAgain();
        return moved;
    }

 protected:
    ~FIReference() override;

 private:
    // A stay inside the reference that it must survive.
    class Stay {
     public:
        explicit Stay(FIReference& reference) : reference_(reference) { ++reference_.stays_; }
        ~Stay() {
            if (--reference_.stays_ == 0 && reference_.delete_pending_) delete &reference_;
        }
        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

     private:
        FIReference& reference_;
    };

    // Liveness::Watcher
    void OnEnd() override { OnDeleted(); }
    void OnChange() override { OnAncestorChanged(); }
    void OnForgotten() override { MarkStale(); }

    bool IsUnbound() const { return state_ == kStale && !iterator_->IsFrozen(); }
    // What was read before it was bound has to be found again like any other when it is behind.
    bool MayMoveUnbound() const { return IsUnbound() && !(was_read_ && IsBehind()); }
    // The case changed since the reference was last sure of its place.
    bool IsBehind() const { return Life() && !Life()->IsCurrent(revision_); }
    // Makes a reference that is behind stale, or, when the case is gone, deleted.
    void CatchUp();
    void Watch();
    // The place is where it should be at the present revision.
    void NoteRevision() {
        if (Life()) revision_ = Life()->Revision();
    }
    // Not bound, and no structure has changed since it was made.
    bool MayReadUnbound() const { return IsUnbound() && Life() && !Life()->MayHaveLost(revision_); }
    // Runs a guarded operation on the iterator; the text of the failure, or null.
    template <class Operation>
    const char* Guard(Operation operation);
    // The same for a read, which may come before the reference is bound.
    template <class Operation>
    const char* GuardRead(Operation operation);
    // The same with the failure in `out`, or with NULL there.
    template <class Operation>
    void GuardText(FIValue& out, Operation operation);
    template <class Operation>
    void GuardNull(FIValue& out, Operation operation);
    // The same for an operation that answers true or false.
    template <class Operation>
    bool GuardBool(Operation operation);

    bool SubscribeEntry(int kind, FICallback callback);
    // The frames from the present node's parent up; the first that accepts.
    bool SubscribeFrames(int kind, FICallback callback);
    bool UnsubscribeFrames(int kind);
    // Where reads look from now on.
    void NoteReads() { ahead_.Note(this, iterator_->WhereReadsLook()); }
    void SubscribeBasics();
    void SubscribeAgain();
    // Begins to listen; one that could not listen to all listens to nobody.
    template <class Begin>
    void Listen(Begin begin);
    void UnsubscribeAll();
    void DropValueSubscriptions();
    void DropStructureSubscription();
    void DropUnused(int kind);
    void EndRound();

    // In the room that the base leaves.
    State state_ : 8 = kLive;
    bool was_read_ : 1 = false;  // before it was bound
    bool delete_pending_ : 1 = false;
    bool erase_pending_ : 1 = false;
    bool on_delete_ : 1 = false;
    bool on_structure_ : 1 = false;
    bool on_ancestor_ : 1 = false;
    bool on_value_ : 1 = false;
    Ref<FIIterator> iterator_;
    std::uint64_t revision_ = 0;
    NearReads ahead_;
    int references_ = 1;
    // Rounds of callbacks that are running, and stays of any kind; the reference is idle at 0. Each
    // has a call on the stack, which has no room for as many as would not fit.
    std::uint16_t stays_ = 0;
    std::uint16_t rounds_ = 0;
    ReferenceClients clients_;
};

}  // namespace fixtop
