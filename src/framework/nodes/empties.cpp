// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

// A singleton is never counted and never destroyed.
template <class Base>
class Uncounted : public Base {
 public:
    int AddRef() final { return 1; }
    int Release() final { return 0; }
};

// The part that both empty cursors share.
template <class Base>
class NothingCursor : public Uncounted<Base> {
 public:
    const void* TypeId() const override { return &kTypeId; }
    bool Seek(int, int) override { return false; }
    bool SeekName(int, const char*) override { return false; }
    bool SeekValue(int, FIEntry&) override { return false; }
    bool AtBegin() override { return true; }
    bool AtEnd() override { return true; }
    int Compare(FICursorPosition&) override { return 0; }
    void GetKey(FIValue& out) override { out.Clear(); }

 private:
    static inline const char kTypeId = 0;
};

class EmptyCursorBase final : public NothingCursor<FICursorBase> {
 public:
    EmptyCursorBase* Clone(bool) override { return this; }
    FIEntry* GetEntry() override { return EmptyEntry(); }
};

class EmptyAttributeCursorBase final : public NothingCursor<FIAttributeCursorBase> {
 public:
    EmptyAttributeCursorBase* Clone(bool) override { return this; }
    void GetValue(FIValue& out) override { out.Clear(); }
    FIVarSet* GetVarSet() override { return nullptr; }
    void SetVarSet(FIVarSet*) override {}
};

class EmptyContextType final : public Uncounted<FIContext> {
 public:
    FICursorBase* MakeCursor(int) override { return EmptyCursor(); }
};

class EmptyAttributeSource final : public Uncounted<FIAttributeSource> {
 public:
    FIAttributeCursorBase* MakeCursor() override { return EmptyAttributeCursor(); }
};

class EmptyEntryType final : public Uncounted<FIEntry> {
 public:
    void GetName(FIValue& out) override { out.Clear(); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return &source_; }
    bool IsContainer() override { return false; }
    FIContext* GetContext() override { return EmptyContext(); }

 private:
    EmptyAttributeSource source_;
};

// Clients may hold an empty until the very end of the process. It stands for what there is no
// memory for, so it takes none.
template <class T>
T* Immortal() {
    alignas(T) static unsigned char place[sizeof(T)];
    static T* const object = new (place) T;
    return object;
}

}  // namespace

FIEntry* EmptyEntry() {
    return Immortal<EmptyEntryType>();
}
FIContext* EmptyContext() {
    return Immortal<EmptyContextType>();
}
FICursorBase* EmptyCursor() {
    return Immortal<EmptyCursorBase>();
}
FIAttributeCursorBase* EmptyAttributeCursor() {
    return Immortal<EmptyAttributeCursorBase>();
}

}  // namespace fixtop
