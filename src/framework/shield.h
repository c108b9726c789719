#pragma once

// Shielded<T>: an entry, context, cursor or attribute cursor of class T as it is handed to clients:
// each of its operations can be called from outside, and none lets running out of memory through
// (diagnostics/memory_guard.h tells what they answer). Objects that clients may hold are made by
// it:
//
//     HandOut(new Shielded<HVarsCursorBase>(context, walk))
//
// framework/shielded_iterator.h has those for iterators and references.
//
// T is complete, not final, and has constructors that a derived class can reach.

#include <concepts>

#include "diagnostics/memory_guard.h"
#include "framework/cursor.h"
#include "framework/empties.h"
#include "framework/entry.h"

template <class T>
class Shielded;

// The operations of FICursorPosition, which both kinds of cursor have.
template <class T>
class ShieldedPosition : public T {
 public:
    using T::T;
    explicit ShieldedPosition(const T& other) : T(other) {}

    bool Seek(int origin, int delta) override {
        return memory::Or(false, [&] { return T::Seek(origin, delta); });
    }
    bool SeekName(int origin, const char* name) override {
        return memory::Or(false, [&] { return T::SeekName(origin, name); });
    }
    bool SeekValue(int origin, FIEntry& entry) override {
        return memory::Or(false, [&] { return T::SeekValue(origin, entry); });
    }
    bool AtBegin() override {
        return memory::Or(false, [&] { return T::AtBegin(); });
    }
    // A walk that asks ends here.
    bool AtEnd() override {
        return memory::Or(true, [&] { return T::AtEnd(); });
    }
    int Compare(FICursorPosition& other) override {
        return memory::Or(kNotComparable, [&] { return T::Compare(other); });
    }
    void GetKey(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetKey(out); });
    }
};

template <std::derived_from<FICursorBase> T>
class Shielded<T> final : public ShieldedPosition<T> {
 public:
    using ShieldedPosition<T>::ShieldedPosition;

    FICursorBase* Clone(bool deep) override {
        return memory::OrElse(EmptyCursor, [&]() -> FICursorBase* { return T::Clone(deep); });
    }
    FIEntry* GetEntry() override {
        return memory::OrElse(EmptyEntry, [&] { return T::GetEntry(); });
    }
    bool IsHidden() override {
        return memory::Or(false, [&] { return T::IsHidden(); });
    }
};

template <std::derived_from<FIAttributeCursorBase> T>
class Shielded<T> final : public ShieldedPosition<T> {
 public:
    using ShieldedPosition<T>::ShieldedPosition;

    FIAttributeCursorBase* Clone(bool deep) override {
        return memory::OrElse(EmptyAttributeCursor,
                              [&]() -> FIAttributeCursorBase* { return T::Clone(deep); });
    }
    void GetValue(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetValue(out); });
    }
};

template <std::derived_from<FIContext> T>
class Shielded<T> final : public T {
 public:
    using T::T;

    FICursorBase* MakeCursor(int kind) override {
        return memory::OrElse(EmptyCursor, [&] { return T::MakeCursor(kind); });
    }
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override {
        const auto give_up = [&] {
            out.Clear();
            *rest = path;
        };
        memory::OrElse(give_up, [&] { T::GetKeyValue(path, out, rest); });
    }
};

// The operations of FIEntry.
template <class T>
class ShieldedEntry : public T {
 public:
    using T::T;

    void GetName(FIValue& out) override {
        memory::OrTell(out, [&] { T::GetName(out); });
    }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        memory::OrTell(out, [&] { T::GetAttribute(name, out); });
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetAttribute(name, value, mode, out); });
    }
    FIAttributeSource* GetAttributeSource() override {
        return memory::OrElse([] { return EmptyEntry()->GetAttributeSource(); },
                              [&] { return T::GetAttributeSource(); });
    }
    bool IsContainer() override {
        return memory::Or(false, [&] { return T::IsContainer(); });
    }
    FIContext* GetContext() override {
        return memory::OrElse(EmptyContext, [&] { return T::GetContext(); });
    }
    bool Subscribe(void* owner, int kind, FICallback callback) override {
        return memory::Or(false, [&] { return T::Subscribe(owner, kind, callback); });
    }
    bool Unsubscribe(void* owner, int kind) override {
        return memory::Or(false, [&] { return T::Unsubscribe(owner, kind); });
    }
    int Compare(FIEntry& other) override {
        return memory::Or(kNotComparable, [&] { return T::Compare(other); });
    }

    void SetUnit(const FIValue& unit, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetUnit(unit, out); });
    }
    void SetSpecUnit(const FIValue& unit, FIValue& out) override {
        memory::OrTell(out, [&] { T::SetSpecUnit(unit, out); });
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

    bool QueryService(int kind, void** out) override {
        return memory::OrElse([out] { return (*out = nullptr) != nullptr; },
                              [&] { return T::QueryService(kind, out); });
    }
    bool ReleaseService(void** out) override {
        return memory::OrElse([out] { return (*out = nullptr) != nullptr; },
                              [&] { return T::ReleaseService(out); });
    }
    bool CanHold() override {
        return memory::Or(false, [&] { return T::CanHold(); });
    }
    void BeginBatch() override {
        memory::OrNothing([&] { T::BeginBatch(); });
    }
    void EndBatch(int argument) override {
        memory::OrNothing([&] { T::EndBatch(argument); });
    }

    int GetCaps(int a, int b) override {
        return memory::Or(0, [&] { return T::GetCaps(a, b); });
    }
    void DoAction(FIValue& out, int a, int b) override {
        memory::OrTell(out, [&] { T::DoAction(out, a, b); });
    }
    void DoActionEx(FIValue& out, int a, int b, int c, int d) override {
        memory::OrTell(out, [&] { T::DoActionEx(out, a, b, c, d); });
    }
    void DoCommand(int command, FIErrorRecord& error) override {
        const auto give_up = [&] {
            error.code = 2;
            error.text.SetText(memory::kOutOfMemoryText);
        };
        memory::OrElse(give_up, [&] { T::DoCommand(command, error); });
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
        return memory::OrElse(EmptyAttributeCursor,
                              [&]() -> FIAttributeCursorBase* { return T::MakeCursor(); });
    }
};
