// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shielded<FIIterator>, Shielded<FIReference>: what clients are given of both; see
// framework/nodes/shield.h. A copy or a reference that can't be made is null.

#include <algorithm>
#include <cstring>
#include <utility>

#include "framework/iterator/iterator.h"
#include "framework/nodes/shield.h"
#include "framework/reference/reference.h"

namespace fixtop {

// What iterators and references have in common. A text that can't be had is told in its buffer.
template <class T>
class ShieldedNode : public T {
 public:
    using T::T;
    template <class... More>
    explicit ShieldedNode(const T& other, More... more) : T(other, more...) {}

    void GetName(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetName(out); });
    }
    void NameText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::NameText(buffer, size); });
    }
    int NameLength() override {
        if (memory::IsInside()) return T::NameLength();
        return memory::Call<&T::NameLength>::Or(0, *this);
    }
    void GetPath(FIValue& out) override {
        if (memory::IsInside()) return T::GetPath(out);
        memory::Call<&T::GetPath>::OrTell(out, *this, out);
    }
    void PathText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::PathText(buffer, size); });
    }
    int PathLength() override {
        if (memory::IsInside()) return T::PathLength();
        return memory::Call<&T::PathLength>::Or(0, *this);
    }
    void KeyText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::KeyText(buffer, size); });
    }
    int KeyLength() override {
        if (memory::IsInside()) return T::KeyLength();
        return memory::Call<&T::KeyLength>::Or(0, *this);
    }
    void DumpVars(FIValue& out) override {
        if (memory::IsInside()) return T::DumpVars(out);
        memory::Call<&T::DumpVars>::OrTell(out, *this, out);
    }

    void GetAttribute(const FIValue& name, FIValue& out) override {
        memory::OrTell(out, [&] { T::GetAttribute(name, out); });
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetAttribute(name, value, mode, out);
        memory::Call<&T::SetAttribute>::OrTell(out, *this, name, value, mode, out);
    }
    void SetValue(const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetValue(value, mode, out);
        memory::Call<&T::SetValue>::OrTell(out, *this, value, mode, out);
    }
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                        FIValue& out) override {
        if (memory::IsInside()) return T::SetValueInUnit(value, unit, mode, out);
        memory::Call<&T::SetValueInUnit>::OrTell(out, *this, value, unit, mode, out);
    }
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecValue(value, mode, out);
        memory::Call<&T::SetSpecValue>::OrTell(out, *this, value, mode, out);
    }
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecValueInUnit(value, unit, mode, out);
        memory::Call<&T::SetSpecValueInUnit>::OrTell(out, *this, value, unit, mode, out);
    }
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        if (memory::IsInside()) return T::SetDisplayUnit(unit, quantity, out);
        memory::Call<&T::SetDisplayUnit>::OrTell(out, *this, unit, quantity, out);
    }
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        if (memory::IsInside()) return T::SetDisplaySpecUnit(unit, quantity, out);
        memory::Call<&T::SetDisplaySpecUnit>::OrTell(out, *this, unit, quantity, out);
    }
    void SetUnit(const FIValue& unit, FIValue& out) override {
        if (memory::IsInside()) return T::SetUnit(unit, out);
        memory::Call<&T::SetUnit>::OrTell(out, *this, unit, out);
    }
    void SetSpecUnit(const FIValue& unit, FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecUnit(unit, out);
        memory::Call<&T::SetSpecUnit>::OrTell(out, *this, unit, out);
    }

    bool GetVarText(const char* name, FIValue& out) override {
        if (memory::IsInside()) return T::GetVarText(name, out);
        return memory::Call<&T::GetVarText>::OrTell(out, *this, name, out);
    }
    bool GetVar(const FIValue& name, FIValue& out) override {
        if (memory::IsInside()) return T::GetVar(name, out);
        return memory::Call<&T::GetVar>::OrTell(out, *this, name, out);
    }
    bool RemoveVar(const FIValue& name) override {
        if (memory::IsInside()) return T::RemoveVar(name);
        return memory::Call<&T::RemoveVar>::Or(false, *this, name);
    }
    bool RemoveVarText(const char* name) override {
        if (memory::IsInside()) return T::RemoveVarText(name);
        return memory::Call<&T::RemoveVarText>::Or(false, *this, name);
    }
    void SetVar(const FIValue& name, const FIValue& value) override {
        if (memory::IsInside()) return T::SetVar(name, value);
        memory::Call<&T::SetVar>::OrNothing(*this, name, value);
    }

    void DumpXml(FIValue& out, int levels) override {
        if (memory::IsInside()) return T::DumpXml(out, levels);
        memory::Call<&T::DumpXml>::OrTell(out, *this, out, levels);
    }
    void DumpXmlDefault(FIValue& out) override {
        if (memory::IsInside()) return T::DumpXmlDefault(out);
        memory::Call<&T::DumpXmlDefault>::OrTell(out, *this, out);
    }
    void DumpNode(FIValue& out) override {
        if (memory::IsInside()) return T::DumpNode(out);
        memory::Call<&T::DumpNode>::OrTell(out, *this, out);
    }
    void DumpNodeFlat(FIValue& out) override {
        if (memory::IsInside()) return T::DumpNodeFlat(out);
        memory::Call<&T::DumpNodeFlat>::OrTell(out, *this, out);
    }
    void DumpNodeDeep(FIValue& out) override {
        if (memory::IsInside()) return T::DumpNodeDeep(out);
        memory::Call<&T::DumpNodeDeep>::OrTell(out, *this, out);
    }

 private:
    template <class Operation>
    static void TextOr(char* buffer, int size, Operation operation) {
        const auto tell = [&] {
            if (!buffer || size < 1) return;
            const std::size_t length =
                std::min(std::strlen(memory::kOutOfMemoryText), static_cast<std::size_t>(size) - 1);
            std::memcpy(buffer, memory::kOutOfMemoryText, length);
            buffer[length] = '\0';
        };
        memory::OrElse(tell, operation);
    }
};

// An iterator of either of the kinds below.
class ShieldedWalk : public ShieldedNode<FIIterator> {
 public:
    using ShieldedNode::ShieldedNode;

    FIIterator* Copy() override {
        if (memory::IsInside()) return FIIterator::Copy();
        return memory::Call<&FIIterator::Copy>::Or(nullptr, *this);
    }
    FIReferenceBase* MakeReference() override {
        if (memory::IsInside()) return FIIterator::MakeReference();
        return memory::Call<&FIIteratorBase::MakeReference>::Or(nullptr, *this);
    }
    bool CanDescend() override {
        if (memory::IsInside()) return FIIterator::CanDescend();
        return memory::Call<&FIIteratorBase::CanDescend>::Or(false, *this);
    }
    bool Down(int index) override {
        return memory::Or(false, [&] { return FIIterator::Down(index); });
    }
    bool SeekPath(const FIValue& path) override {
        if (memory::IsInside()) return FIIterator::SeekPath(path);
        return memory::Call<&FIIteratorBase::SeekPath>::Or(false, *this, path);
    }
    bool Walk(const PathStep& step, FIValue& attribute) override {
        if (memory::IsInside()) return FIIterator::Walk(step, attribute);
        return memory::Call<&FIIteratorBase::Walk>::OrTell(attribute, *this, step, attribute);
    }
    bool WalkFrom(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::WalkFrom(step);
        return memory::Call<&FIIteratorBase::WalkFrom>::Or(false, *this, step);
    }
    bool DownFirst() override {
        return memory::Or(false, [&] { return FIIterator::DownFirst(); });
    }
    bool Next() override {
        return memory::Or(false, [&] { return FIIterator::Next(); });
    }
    bool First() override {
        if (memory::IsInside()) return FIIterator::First();
        return memory::Call<&FIIteratorBase::First>::Or(false, *this);
    }
    bool Prev() override {
        if (memory::IsInside()) return FIIterator::Prev();
        return memory::Call<&FIIteratorBase::Prev>::Or(false, *this);
    }
    bool Last() override {
        if (memory::IsInside()) return FIIterator::Last();
        return memory::Call<&FIIteratorBase::Last>::Or(false, *this);
    }
    bool DownLast() override {
        if (memory::IsInside()) return FIIterator::DownLast();
        return memory::Call<&FIIteratorBase::DownLast>::Or(false, *this);
    }
    bool Step(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::Step(step);
        return memory::Call<&FIIteratorBase::Step>::Or(false, *this, step);
    }
    bool NextMatch(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::NextMatch(step);
        return memory::Call<&FIIteratorBase::NextMatch>::Or(false, *this, step);
    }
    FIAttributeSource* GetAttributeSource() override {
        if (memory::IsInside()) return FIIterator::GetAttributeSource();
        return memory::Call<&FIIteratorBase::GetAttributeSource>::OrElse(
            [] { return EmptyEntry()->GetAttributeSource(); }, *this);
    }

    void SetVarText(const char* name, const char* value) override {
        memory::OrNothing([&] { FIIterator::SetVarText(name, value); });
    }
    void SetVarText(const char* name, const FIValue& value) override {
        memory::OrNothing([&] { FIIterator::SetVarText(name, value); });
    }

    bool AtFirst() override {
        if (memory::IsInside()) return FIIterator::AtFirst();
        return memory::Call<&FIIteratorBase::AtFirst>::Or(false, *this);
    }
    // A walk that asks ends here.
    bool AtLast() override {
        if (memory::IsInside()) return FIIterator::AtLast();
        return memory::Call<&FIIteratorBase::AtLast>::Or(true, *this);
    }
    int Compare(FIIteratorBase& other) override {
        if (memory::IsInside()) return FIIterator::Compare(other);
        return memory::Call<&FIIteratorBase::Compare>::Or(kNotComparable, *this, other);
    }
    bool Less(FIIteratorBase& other) override {
        if (memory::IsInside()) return FIIterator::Less(other);
        return memory::Call<&FIIteratorBase::Less>::Or(false, *this, other);
    }
    bool Greater(FIIteratorBase& other) override {
        if (memory::IsInside()) return FIIterator::Greater(other);
        return memory::Call<&FIIteratorBase::Greater>::Or(false, *this, other);
    }
    bool Equal(FIIteratorBase& other) override {
        if (memory::IsInside()) return FIIterator::Equal(other);
        return memory::Call<&FIIteratorBase::Equal>::Or(false, *this, other);
    }
    bool NotEqual(FIIteratorBase& other) override {
        if (memory::IsInside()) return FIIterator::NotEqual(other);
        return memory::Call<&FIIteratorBase::NotEqual>::Or(false, *this, other);
    }

    FIIterator* OpenAttribute(const FIValue& name) override {
        if (memory::IsInside()) return FIIterator::OpenAttribute(name);
        return memory::Call<&FIIterator::OpenAttribute>::Or(nullptr, *this, name);
    }
    bool IsKeyName(const char* name) override {
        if (memory::IsInside()) return FIIterator::IsKeyName(name);
        return memory::Call<&FIIteratorBase::IsKeyName>::Or(false, *this, name);
    }
    bool Locate(const FIValue& path) override {
        if (memory::IsInside()) return FIIterator::Locate(path);
        return memory::Call<&FIIteratorBase::Locate>::Or(false, *this, path);
    }
    bool LocateChain(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::LocateChain(step);
        return memory::Call<&FIIteratorBase::LocateChain>::Or(false, *this, step);
    }
    void DumpAttributes(FIValue& out) override {
        if (memory::IsInside()) return FIIterator::DumpAttributes(out);
        memory::Call<&FIIteratorBase::DumpAttributes>::OrTell(out, *this, out);
    }

    int GetCaps(int a, int b) override {
        if (memory::IsInside()) return FIIterator::GetCaps(a, b);
        return memory::Call<&FIIteratorBase::GetCaps>::Or(0, *this, a, b);
    }
    void DoAction(FIValue& out, int a, int b) override {
        if (memory::IsInside()) return FIIterator::DoAction(out, a, b);
        memory::Call<&FIIteratorBase::DoAction>::OrTell(out, *this, out, a, b);
    }
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override {
        if (memory::IsInside()) return FIIterator::DoActionEx(out, a, b, c, d);
        memory::Call<&FIIteratorBase::DoActionEx>::OrTell(out, *this, out, a, b, c, d);
    }
    void DoCommand(int command, FIErrorRecord& error) override {
        const auto give_up = [&] {
            error.code = 2;
            error.text.SetText(memory::kOutOfMemoryText);
        };
        if (memory::IsInside()) return FIIterator::DoCommand(command, error);
        memory::Call<&FIIteratorBase::DoCommand>::OrElse(give_up, *this, command, error);
    }

    bool SeekChildFrom(const char* name) override {
        if (memory::IsInside()) return FIIterator::SeekChildFrom(name);
        return memory::Call<&FIIteratorBase::SeekChildFrom>::Or(false, *this, name);
    }
    bool SeekChild(const char* name) override {
        return memory::Or(false, [&] { return FIIterator::SeekChild(name); });
    }
    bool EvalClause(const PathClause& clause) override {
        if (memory::IsInside()) return FIIterator::EvalClause(clause);
        return memory::Call<&FIIteratorBase::EvalClause>::Or(false, *this, clause);
    }
    bool WalkSteps(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::WalkSteps(step);
        return memory::Call<&FIIteratorBase::WalkSteps>::Or(false, *this, step);
    }
    bool Filter(const PathStep& step) override {
        if (memory::IsInside()) return FIIterator::Filter(step);
        return memory::Call<&FIIteratorBase::Filter>::Or(false, *this, step);
    }
    void Freeze() override {
        if (memory::IsInside()) return FIIterator::Freeze();
        memory::Call<&FIIteratorBase::Freeze>::OrNothing(*this);
    }
    bool Thaw() override {
        if (memory::IsInside()) return FIIterator::Thaw();
        return memory::Call<&FIIteratorBase::Thaw>::Or(false, *this);
    }
};

// One that walks, with room for its frames.
template <>
class Shielded<FIIterator> final : private FrameRoom, public ShieldedWalk {
 public:
    template <class... Arguments>
    explicit Shielded(Arguments&&... arguments)
        : ShieldedWalk(std::forward<Arguments>(arguments)..., static_cast<FrameRoom*>(this)) {}
};

// One that is held: it is small, and folds its frames.
class HeldIterator final : public ShieldedWalk {
 public:
    using ShieldedWalk::ShieldedWalk;
    explicit HeldIterator(const FIIterator& other) : ShieldedWalk(other) {}
};

template <>
class Shielded<FIReference> final : public ShieldedNode<FIReference> {
 public:
    using ShieldedNode::ShieldedNode;

    FIIteratorBase* Copy() override {
        if (memory::IsInside()) return FIReference::Copy();
        return memory::Call<&FIReferenceBase::Copy>::Or(nullptr, *this);
    }
    int Compare(FIReferenceBase& other) override {
        if (memory::IsInside()) return FIReference::Compare(other);
        return memory::Call<&FIReferenceBase::Compare>::Or(kNotComparable, *this, other);
    }
    bool Less(FIReferenceBase& other) override {
        if (memory::IsInside()) return FIReference::Less(other);
        return memory::Call<&FIReferenceBase::Less>::Or(false, *this, other);
    }
    bool Greater(FIReferenceBase& other) override {
        if (memory::IsInside()) return FIReference::Greater(other);
        return memory::Call<&FIReferenceBase::Greater>::Or(false, *this, other);
    }
    bool Equal(FIReferenceBase& other) override {
        if (memory::IsInside()) return FIReference::Equal(other);
        return memory::Call<&FIReferenceBase::Equal>::Or(false, *this, other);
    }
    bool NotEqual(FIReferenceBase& other) override {
        if (memory::IsInside()) return FIReference::NotEqual(other);
        return memory::Call<&FIReferenceBase::NotEqual>::Or(false, *this, other);
    }

    bool Subscribe(void* owner, int kind, FICallback callback) override {
        if (memory::IsInside()) return FIReference::Subscribe(owner, kind, callback);
        return memory::Call<&FIReferenceBase::Subscribe>::Or(false, *this, owner, kind, callback);
    }
    bool Unsubscribe(void* owner, int kind) override {
        if (memory::IsInside()) return FIReference::Unsubscribe(owner, kind);
        return memory::Call<&FIReferenceBase::Unsubscribe>::Or(false, *this, owner, kind);
    }
    SavedStep* MakeElement() override {
        if (memory::IsInside()) return FIReference::MakeElement();
        return memory::Call<&FIReferenceBase::MakeElement>::Or(nullptr, *this);
    }
    bool MarkStale() override {
        if (memory::IsInside()) return FIReference::MarkStale();
        return memory::Call<&FIReferenceBase::MarkStale>::Or(false, *this);
    }
    bool Rebind() override {
        if (memory::IsInside()) return FIReference::Rebind();
        return memory::Call<&FIReferenceBase::Rebind>::Or(false, *this);
    }

    // The host calls these, in the middle of anything.
    void OnAncestorChanged() override {
        memory::Contain([&] { FIReference::OnAncestorChanged(); });
    }
    void OnValueChanged() override {
        memory::Contain([&] { FIReference::OnValueChanged(); });
    }
    void OnStructureChanged() override {
        memory::Contain([&] { FIReference::OnStructureChanged(); });
    }
    void OnDeleted() override {
        memory::Contain([&] { FIReference::OnDeleted(); });
    }
};

}  // namespace fixtop
