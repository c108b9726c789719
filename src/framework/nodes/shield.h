// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shielded<T>: an entry, context, cursor or attribute cursor of class T as it is handed to clients:
// each of its operations can be called from outside, and none lets running out of memory through
// (diagnostics/memory_guard.h tells what they answer). Objects that clients may hold are made by
// it:
//
//     HandOut(new Shielded<HVarsCursorBase>(context, walk))
//
// framework/iterator/shielded_iterator.h has those for iterators and references.
//
// T is complete, not final, and has constructors that a derived class can reach.

#include <concepts>

#include "diagnostics/memory_guard.h"
#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "framework/nodes/empties.h"

namespace fixtop {

template <class T>
class Shielded;

// The operations of FICursorPosition, which both kinds of cursor have.
template <class T>
class ShieldedPosition : public T {
 public:
    using T::T;
    explicit ShieldedPosition(const T& other) : T(other) {}

    bool Seek(int origin, int delta) override {
        if (memory::IsInside()) return T::Seek(origin, delta);
        return memory::Call<&FICursorPosition::Seek>::Or(false, *this, origin, delta);
    }
    bool SeekName(int origin, const char* name) override {
        if (memory::IsInside()) return T::SeekName(origin, name);
        return memory::Call<&FICursorPosition::SeekName>::Or(false, *this, origin, name);
    }
    bool SeekValue(int origin, FIEntry& entry) override {
        if (memory::IsInside()) return T::SeekValue(origin, entry);
        return memory::Call<&FICursorPosition::SeekValue>::Or(false, *this, origin, entry);
    }
    bool AtBegin() override {
        if (memory::IsInside()) return T::AtBegin();
        return memory::Call<&FICursorPosition::AtBegin>::Or(false, *this);
    }
    // A walk that asks ends here.
    bool AtEnd() override {
        if (memory::IsInside()) return T::AtEnd();
        return memory::Call<&FICursorPosition::AtEnd>::Or(true, *this);
    }
    int Compare(FICursorPosition& other) override {
        if (memory::IsInside()) return T::Compare(other);
        return memory::Call<&FICursorPosition::Compare>::Or(kNotComparable, *this, other);
    }
    void GetKey(FIValue& out) override {
        if (memory::IsInside()) return T::GetKey(out);
        memory::Call<&FICursorPosition::GetKey>::OrTell(out, *this, out);
    }
};

template <std::derived_from<FICursorBase> T>
class Shielded<T> final : public ShieldedPosition<T> {
 public:
    using ShieldedPosition<T>::ShieldedPosition;

    FICursorBase* Clone(bool deep) override {
        if (memory::IsInside()) return T::Clone(deep);
        return memory::Call<&FICursorBase::Clone>::OrElse(EmptyCursor, *this, deep);
    }
    FIEntry* GetEntry() override {
        if (memory::IsInside()) return T::GetEntry();
        return memory::Call<&FICursorBase::GetEntry>::OrElse(EmptyEntry, *this);
    }
    bool IsHidden() override {
        if (memory::IsInside()) return T::IsHidden();
        return memory::Call<&FICursorBase::IsHidden>::Or(false, *this);
    }
};

template <std::derived_from<FIAttributeCursorBase> T>
class Shielded<T> final : public ShieldedPosition<T> {
 public:
    using ShieldedPosition<T>::ShieldedPosition;

    FIAttributeCursorBase* Clone(bool deep) override {
        if (memory::IsInside()) return T::Clone(deep);
        return memory::Call<&FIAttributeCursorBase::Clone>::OrElse(EmptyAttributeCursor, *this,
                                                                   deep);
    }
    void GetValue(FIValue& out) override {
        if (memory::IsInside()) return T::GetValue(out);
        memory::Call<&FIAttributeCursorBase::GetValue>::OrTell(out, *this, out);
    }
};

template <std::derived_from<FIContext> T>
class Shielded<T> final : public T {
 public:
    using T::T;

    FICursorBase* MakeCursor(int kind) override {
        if (memory::IsInside()) return T::MakeCursor(kind);
        return memory::Call<&FIContext::MakeCursor>::OrElse(EmptyCursor, *this, kind);
    }
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override {
        const auto give_up = [&] {
            out.Clear();
            *rest = path;
        };
        if (memory::IsInside()) return T::GetKeyValue(path, out, rest);
        memory::Call<&FIContext::GetKeyValue>::OrElse(give_up, *this, path, out, rest);
    }
};

// The operations of FIEntry.
template <class T>
class ShieldedEntry : public T {
 public:
    using T::T;

    void GetName(FIValue& out) override {
        if (memory::IsInside()) return T::GetName(out);
        memory::Call<&FIEntry::GetName>::OrTell(out, *this, out);
    }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        if (memory::IsInside()) return T::GetAttribute(name, out);
        memory::Call<&FIEntry::GetAttribute>::OrTell(out, *this, name, out);
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetAttribute(name, value, mode, out);
        memory::Call<&FIEntry::SetAttribute>::OrTell(out, *this, name, value, mode, out);
    }
    FIAttributeSource* GetAttributeSource() override {
        if (memory::IsInside()) return T::GetAttributeSource();
        return memory::Call<&FIEntry::GetAttributeSource>::OrElse(
            [] { return EmptyEntry()->GetAttributeSource(); }, *this);
    }
    bool IsContainer() override {
        if (memory::IsInside()) return T::IsContainer();
        return memory::Call<&FIEntry::IsContainer>::Or(false, *this);
    }
    FIContext* GetContext() override {
        if (memory::IsInside()) return T::GetContext();
        return memory::Call<&FIEntry::GetContext>::OrElse(EmptyContext, *this);
    }
    bool Subscribe(void* owner, int kind, FICallback callback) override {
        if (memory::IsInside()) return T::Subscribe(owner, kind, callback);
        return memory::Call<&FIEntry::Subscribe>::Or(false, *this, owner, kind, callback);
    }
    bool Unsubscribe(void* owner, int kind) override {
        if (memory::IsInside()) return T::Unsubscribe(owner, kind);
        return memory::Call<&FIEntry::Unsubscribe>::Or(false, *this, owner, kind);
    }
    int Compare(FIEntry& other) override {
        if (memory::IsInside()) return T::Compare(other);
        return memory::Call<&FIEntry::Compare>::Or(kNotComparable, *this, other);
    }

    void SetUnit(const FIValue& unit, FIValue& out) override {
        if (memory::IsInside()) return T::SetUnit(unit, out);
        memory::Call<&FIEntry::SetUnit>::OrTell(out, *this, unit, out);
    }
    void SetSpecUnit(const FIValue& unit, FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecUnit(unit, out);
        memory::Call<&FIEntry::SetSpecUnit>::OrTell(out, *this, unit, out);
    }
    void SetValue(const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetValue(value, mode, out);
        memory::Call<&FIEntry::SetValue>::OrTell(out, *this, value, mode, out);
    }
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                        FIValue& out) override {
        if (memory::IsInside()) return T::SetValueInUnit(value, unit, mode, out);
        memory::Call<&FIEntry::SetValueInUnit>::OrTell(out, *this, value, unit, mode, out);
    }
    void SetSpecValue(const FIValue& value, int mode, FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecValue(value, mode, out);
        memory::Call<&FIEntry::SetSpecValue>::OrTell(out, *this, value, mode, out);
    }
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue& out) override {
        if (memory::IsInside()) return T::SetSpecValueInUnit(value, unit, mode, out);
        memory::Call<&FIEntry::SetSpecValueInUnit>::OrTell(out, *this, value, unit, mode, out);
    }
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        if (memory::IsInside()) return T::SetDisplayUnit(unit, quantity, out);
        memory::Call<&FIEntry::SetDisplayUnit>::OrTell(out, *this, unit, quantity, out);
    }
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        if (memory::IsInside()) return T::SetDisplaySpecUnit(unit, quantity, out);
        memory::Call<&FIEntry::SetDisplaySpecUnit>::OrTell(out, *this, unit, quantity, out);
    }

    bool QueryService(int kind, void** out) override {
        if (memory::IsInside()) return T::QueryService(kind, out);
        return memory::Call<&FIEntry::QueryService>::OrElse(
            [out] { return (*out = nullptr) != nullptr; }, *this, kind, out);
    }
    bool ReleaseService(void** out) override {
        if (memory::IsInside()) return T::ReleaseService(out);
        return memory::Call<&FIEntry::ReleaseService>::OrElse(
            [out] { return (*out = nullptr) != nullptr; }, *this, out);
    }
    bool CanHold() override {
        if (memory::IsInside()) return T::CanHold();
        return memory::Call<&FIEntry::CanHold>::Or(false, *this);
    }
    void BeginBatch() override {
        if (memory::IsInside()) return T::BeginBatch();
        memory::Call<&FIEntry::BeginBatch>::OrNothing(*this);
    }
    void EndBatch(int argument) override {
        if (memory::IsInside()) return T::EndBatch(argument);
        memory::Call<&FIEntry::EndBatch>::OrNothing(*this, argument);
    }

    int GetCaps(int a, int b) override {
        if (memory::IsInside()) return T::GetCaps(a, b);
        return memory::Call<&FIEntry::GetCaps>::Or(0, *this, a, b);
    }
    void DoAction(FIValue& out, int a, int b) override {
        if (memory::IsInside()) return T::DoAction(out, a, b);
        memory::Call<&FIEntry::DoAction>::OrTell(out, *this, out, a, b);
    }
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override {
        if (memory::IsInside()) return T::DoActionEx(out, a, b, c, d);
        memory::Call<&FIEntry::DoActionEx>::OrTell(out, *this, out, a, b, c, d);
    }
    void DoCommand(int command, FIErrorRecord& error) override {
        const auto give_up = [&] {
            error.code = 2;
            error.text.SetText(memory::kOutOfMemoryText);
        };
        if (memory::IsInside()) return T::DoCommand(command, error);
        memory::Call<&FIEntry::DoCommand>::OrElse(give_up, *this, command, error);
    }
};

template <std::derived_from<FIEntry> T>
class Shielded<T> final : public ShieldedEntry<T> {
 public:
    using ShieldedEntry<T>::ShieldedEntry;
};

// An entry that makes its attribute cursors itself.
template <std::derived_from<FIEntry> T>
requires std::derived_from<T, FIAttributeSource>
class Shielded<T> final : public ShieldedEntry<T> {
 public:
    using ShieldedEntry<T>::ShieldedEntry;

    FIAttributeCursorBase* MakeCursor() override {
        if (memory::IsInside()) return T::MakeCursor();
        return memory::Call<&FIAttributeSource::MakeCursor>::OrElse(EmptyAttributeCursor, *this);
    }
};

}  // namespace fixtop
