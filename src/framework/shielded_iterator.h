#pragma once

// Shielded<FIIterator>, Shielded<FIReference>: what clients are given of both; see
// framework/shield.h. A copy or a reference that can't be made is null.

#include <algorithm>
#include <cstring>

#include "framework/fi_iterator.h"
#include "framework/fi_reference.h"
#include "framework/shield.h"

// What iterators and references have in common. A text that can't be had is told in its buffer.
template <class T>
class ShieldedNode : public T {
 public:
    using T::T;
    explicit ShieldedNode(const T& other) : T(other) {}

    void GetName(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetName(out); });
    }
    void NameText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::NameText(buffer, size); });
    }
    int NameLength() override {
        return memory::Or(0, [&] { return T::NameLength(); });
    }
    void GetPath(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetPath(out); });
    }
    void PathText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::PathText(buffer, size); });
    }
    int PathLength() override {
        return memory::Or(0, [&] { return T::PathLength(); });
    }
    void KeyText(char* buffer, int size) override {
        TextOr(buffer, size, [&] { T::KeyText(buffer, size); });
    }
    int KeyLength() override {
        return memory::Or(0, [&] { return T::KeyLength(); });
    }
    void DumpVars(FIValue& out) override {
        memory::OrTell(out, [&] { T::DumpVars(out); });
    }

    void GetAttribute(const FIValue& name, FIValue& out) override {
        memory::OrTell(out, [&] { T::GetAttribute(name, out); });
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetAttribute(name, value, mode, out); });
    }
    void SetValue(const FIValue& value, int mode, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetValue(value, mode, out); });
    }
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                        FIValue& out) override {
        memory::OrTell(out, [&] { T::SetValueInUnit(value, unit, mode, out); });
    }
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetSpecValue(value, mode, out); });
    }
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override {
        memory::OrTell(out, [&] { T::SetSpecValueInUnit(value, unit, mode, out); });
    }
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetDisplayUnit(unit, quantity, out); });
    }
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetDisplaySpecUnit(unit, quantity, out); });
    }
    void SetUnit(const FIValue& unit, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetUnit(unit, out); });
    }
    void SetSpecUnit(const FIValue& unit, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetSpecUnit(unit, out); });
    }

    bool GetVarText(const char* name, FIValue& out) override {
        return memory::OrTellFalse(out, [&] { return T::GetVarText(name, out); });
    }
    bool GetVar(const FIValue& name, FIValue& out) override {
        return memory::OrTellFalse(out, [&] { return T::GetVar(name, out); });
    }
    bool RemoveVar(const FIValue& name) override {
        return memory::Or(false, [&] { return T::RemoveVar(name); });
    }
    bool RemoveVarText(const char* name) override {
        return memory::Or(false, [&] { return T::RemoveVarText(name); });
    }
    void SetVar(const FIValue& name, const FIValue& value) override {
        memory::OrNothing([&] { T::SetVar(name, value); });
    }

    void DumpXml(FIValue& out, int levels) override {
        memory::OrTell(out, [&] { T::DumpXml(out, levels); });
    }
    void DumpXmlDefault(FIValue& out) override {
        memory::OrTell(out, [&] { T::DumpXmlDefault(out); });
    }
    void DumpNode(FIValue& out) override {
        memory::OrTell(out, [&] { T::DumpNode(out); });
    }
    void DumpNodeFlat(FIValue& out) override {
        memory::OrTell(out, [&] { T::DumpNodeFlat(out); });
    }
    void DumpNodeDeep(FIValue& out) override {
        memory::OrTell(out, [&] { T::DumpNodeDeep(out); });
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

template <>
class Shielded<FIIterator> final : public ShieldedNode<FIIterator> {
 public:
    using ShieldedNode::ShieldedNode;

    FIIterator* Copy() override {
        return memory::Or(nullptr, [&] { return FIIterator::Copy(); });
    }
    FIReferenceBase* MakeReference() override {
        return memory::Or(nullptr, [&] { return FIIterator::MakeReference(); });
    }
    bool CanDescend() override {
        return memory::Or(false, [&] { return FIIterator::CanDescend(); });
    }
    bool Down(int index) override {
        return memory::Or(false, [&] { return FIIterator::Down(index); });
    }
    bool SeekPath(const FIValue& path) override {
        return memory::Or(false, [&] { return FIIterator::SeekPath(path); });
    }
    bool Walk(const PathStep& step, FIValue& attribute) override {
        return memory::OrTellFalse(attribute, [&] { return FIIterator::Walk(step, attribute); });
    }
    bool WalkFrom(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::WalkFrom(step); });
    }
    bool DownFirst() override {
        return memory::Or(false, [&] { return FIIterator::DownFirst(); });
    }
    bool Next() override {
        return memory::Or(false, [&] { return FIIterator::Next(); });
    }
    bool First() override {
        return memory::Or(false, [&] { return FIIterator::First(); });
    }
    bool Prev() override {
        return memory::Or(false, [&] { return FIIterator::Prev(); });
    }
    bool Last() override {
        return memory::Or(false, [&] { return FIIterator::Last(); });
    }
    bool DownLast() override {
        return memory::Or(false, [&] { return FIIterator::DownLast(); });
    }
    bool Step(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::Step(step); });
    }
    bool NextMatch(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::NextMatch(step); });
    }
    FIAttributeSource* GetAttributeSource() override {
        return memory::OrElse([] { return EmptyEntry()->GetAttributeSource(); },
                              [&] { return FIIterator::GetAttributeSource(); });
    }

    void SetVarText(const char* name, const char* value) override {
        memory::OrNothing([&] { FIIterator::SetVarText(name, value); });
    }
    void SetVarText(const char* name, const FIValue& value) override {
        memory::OrNothing([&] { FIIterator::SetVarText(name, value); });
    }

    bool AtFirst() override {
        return memory::Or(false, [&] { return FIIterator::AtFirst(); });
    }
    // A walk that asks ends here.
    bool AtLast() override {
        return memory::Or(true, [&] { return FIIterator::AtLast(); });
    }
    int Compare(FIIteratorBase& other) override {
        return memory::Or(kNotComparable, [&] { return FIIterator::Compare(other); });
    }
    bool Less(FIIteratorBase& other) override {
        return memory::Or(false, [&] { return FIIterator::Less(other); });
    }
    bool Greater(FIIteratorBase& other) override {
        return memory::Or(false, [&] { return FIIterator::Greater(other); });
    }
    bool Equal(FIIteratorBase& other) override {
        return memory::Or(false, [&] { return FIIterator::Equal(other); });
    }
    bool NotEqual(FIIteratorBase& other) override {
        return memory::Or(false, [&] { return FIIterator::NotEqual(other); });
    }

    FIIterator* OpenAttribute(const FIValue& name) override {
        return memory::Or(nullptr, [&] { return FIIterator::OpenAttribute(name); });
    }
    bool IsKeyName(const char* name) override {
        return memory::Or(false, [&] { return FIIterator::IsKeyName(name); });
    }
    bool Locate(const FIValue& path) override {
        return memory::Or(false, [&] { return FIIterator::Locate(path); });
    }
    bool LocateChain(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::LocateChain(step); });
    }
    void DumpAttributes(FIValue& out) override {
        memory::OrTell(out, [&] { FIIterator::DumpAttributes(out); });
    }

    int GetCaps(int a, int b) override {
        return memory::Or(0, [&] { return FIIterator::GetCaps(a, b); });
    }
    void DoAction(FIValue& out, int a, int b) override {
        memory::OrTell(out, [&] { FIIterator::DoAction(out, a, b); });
    }
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override {
        memory::OrTell(out, [&] { FIIterator::DoActionEx(out, a, b, c, d); });
    }
    void DoCommand(int command, FIErrorRecord& error) override {
        const auto give_up = [&] {
            error.code = 2;
            error.text.SetText(memory::kOutOfMemoryText);
        };
        memory::OrElse(give_up, [&] { FIIterator::DoCommand(command, error); });
    }

    bool SeekChildFrom(const char* name) override {
        return memory::Or(false, [&] { return FIIterator::SeekChildFrom(name); });
    }
    bool SeekChild(const char* name) override {
        return memory::Or(false, [&] { return FIIterator::SeekChild(name); });
    }
    bool EvalClause(const PathClause& clause) override {
        return memory::Or(false, [&] { return FIIterator::EvalClause(clause); });
    }
    bool WalkSteps(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::WalkSteps(step); });
    }
    bool Filter(const PathStep& step) override {
        return memory::Or(false, [&] { return FIIterator::Filter(step); });
    }
    void Freeze() override {
        memory::OrNothing([&] { FIIterator::Freeze(); });
    }
    bool Thaw() override {
        return memory::Or(false, [&] { return FIIterator::Thaw(); });
    }
};

template <>
class Shielded<FIReference> final : public ShieldedNode<FIReference> {
 public:
    using ShieldedNode::ShieldedNode;

    FIIteratorBase* Copy() override {
        return memory::Or(nullptr, [&] { return FIReference::Copy(); });
    }
    int Compare(FIReferenceBase& other) override {
        return memory::Or(kNotComparable, [&] { return FIReference::Compare(other); });
    }
    bool Less(FIReferenceBase& other) override {
        return memory::Or(false, [&] { return FIReference::Less(other); });
    }
    bool Greater(FIReferenceBase& other) override {
        return memory::Or(false, [&] { return FIReference::Greater(other); });
    }
    bool Equal(FIReferenceBase& other) override {
        return memory::Or(false, [&] { return FIReference::Equal(other); });
    }
    bool NotEqual(FIReferenceBase& other) override {
        return memory::Or(false, [&] { return FIReference::NotEqual(other); });
    }

    bool Subscribe(void* owner, int kind, FICallback callback) override {
        return memory::Or(false, [&] { return FIReference::Subscribe(owner, kind, callback); });
    }
    bool Unsubscribe(void* owner, int kind) override {
        return memory::Or(false, [&] { return FIReference::Unsubscribe(owner, kind); });
    }
    FICollectionElement* MakeElement() override {
        return memory::Or(nullptr, [&] { return FIReference::MakeElement(); });
    }
    bool MarkStale() override {
        return memory::Or(false, [&] { return FIReference::MarkStale(); });
    }
    bool Rebind() override {
        return memory::Or(false, [&] { return FIReference::Rebind(); });
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
