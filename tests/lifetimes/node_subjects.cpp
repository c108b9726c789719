// SPDX-License-Identifier: Apache-2.0
// Bare entries: nodes, the top, and a stream that is held.

#include <utility>

#include "lifetimes/subject.h"

namespace fixtop::lifetimes {

namespace {

using Entry = Ref<FIEntry>;

std::string ReadRow(FIEntry& entry, const char* row) {
    FIValue out;
    entry.GetAttribute(FIValue(row), out);
    return Text(out);
}

std::string NameOfNode(FIEntry& entry) {
    FIValue out;
    entry.GetName(out);
    return Text(out);
}

std::string FirstChild(FIEntry& entry) {
    const auto context = Ref<FIContext>::Adopt(entry.GetContext());
    if (!context) return "no context";
    const auto cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    if (!cursor->Seek(kFromFirst, 0)) return "false";
    const auto child = Entry::Adopt(cursor->GetEntry());
    return "true " + (child ? NameOfNode(*child) : std::string("nothing"));
}

void UseEntry(FIEntry& entry, const Access& access) {
    FIValue out;
    const FIValue unit("C");
    entry.SetUnit(unit, out);
    entry.SetSpecUnit(unit, out);
    entry.SetValue(NextNumber(access), 0, out);
    entry.SetValueInUnit(NextNumber(access), unit, 0, out);
    entry.SetSpecValue(NextNumber(access), 0, out);
    entry.SetSpecValueInUnit(NextNumber(access), unit, 0, out);
    entry.SetDisplayUnit(unit, FIValue(), out);
    entry.SetDisplaySpecUnit(unit, FIValue(), out);
    entry.GetVarSet();
    if (entry.CanHold()) entry.BeginBatch();
    entry.BeginBatch();
    entry.EndBatch(0);
    entry.GetCaps(0, 0);
    entry.DoAction(out, 0, 0);
    entry.DoActionEx(out, 0, 0, 0, 0);
    FIErrorRecord error;
    entry.DoCommand(0, error);
    void* service = nullptr;
    entry.QueryService(1, &service);
    if (entry.Subscribe(&entry, kValueChanged, [](void*, int) {})) {
        entry.Unsubscribe(&entry, kValueChanged);
    }
}

void UseContext(FIEntry& entry) {
    FIValue out;
    const auto context = Ref<FIContext>::Adopt(entry.GetContext());
    if (context) {
        const char* rest = nullptr;
        context->GetKeyValue("/FlowSht.1/StreamObject.400(S1)", out, &rest);
        Ref<FICursorBase>::Adopt(context->MakeCursor(kKeyCursor))->Seek(kFromFirst, 0);
    }
    const auto source = Ref<FIAttributeSource>::Adopt(entry.GetAttributeSource());
    if (!source) return;
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        cursor->GetValue(out);
    }
}

class NodeSubject : public Subject {
 public:
    NodeSubject(Entry entry, const Access& access, const char* stored)
        : entry_(std::move(entry)), access_(access), stored_(stored) {}

    std::string Do(Op op) override {
        switch (op) {
            case Op::read:
                return ReadRow(*entry_, access_.row);
            case Op::model_rows:
                return ModelRows();
            case Op::name:
                return NameOfNode(*entry_);
            case Op::container:
                return Text(entry_->IsContainer());
            case Op::down:
                return FirstChild(*entry_);
            case Op::store:
                return Store();
            case Op::rest:
                UseEntry(*entry_, access_);
                UseContext(*entry_);
                return "";
            default:
                return Compared(op);
        }
    }
    int CompareWith(Subject& other) override {
        return entry_->Compare(*static_cast<NodeSubject&>(other).entry_);
    }

 protected:
    Entry entry_;

 private:
    std::string ModelRows() {
        std::string rows;
        for (const char* row : kModelRows)
            rows += std::string(row) + " " + ReadRow(*entry_, row) + " ";
        return rows;
    }
    std::string Store() {
        FIValue out;
        const bool flag = std::string(stored_) == "attachments";
        const FIValue value = flag ? FIValue::OfInt(1) : NextNumber(access_);
        entry_->SetAttribute(FIValue(stored_), value, 0, out);
        return Text(out);
    }

    Access access_;
    const char* stored_;
};

// A stream in the middle of a batch.
class BatchSubject final : public NodeSubject {
 public:
    BatchSubject(Entry entry, const Access& access)
        : NodeSubject(std::move(entry), access, "value") {
        entry_->CanHold();
    }
    // A test that leaves the batch open would leave it to the next one.
    ~BatchSubject() override { entry_->BeginBatch(); }

    // The rest would end the batch.
    std::string Do(Op op) override { return op == Op::rest ? "" : NodeSubject::Do(op); }
};

class TopSubscriberSubject final : public Subject {
 public:
    explicit TopSubscriberSubject(Entry top) : top_(std::move(top)) {
        top_->Subscribe(&ends_, kNodeDeleted, &Count);
        top_->Subscribe(&changes_, kValueChanged, &Count);
        top_->Subscribe(&changes_, kStructureChanged, &Count);
    }
    ~TopSubscriberSubject() override {
        if (!top_) return;
        top_->Unsubscribe(&ends_, kNodeDeleted);
        top_->Unsubscribe(&changes_, kValueChanged);
        top_->Unsubscribe(&changes_, kStructureChanged);
    }

    std::string Do(Op op) override {
        if (op == Op::release) top_.Reset();
        if (op == Op::told || op == Op::release) return "end " + std::to_string(ends_);
        return Text(std::exchange(changes_, 0) > 0);
    }

 private:
    static void Count(void* owner, int) { ++*static_cast<int*>(owner); }

    Entry top_;
    int ends_ = 0;
    int changes_ = 0;
};

}  // namespace

std::unique_ptr<Subject> MakeNodeSubject(Entry entry, const Access& access) {
    return std::make_unique<NodeSubject>(std::move(entry), access, "value");
}

std::unique_ptr<Subject> MakeTopSubject(Entry top, const Access& access) {
    return std::make_unique<NodeSubject>(std::move(top), access, "attachments");
}

std::unique_ptr<Subject> MakeBatchSubject(Entry entry, const Access& access) {
    return std::make_unique<BatchSubject>(std::move(entry), access);
}

std::unique_ptr<Subject> MakeTopSubscriberSubject(Entry top) {
    return std::make_unique<TopSubscriberSubject>(std::move(top));
}

}  // namespace fixtop::lifetimes
