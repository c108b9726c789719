// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/top_cursor.h"

#include <cstring>

#include "framework/nodes/counted.h"
#include "framework/nodes/cursor.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"

namespace fixtop {

namespace {

constexpr char kTopName[] = "Top";

class TopChildEntry : public CountedFromZero<FIEntry> {
 public:
    explicit TopChildEntry(const Ref<FIContext>& inner) : inner_(inner) {}

    void GetName(FIValue& out) override { out.SetText(kTopName); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return inner_.Counted(); }

 private:
    Ref<FIContext> inner_;
};

}  // namespace

TopCursorBase::TopCursorBase(FIContext* inner) : inner_(Ref<FIContext>::Share(inner)) {}

const void* TopCursorBase::TypeId() const {
    static const char type_id = 0;
    return &type_id;
}

int TopCursorBase::Release() {
    const int left = --references_;
    if (left == 0) delete this;
    return left;
}

FICursorBase* TopCursorBase::Clone(bool deep) {
    if (!deep) {
        AddRef();
        return this;
    }
    auto* clone = new Shielded<TopCursorBase>(inner_.Get());
    clone->at_end_ = at_end_;
    return clone;
}

bool TopCursorBase::Seek(int origin, int delta) {
    const bool known = origin == kFromFirst || origin == kFromPresent || origin == kFromEnd;
    if (known && delta != 0) at_end_ = delta > 0;
    return !at_end_;
}

bool TopCursorBase::SeekName(int, const char* name) {
    at_end_ = !name || std::strcmp(name, kTopName) != 0;
    return !at_end_;
}

int TopCursorBase::Compare(FICursorPosition& other) {
    return other.TypeId() == TypeId() ? CompareKeys(*this, other) : kNotComparable;
}

void TopCursorBase::GetKey(FIValue& out) {
    if (at_end_) {
        out.Clear();
    } else {
        out.SetText(kTopName);
    }
}

FIEntry* TopCursorBase::GetEntry() {
    return at_end_ ? nullptr : Ref<FIEntry>::Share(new Shielded<TopChildEntry>(inner_)).Detach();
}

TopContext::TopContext(FIContext* inner) : inner_(Ref<FIContext>::Share(inner)) {}

FICursorBase* TopContext::MakeCursor(int kind) {
    return kind == kKeyCursor ? EmptyCursor() : new Shielded<TopCursorBase>(inner_.Get());
}

}  // namespace fixtop
