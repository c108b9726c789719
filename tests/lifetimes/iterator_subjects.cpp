// SPDX-License-Identifier: Apache-2.0
// Iterators, references and those who listen to a reference.

#include <utility>

#include "lifetimes/subject.h"

namespace fixtop::lifetimes {

namespace {

using Iterator = Ref<FIIteratorBase>;
using Reference = Ref<FIReferenceBase>;

// What iterators and references have alike.
template <class Handle>
std::string ReadRow(Handle& handle, const char* row) {
    FIValue out;
    handle.GetAttribute(FIValue(row), out);
    return Text(out);
}

template <class Handle>
std::string NameOfNode(Handle& handle) {
    FIValue out;
    handle.GetName(out);
    return Text(out);
}

template <class Handle>
std::string PathOfNode(Handle& handle) {
    FIValue out;
    handle.GetPath(out);
    return Text(out);
}

template <class Handle>
std::string Store(Handle& handle, const Access& access) {
    FIValue out;
    handle.SetAttribute(FIValue("value"), NextNumber(access), 0, out);
    return Text(out);
}

template <class Handle>
std::string ModelRows(Handle& handle) {
    std::string rows;
    for (const char* row : kModelRows) rows += std::string(row) + " " + ReadRow(handle, row) + " ";
    return rows;
}

template <class Handle>
void DumpAll(Handle& handle) {
    FIValue out;
    char buffer[40];
    handle.DumpVars(out);
    handle.DumpXml(out, 2);
    handle.DumpXmlDefault(out);
    handle.DumpNode(out);
    handle.DumpNodeFlat(out);
    handle.DumpNodeDeep(out);
    handle.NameText(buffer, sizeof buffer);
    handle.PathText(buffer, sizeof buffer);
    handle.KeyText(buffer, sizeof buffer);
    handle.NameLength();
    handle.PathLength();
    handle.KeyLength();
    handle.Depth();
}

template <class Handle>
void UseVariables(Handle& handle) {
    FIValue out;
    const FIValue name("Scene");
    handle.SetVar(name, FIValue("there"));
    handle.GetVar(name, out);
    handle.GetVarText("Scene", out);
    handle.RemoveVar(name);
    handle.RemoveVarText("Scene");
    handle.GetVarSet();
}

// Whatever is stored keeps its whole part, and the unit is the former one in the end.
template <class Handle>
void UseUnits(Handle& handle, const Access& access) {
    FIValue out;
    const FIValue kelvin("K");
    handle.SetDisplayUnit(kelvin, FIValue(), out);
    handle.GetAttribute(FIValue("value"), out);
    handle.SetDisplaySpecUnit(kelvin, FIValue(), out);
    handle.GetAttribute(FIValue("spec_value"), out);
    const FIValue unit("C");
    handle.SetDisplayUnit(unit, FIValue(), out);
    handle.SetDisplaySpecUnit(unit, FIValue(), out);
    handle.SetUnit(unit, out);
    handle.SetSpecUnit(unit, out);
    handle.SetValue(NextNumber(access), 0, out);
    handle.SetValueInUnit(NextNumber(access), unit, 0, out);
    handle.SetSpecValue(NextNumber(access), 0, out);
    handle.SetSpecValueInUnit(NextNumber(access), unit, 0, out);
}

void UseAttributes(FIAttributeSource* source) {
    const auto counted = Ref<FIAttributeSource>::Adopt(source);
    if (!counted) return;
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(counted->MakeCursor());
    FIValue out;
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        cursor->GetValue(out);
    }
}

void Wander(FIIteratorBase& it) {
    it.AtFirst();
    it.AtLast();
    it.DownLast();
    it.First();
    it.Last();
    it.SeekPath(FIValue("*"));
    it.Locate(FIValue("*"));
    it.SeekChild("S1");
    it.SeekChildFrom("S1");
    Iterator::Adopt(it.OpenAttribute(FIValue("/FlowSht.1/StreamObject.400(S1)")));
    while (it.Up()) it.CanDescend();
}

class IteratorSubject final : public Subject {
 public:
    IteratorSubject(Iterator it, const Access& access, bool frozen)
        : it_(std::move(it)), access_(access), frozen_(frozen) {}

    std::string Do(Op op) override {
        // A frozen one is thawed first, whatever is asked, and then is like any other.
        if (frozen_) {
            frozen_ = false;
            it_->Thaw();
        }
        switch (op) {
            case Op::read:
                return ReadRow(*it_, access_.row);
            case Op::model_rows:
                return ModelRows(*it_);
            case Op::name:
                return NameOfNode(*it_);
            case Op::path:
                return PathOfNode(*it_);
            case Op::container:
                return Text(it_->CanDescend());
            case Op::down:
                return Moved([](FIIteratorBase& it) { return it.DownFirst(); });
            case Op::next:
                return Moved([](FIIteratorBase& it) { return it.Next(); });
            case Op::prev:
                return Moved([](FIIteratorBase& it) { return it.Prev(); });
            case Op::up:
                return Moved([](FIIteratorBase& it) { return it.Up(); });
            case Op::store:
                return Store(*it_, access_);
            case Op::rest:
                return Rest();
            default:
                return OfCopy(op);
        }
    }
    int CompareWith(Subject& other) override {
        return it_->Compare(*static_cast<IteratorSubject&>(other).it_);
    }

 private:
    template <class Move>
    std::string Moved(Move move) {
        const auto copy = Iterator::Adopt(it_->Copy());
        return move(*copy) ? "true " + NameOfNode(*copy) : "false";
    }
    std::string OfCopy(Op op) {
        const auto copy = Iterator::Adopt(it_->Copy());
        switch (op) {
            case Op::copy_name:
                return NameOfNode(*copy);
            case Op::copy_path:
                return PathOfNode(*copy);
            case Op::copy_read:
                return ReadRow(*copy, access_.row);
            case Op::copy_self:
                return std::to_string(copy->Compare(*it_));
            default:
                return Compared(op);
        }
    }
    std::string Rest() {
        UseVariables(*it_);
        DumpAll(*it_);
        UseUnits(*it_, access_);
        FIValue out;
        FIErrorRecord error;
        it_->DumpAttributes(out);
        it_->GetCaps(0, 0);
        it_->DoAction(out, 0, 0);
        it_->DoActionEx(out, 0, 0, 0, 0);
        it_->DoCommand(0, error);
        it_->IsKeyName("Name");
        UseAttributes(it_->GetAttributeSource());
        Reference::Adopt(it_->MakeReference())->GetAttribute(FIValue(access_.row), out);
        it_->Freeze();
        Iterator::Adopt(it_->Copy());
        it_->Thaw();
        Wander(*Iterator::Adopt(it_->Copy()));
        return "";
    }

    Iterator it_;
    Access access_;
    bool frozen_;
};

class ReferenceSubject : public Subject {
 public:
    ReferenceSubject(const Iterator& it, const Access& access)
        : reference_(Reference::Adopt(it->MakeReference())), access_(access) {}

    std::string Do(Op op) override {
        switch (op) {
            case Op::read:
                return ReadRow(*reference_, access_.row);
            case Op::model_rows:
                return ModelRows(*reference_);
            case Op::name:
                return NameOfNode(*reference_);
            case Op::path:
                return PathOfNode(*reference_);
            case Op::store:
                return Store(*reference_, access_);
            case Op::copy_name:
                return NameOfNode(*Iterator::Adopt(reference_->Copy()));
            case Op::copy_path:
                return PathOfNode(*Iterator::Adopt(reference_->Copy()));
            case Op::copy_read:
                return ReadRow(*Iterator::Adopt(reference_->Copy()), access_.row);
            case Op::rest:
                return Rest();
            default:
                return Compared(op);
        }
    }
    int CompareWith(Subject& other) override {
        return reference_->Compare(*static_cast<ReferenceSubject&>(other).reference_);
    }

 protected:
    std::string Rest() {
        UseVariables(*reference_);
        DumpAll(*reference_);
        UseUnits(*reference_, access_);
        reference_->MarkStale();
        reference_->Rebind();
        FIValue out;
        reference_->GetIterator()->GetAttribute(FIValue(access_.row), out);
        reference_->Subscribe(this, kValueChanged, [](void*, int) {});
        reference_->Subscribe(this, kStructureChanged, [](void*, int) {});
        reference_->Unsubscribe(this, kStructureChanged);
        reference_->Unsubscribe(this, kValueChanged);
        return "";
    }

    Reference reference_;
    Access access_;
};

// Two clients of one reference: who hears of its end and who hears of changes.
class SubscriberSubject final : public ReferenceSubject {
 public:
    SubscriberSubject(const Iterator& it, const Access& access) : ReferenceSubject(it, access) {
        reference_->Subscribe(&ends_, kNodeDeleted, &Count);
        reference_->Subscribe(&changes_, kValueChanged, &Count);
    }
    ~SubscriberSubject() override { reference_.Reset(); }

    std::string Do(Op op) override {
        if (op == Op::release) reference_.Reset();
        if (op == Op::told || op == Op::release) return "end " + std::to_string(ends_);
        if (op == Op::told_change) return Text(std::exchange(changes_, 0) > 0);
        return ReferenceSubject::Do(op);
    }

 private:
    static void Count(void* owner, int) { ++*static_cast<int*>(owner); }

    int ends_ = 0;
    int changes_ = 0;
};

}  // namespace

std::unique_ptr<Subject> MakeIteratorSubject(Iterator it, const Access& access, bool frozen) {
    return std::make_unique<IteratorSubject>(std::move(it), access, frozen);
}

std::unique_ptr<Subject> MakeReferenceSubject(Iterator it, const Access& access) {
    return std::make_unique<ReferenceSubject>(it, access);
}

std::unique_ptr<Subject> MakeSubscriberSubject(Iterator it, const Access& access) {
    return std::make_unique<SubscriberSubject>(it, access);
}

}  // namespace fixtop::lifetimes
