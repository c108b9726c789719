// SPDX-License-Identifier: Apache-2.0
#pragma once

// FIIterator: the one iterator of the framework; fixtop/iterator.h tells the operations.
//
// Variables. Each level has a map of its own. It is made when its first variable is set, and at the
// latest when the iterator is copied, because copies share the levels above the present node.
// Clauses of a path are walked on the iterator itself and walked back: nothing below the present
// node is shared, so its position and cursors are as before.
// Folding. An iterator that is held folds its frames into what other iterators have of them too,
// and cursors that its nodes can make again; they are laid out when a move or a comparison wants
// them. Limits: an iterator does not go deeper than kDepthLimit frames.

#include <memory>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "fixtop/iterator.h"
#include "framework/iterator/frame_stack.h"
#include "framework/iterator/iterator_var_set.h"
#include "framework/iterator/saved_step.h"
#include "framework/nodes/liveness.h"

namespace fixtop {

class PreparedPath;

class FIIterator : public FIIteratorBase,
                   private HasVarSet,
                   private Counted<CountedClass::FIIterator> {
    friend IteratorVarSet;

 public:
    static constexpr int kDepthLimit = 10000;

    // On the shared empty entry. The room for frames, here and below, is lent; null is none.
    explicit FIIterator(FrameRoom* room = nullptr);
    // At a root. With `history` the iterator also enters nodes that repeat an ancestor.
    FIIterator(FIEntry* entry, bool history, FrameRoom* room = nullptr);
    // Without a room it folds its frames as far as that can go.
    FIIterator(const FIIterator& other, FrameRoom* room = nullptr);
    FIIterator& operator=(const FIIterator&) = delete;

    FIIterator* Copy() override;
    FIReferenceBase* MakeReference() override;
    bool CanDescend() override;
    bool Down(int index) override;
    bool SeekPath(const FIValue& path) override;
    bool Walk(const PathStep& step, FIValue& attribute) override;
    bool WalkFrom(const PathStep& step) override;
    bool DownFirst() override;
    bool Next() override;
    bool First() override;
    bool Prev() override;
    bool Last() override;
    bool DownLast() override;
    bool Up() override;
    bool Step(const PathStep& step) override;
    bool NextMatch(const PathStep& step) override;
    int Depth() override { return frames_.Size(); }

    void GetName(FIValue& out) override;
    void NameText(char* buffer, int size) override;
    int NameLength() override;
    void GetPath(FIValue& out) override;
    void PathText(char* buffer, int size) override;
    int PathLength() override;
    void KeyText(char* buffer, int size) override;
    int KeyLength() override;
    void DumpVars(FIValue& out) override;

    void GetAttribute(const FIValue& name, FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    const void* TypeId() const override;
    FIAttributeSource* GetAttributeSource() override;

    void SetVarText(const char* name, const char* value) override;
    void SetVarText(const char* name, const FIValue& value) override;
    void SetVar(const FIValue& name, const FIValue& value) override;
    bool GetVarText(const char* name, FIValue& out) override;
    bool GetVar(const FIValue& name, FIValue& out) override;
    bool RemoveVarText(const char* name) override;
    bool RemoveVar(const FIValue& name) override;

    bool AtFirst() override;
    bool AtLast() override;
    int Compare(FIIteratorBase& other) override;
    bool Less(FIIteratorBase& other) override { return Compare(other) < 0; }
    bool Greater(FIIteratorBase& other) override { return Compare(other) > 0; }
    bool Equal(FIIteratorBase& other) override { return Compare(other) == 0; }
    bool NotEqual(FIIteratorBase& other) override { return Compare(other) != 0; }

    void DumpXml(FIValue& out, int levels) override;
    void DumpXmlDefault(FIValue& out) override;

    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override;
    void SetUnit(const FIValue& unit, FIValue& out) override;
    void SetSpecUnit(const FIValue& unit, FIValue& out) override;
    void SetValue(const FIValue& value, int mode, FIValue& out) override;
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out) override;
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override;
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override;

    FIIterator* OpenAttribute(const FIValue& name) override;
    bool IsKeyName(const char* name) override;
    bool Locate(const FIValue& path) override;
    bool LocateChain(const PathStep& step) override;

    void DumpAttributes(FIValue& out) override;
    void DumpNodeFlat(FIValue& out) override;
    void DumpNode(FIValue& out) override;
    void DumpNodeDeep(FIValue& out) override;

    int AddRef() override { return ++references_; }
    int Release() override;
    FIVarSet* GetVarSet() override { return &var_set_; }

    int GetCaps(int a, int b) override;
    void DoAction(FIValue& out, int a, int b) override;
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override;
    void DoCommand(int command, FIErrorRecord& error) override;

    bool SeekChildFrom(const char* name) override;
    bool SeekChild(const char* name) override;
    bool EvalClause(const PathClause& clause) override;
    bool WalkSteps(const PathStep& step) override;
    bool Filter(const PathStep& step) override;

    void Freeze() override;
    bool Thaw() override;

    // For the framework itself, behind the table of operations.

    // SeekPath with a path that was parsed before; `attribute` is the one in which it ends, or
    // NULL.
    bool SeekPath(const PreparedPath& path, FIValue& attribute);
    // For a read of the present node.
    ReadAhead WhereReadsLook() const;
    // Several attributes of the present node.
    void GetAttributes(const FIValue* names, int count, FIValue* out);
    // Whether a step of this name means the present node.
    bool HasName(const FIValue& name) const;
    // The name under which the present node is listed; NULL at the root.
    void GetListedKey(FIValue& out) const;

    // The path from `level` on: 0 is the whole path, 1 the part below the root, which SeekPath on
    // an iterator at the root takes. Empty when the level lies below the present node.
    void GetPathFrom(int level, FIValue& out);
    // Key text of the node of a level, 0 the root; NULL when it has no key.
    void GetKeyText(int level, FIValue& out);
    bool IsFrozen() const { return frozen_ != nullptr; }
    // A copy that is to be held, without room for frames.
    FIIterator* CopyToHold();
    // Folds the frames that a move has had laid out; nothing in one that has room for them.
    void Fold();
    // It shows entries units or variables of its own, beside those of its levels.
    bool ShowsOwn() const { return var_set_.HasOwn(); }
    // The units that it shows to entries.
    bool HasUnits() const { return var_set_.HasUnits(); }
    bool HasUnitsOf(const FIIterator& other) const { return var_set_.HasUnitsOf(other.var_set_); }
    void ForgetUnits() { var_set_.ForgetUnits(); }
    // Of what the root stands on; null when that can't go. Lent.
    Liveness* Life() const { return life_.Get(); }
    // The object of the present node does not live any more.
    bool IsGone() const { return IsGoneAt(frames_.Size()); }
    bool IsGoneAt(int level) const;
    // Whether both stand on one object, as far as objects have numbers, and below it, or else from
    // the root, on nodes that compare equal: 0; otherwise their order, or not comparable. Nothing
    // is asked of two different objects.
    int ComparePlaces(const FIIterator& other) const;
    // Of the present node's object; 0 for none.
    std::uint64_t ObjectNumber() const;
    // By the lowest object on the way to the present node, and the names from there.
    LivingNode::Mark MarkOf() const;
    // The number of the present node's object tells by itself whether it lives.
    bool IsTracked() const;
    // The node of a level, the present one for the depth; lent.
    FIEntry* EntryAt(int level) const;
    // Variables of the present node that are set when one of them is first asked for, for the
    // element of a list.
    void SetLateVars(const LateVariables& variables, int index);
    // From this level on the variables are copies of its own: what others set there later, on the
    // iterator that it was copied from, is no longer seen.
    void OwnVariables(int level);
    // Saves the present node with the steps above it.
    std::vector<std::unique_ptr<SavedStep>> MakeElements() const;
    // The present node alone. The caller owns it.
    std::unique_ptr<SavedStep> MakeElement() const;

 private:
    using Elements = std::vector<std::unique_ptr<SavedStep>>;
    using FrozenElements = std::unique_ptr<Elements>;
    // How a step compares a child with its name.
    using Matcher = bool (FIIterator::*)(const FIValue& name) const;

    bool IsCycle() const;
    // Makes a cursor over the children, lets `seek` position it and goes to its element.
    template <class Seek>
    bool Descend(Seek seek);
    // The same for the siblings of the present node.
    template <class Seek>
    bool MoveAside(Seek seek);
    bool HasKey(const FIValue& name) const;
    bool StepBy(const PathStep& step, Matcher matches, FIIterator& variables);
    bool WalkBy(const PathStep& step, Matcher matches, FIIterator& variables);
    bool FollowPath(const FIValue& path, Matcher matches, FIIterator& variables);
    template <class Stretches>
    bool FollowStretches(Stretches next, Matcher matches, FIIterator& variables,
                         FIValue& attribute);
    bool EnterParentheses(const PathStep& step, Matcher matches, FIIterator& variables,
                          bool& goes_on, FIValue& attribute);
    bool SeekKeyed(const PathStep& step, Matcher matches, FIIterator& variables);
    bool HasAttribute(const FIValue& name);
    bool PassesOne(const PathClause& clause);
    bool SeekKey(const FIValue& key);
    void ReturnTo(int depth);
    void TakePosition(FIIterator& other);
    Ref<FIEntry> FindHolder();
    const FIValue* FindVar(const FIValue& name) const;
    FrameVars& PresentVars();
    // Null while the level has none.
    FrameVars* VarsAt(int level) const {
        if (level >= frames_.Size()) return vars_.Get();
        return frames_.IsFolded() ? &FoldedLevel(level) : frames_[level].vars.Get();
    }
    // Sets the late variables of a level.
    void SettleLate(int level) const;
    void ShareLevels() const;
    static FrozenElements CloneElements(const FrozenElements& elements);
    FrameStack& Frames() const {
        if (frames_.IsFolded()) Unfold();
        return frames_;
    }
    void Unfold() const;
    // As other frames of the same levels, into a stack that is empty.
    void LayFrames(FrameStack& frames) const;
    // The lowest level, when all can be found from it; else null.
    FrameVars* FindChain() const;
    FrameVars& FoldedLevel(int level) const;
    // Hands the variables of each level to `use`, and its number, from the present node up, until
    // it answers true.
    template <class Use>
    bool AnyVars(Use use) const;

    // What a read needs comes first.
    Ref<FIEntry> entry_;
    Ref<Liveness> life_;
    Ref<FrameVars> vars_;
    int references_ = 1;
    bool history_ = false;
    mutable FrameStack frames_;
    // Dropped by every move: who moved has a newer position than the saved one.
    FrozenElements frozen_;
};

}  // namespace fixtop
