// What an iterator passes on to its node, and which of these calls show the node the iterator's
// variables and units.

#include <gtest/gtest.h>

#include <functional>

#include "framework/empties.h"
#include "framework/fi_iterator.h"

namespace {

// Notes the last call and the var set that it came with.
class Witness final : public CountedFromZero<FIEntry> {
 public:
    void GetName(FIValue& out) override { out.SetText("witness"); }
    void GetAttribute(const FIValue&, FIValue&) override { Note("GetAttribute"); }
    void SetAttribute(const FIValue&, const FIValue&, int, FIValue&) override {
        Note("SetAttribute");
    }
    FIAttributeSource* GetAttributeSource() override {
        Note("GetAttributeSource");
        return EmptyEntry()->GetAttributeSource();
    }
    FIContext* GetContext() override { return EmptyContext(); }
    void SetUnit(const FIValue&, FIValue&) override { Note("SetUnit"); }
    void SetSpecUnit(const FIValue&, FIValue&) override { Note("SetSpecUnit"); }
    void SetValue(const FIValue&, int, FIValue&) override { Note("SetValue"); }
    void SetValueInUnit(const FIValue&, const FIValue&, int, FIValue&) override {
        Note("SetValueInUnit");
    }
    void SetSpecValue(const FIValue&, int, FIValue&) override { Note("SetSpecValue"); }
    void SetSpecValueInUnit(const FIValue&, const FIValue&, int, FIValue&) override {
        Note("SetSpecValueInUnit");
    }
    void SetDisplayUnit(const FIValue&, const FIValue&, FIValue&) override {
        Note("SetDisplayUnit");
    }
    void SetDisplaySpecUnit(const FIValue&, const FIValue&, FIValue&) override {
        Note("SetDisplaySpecUnit");
    }
    int GetCaps(int a, int b) override {
        Note("GetCaps");
        return 10 * a + b;
    }
    void DoAction(FIValue&, int, int) override { Note("DoAction"); }
    void DoActionEx(FIValue&, int, int, int, int) override { Note("DoActionEx"); }
    void DoCommand(int, FIErrorRecord&) override { Note("DoCommand"); }

    std::string call;
    FIVarSet* seen = nullptr;

 private:
    void Note(const char* name) {
        call = name;
        seen = GetVarSet();
    }
};

TEST(IteratorCalls, reads_and_writes_are_wrapped_and_actions_are_not) {
    struct Case {
        const char* name;
        bool wrapped;
        std::function<void(FIIterator&, FIValue&)> call;
    };
    const FIValue any("any");
    const Case cases[] = {
        {"GetAttribute", true, [&](auto& it, auto& out) { it.GetAttribute(any, out); }},
        {"SetAttribute", true, [&](auto& it, auto& out) { it.SetAttribute(any, any, 0, out); }},
        {"GetAttributeSource", true,
         [&](auto& it, auto&) { Ref<FIAttributeSource>::Adopt(it.GetAttributeSource()); }},
        {"SetDisplayUnit", true, [&](auto& it, auto& out) { it.SetDisplayUnit(any, any, out); }},
        {"SetDisplaySpecUnit", true,
         [&](auto& it, auto& out) { it.SetDisplaySpecUnit(any, any, out); }},
        {"SetUnit", false, [&](auto& it, auto& out) { it.SetUnit(any, out); }},
        {"SetSpecUnit", false, [&](auto& it, auto& out) { it.SetSpecUnit(any, out); }},
        {"SetValue", true, [&](auto& it, auto& out) { it.SetValue(any, 0, out); }},
        {"SetValueInUnit", true, [&](auto& it, auto& out) { it.SetValueInUnit(any, any, 0, out); }},
        {"SetSpecValue", true, [&](auto& it, auto& out) { it.SetSpecValue(any, 0, out); }},
        {"SetSpecValueInUnit", true,
         [&](auto& it, auto& out) { it.SetSpecValueInUnit(any, any, 0, out); }},
        {"GetCaps", false, [&](auto& it, auto&) { EXPECT_EQ(12, it.GetCaps(1, 2)); }},
        {"DoAction", false, [&](auto& it, auto& out) { it.DoAction(out, 0, 0); }},
        {"DoActionEx", false, [&](auto& it, auto& out) { it.DoActionEx(out, 0, 0, 0, 0); }},
        {"DoCommand", false,
         [&](auto& it, auto&) {
             FIErrorRecord record;
             it.DoCommand(0, record);
         }},
    };
    auto* witness = new Witness;
    const auto entry = Ref<FIEntry>::Share(witness);
    const auto it = Ref<FIIterator>::Adopt(new FIIterator(witness, false));
    const auto other = Ref<FIIterator>::Adopt(new FIIterator(witness, false));
    for (const Case& each : cases) {
        for (FIVarSet* before : {static_cast<FIVarSet*>(nullptr), other->GetVarSet()}) {
            SCOPED_TRACE(each.name);
            witness->SetVarSet(before);
            witness->call.clear();
            FIValue out;
            each.call(*it, out);
            EXPECT_EQ(each.name, witness->call);
            EXPECT_EQ(each.wrapped ? it->GetVarSet() : before, witness->seen);
            EXPECT_EQ(before, witness->GetVarSet()) << "as it was before the call";
        }
    }
    witness->SetVarSet(nullptr);
}

}  // namespace
