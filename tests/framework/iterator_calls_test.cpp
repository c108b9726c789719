// SPDX-License-Identifier: Apache-2.0
// What an iterator passes on to its node, and a reference to its iterator, and which of these calls
// show the node the iterator's variables and units.

#include <gtest/gtest.h>

#include <vector>

#include "framework/iterator/iterator.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/reference/reference.h"

namespace fixtop {

namespace {

// Notes the last call, what it was given, and the var set that it came with.
class Witness final : public CountedFromZero<FIEntry> {
 public:
    void GetName(FIValue& out) override { out.SetText("witness"); }
    void GetAttribute(const FIValue& name, FIValue&) override { Note("GetAttribute", {name}); }
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue&) override {
        Note("SetAttribute", {name, value, FIValue::OfInt(mode)});
    }
    FIAttributeSource* GetAttributeSource() override {
        Note("GetAttributeSource", {});
        return EmptyEntry()->GetAttributeSource();
    }
    FIContext* GetContext() override { return EmptyContext(); }
    void SetUnit(const FIValue& unit, FIValue&) override { Note("SetUnit", {unit}); }
    void SetSpecUnit(const FIValue& unit, FIValue&) override { Note("SetSpecUnit", {unit}); }
    void SetValue(const FIValue& value, int mode, FIValue&) override {
        Note("SetValue", {value, FIValue::OfInt(mode)});
    }
    void SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue&) override {
        Note("SetValueInUnit", {value, unit, FIValue::OfInt(mode)});
    }
    void SetSpecValue(const FIValue& value, int mode, FIValue&) override {
        Note("SetSpecValue", {value, FIValue::OfInt(mode)});
    }
    void SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                            FIValue&) override {
        Note("SetSpecValueInUnit", {value, unit, FIValue::OfInt(mode)});
    }
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue&) override {
        Note("SetDisplayUnit", {unit, quantity});
    }
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue&) override {
        Note("SetDisplaySpecUnit", {unit, quantity});
    }
    int GetCaps(int a, int b) override {
        Note("GetCaps", {FIValue::OfInt(a), FIValue::OfInt(b)});
        return 10 * a + b;
    }
    void DoAction(FIValue&, int a, int b) override {
        Note("DoAction", {FIValue::OfInt(a), FIValue::OfInt(b)});
    }
    void DoActionEx(FIValue&, int a, int b, int c, int d) override {
        Note("DoActionEx",
             {FIValue::OfInt(a), FIValue::OfInt(b), FIValue::OfInt(c), FIValue::OfInt(d)});
    }
    void DoCommand(int command, FIErrorRecord&) override {
        Note("DoCommand", {FIValue::OfInt(command)});
    }

    // "SetValue value 1".
    std::string call;
    FIVarSet* seen = nullptr;

 private:
    void Note(const char* name, const std::vector<FIValue>& arguments) {
        call = name;
        for (const FIValue& each : arguments) call += " " + each.ToText();
        seen = GetVarSet();
    }
};

template <class Handle>
struct Call {
    const char* expected;
    bool wrapped;
    void (*make)(Handle& handle, FIValue& out);
};

const FIValue kName("name");
const FIValue kValue("value");
const FIValue kUnit("unit");
const FIValue kQuantity("quantity");

// What iterators and references both have.
template <class Handle>
std::vector<Call<Handle>> SharedCalls() {
    return {
        {"GetAttribute name", true, [](Handle& h, FIValue& out) { h.GetAttribute(kName, out); }},
        {"SetAttribute name value 1", true,
         [](Handle& h, FIValue& out) { h.SetAttribute(kName, kValue, 1, out); }},
        {"SetDisplayUnit unit quantity", true,
         [](Handle& h, FIValue& out) { h.SetDisplayUnit(kUnit, kQuantity, out); }},
        {"SetDisplaySpecUnit unit quantity", true,
         [](Handle& h, FIValue& out) { h.SetDisplaySpecUnit(kUnit, kQuantity, out); }},
        {"SetUnit unit", false, [](Handle& h, FIValue& out) { h.SetUnit(kUnit, out); }},
        {"SetSpecUnit unit", false, [](Handle& h, FIValue& out) { h.SetSpecUnit(kUnit, out); }},
        {"SetValue value 2", true, [](Handle& h, FIValue& out) { h.SetValue(kValue, 2, out); }},
        {"SetValueInUnit value unit 3", true,
         [](Handle& h, FIValue& out) { h.SetValueInUnit(kValue, kUnit, 3, out); }},
        {"SetSpecValue value 4", true,
         [](Handle& h, FIValue& out) { h.SetSpecValue(kValue, 4, out); }},
        {"SetSpecValueInUnit value unit 5", true,
         [](Handle& h, FIValue& out) { h.SetSpecValueInUnit(kValue, kUnit, 5, out); }},
    };
}

class HandleCalls : public ::testing::Test {
 protected:
    HandleCalls()
        : witness_(new Witness),
          entry_(Ref<FIEntry>::Share(witness_)),
          it_(Ref<FIIterator>::Adopt(new FIIterator(witness_, false))),
          other_(Ref<FIIterator>::Adopt(new FIIterator(witness_, false))) {}

    template <class Handle>
    void Expect(Handle& handle, const Call<Handle>& call) {
        for (FIVarSet* before : {static_cast<FIVarSet*>(nullptr), other_->GetVarSet()}) {
            SCOPED_TRACE(call.expected);
            witness_->SetVarSet(before);
            witness_->call.clear();
            FIValue out;
            call.make(handle, out);
            EXPECT_EQ(call.expected, witness_->call);
            EXPECT_EQ(call.wrapped ? handle.GetVarSet() : before, witness_->seen);
            EXPECT_EQ(before, witness_->GetVarSet()) << "as it was before the call";
        }
        witness_->SetVarSet(nullptr);
    }

    Witness* witness_;
    Ref<FIEntry> entry_;
    Ref<FIIterator> it_;
    Ref<FIIterator> other_;
};

TEST_F(HandleCalls, reads_and_writes_are_wrapped_and_actions_are_not) {
    std::vector<Call<FIIterator>> calls = SharedCalls<FIIterator>();
    calls.insert(
        calls.end(),
        {{"GetAttributeSource", true,
          [](FIIterator& it, FIValue&) { Ref<FIAttributeSource>::Adopt(it.GetAttributeSource()); }},
         {"GetCaps 1 2", false, [](FIIterator& it, FIValue&) { EXPECT_EQ(12, it.GetCaps(1, 2)); }},
         {"DoAction 1 2", false, [](FIIterator& it, FIValue& out) { it.DoAction(out, 1, 2); }},
         {"DoActionEx 1 2 3 4", false,
          [](FIIterator& it, FIValue& out) { it.DoActionEx(out, 1, 2, 3, 4); }},
         {"DoCommand 6", false, [](FIIterator& it, FIValue&) {
              FIErrorRecord record;
              it.DoCommand(6, record);
          }}});
    for (const auto& each : calls) Expect(*it_, each);
}

TEST_F(HandleCalls, references_pass_on_what_they_guard) {
    const auto reference = Ref<FIReference>::Adopt(new FIReference(*it_));
    for (const auto& each : SharedCalls<FIReference>()) Expect(*reference, each);
}

}  // namespace

}  // namespace fixtop
