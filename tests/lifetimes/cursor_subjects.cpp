// SPDX-License-Identifier: Apache-2.0
// Cursors over attributes and children, and the solver.

#include "lifetimes/subject.h"

namespace fixtop::lifetimes {

namespace {

template <class Cursor>
std::string KeyOf(Cursor& cursor) {
    FIValue out;
    cursor.GetKey(out);
    return Text(out);
}

// A seek leaves a cursor elsewhere, so a copy does it. One that failed says where it stands then.
template <class Seek>
std::string Sought(FICursorBase& cursor, Seek seek) {
    const auto copy = Ref<FICursorBase>::Adopt(cursor.Clone(true));
    if (seek(*copy)) return "true " + KeyOf(*copy);
    const std::string key = KeyOf(*copy);
    copy->Seek(kFromFirst, 0);
    return key == KeyOf(*copy) ? "false, at the first" : "false";
}

template <class Seek>
std::string SoughtRow(FIAttributeCursorBase& cursor, Seek seek) {
    const auto copy = Ref<FIAttributeCursorBase>::Adopt(cursor.Clone(true));
    if (seek(*copy)) return "true " + KeyOf(*copy);
    return copy->AtEnd() ? "false, at the end" : "false, inside";
}

class AttributeCursorSubject final : public Subject {
 public:
    explicit AttributeCursorSubject(Ref<FIAttributeCursorBase> cursor)
        : cursor_(std::move(cursor)) {}

    std::string Do(Op op) override {
        const auto copy = Ref<FIAttributeCursorBase>::Adopt(cursor_->Clone(true));
        switch (op) {
            case Op::read:
                return ValueOf(*cursor_);
            case Op::key:
                return KeyOf(*cursor_);
            case Op::seek_next:
                return SoughtRow(*cursor_, [](auto& each) { return each.Seek(kFromPresent, 1); });
            case Op::seek_name:
                return SoughtRow(*cursor_,
                                 [](auto& each) { return each.SeekName(kFromFirst, "type"); });
            case Op::copy_name:
                return KeyOf(*copy);
            case Op::copy_read:
                return ValueOf(*copy);
            case Op::copy_self:
                return std::to_string(copy->Compare(*cursor_));
            case Op::rest:
                return Rest();
            default:
                return Compared(op);
        }
    }
    int CompareWith(Subject& other) override {
        return cursor_->Compare(*static_cast<AttributeCursorSubject&>(other).cursor_);
    }

 private:
    static std::string ValueOf(FIAttributeCursorBase& cursor) {
        FIValue out;
        cursor.GetValue(out);
        return Text(out);
    }
    std::string Rest() {
        cursor_->GetVarSet();
        cursor_->AtBegin();
        for (bool on = cursor_->Seek(kFromFirst, 0); on; on = cursor_->Seek(kFromPresent, 1)) {
            ValueOf(*cursor_);
        }
        cursor_->Seek(kFromEnd, -1);
        cursor_->SetVarSet(nullptr);
        ValueOf(*cursor_);
        return "";
    }

    Ref<FIAttributeCursorBase> cursor_;
};

class ChildCursorSubject final : public Subject {
 public:
    ChildCursorSubject(Ref<FICursorBase> cursor, const Access& access)
        : cursor_(std::move(cursor)), access_(access) {}

    std::string Do(Op op) override {
        switch (op) {
            case Op::key:
                return KeyOf(*cursor_);
            case Op::entry:
                return EntryOf(*cursor_);
            case Op::at_end:
                return Text(cursor_->AtEnd());
            case Op::seek_first:
                return Sought(*cursor_, [](auto& each) { return each.Seek(kFromFirst, 0); });
            case Op::seek_next:
                return Sought(*cursor_, [](auto& each) { return each.Seek(kFromPresent, 1); });
            case Op::seek_prev:
                return Sought(*cursor_, [](auto& each) { return each.Seek(kFromPresent, -1); });
            case Op::copy_self:
                return std::to_string(
                    Ref<FICursorBase>::Adopt(cursor_->Clone(true))->Compare(*cursor_));
            case Op::rest:
                return Rest();
            default:
                return Compared(op);
        }
    }
    int CompareWith(Subject& other) override {
        return cursor_->Compare(*static_cast<ChildCursorSubject&>(other).cursor_);
    }

 private:
    std::string EntryOf(FICursorBase& cursor) const {
        const auto entry = Ref<FIEntry>::Adopt(cursor.GetEntry());
        if (!entry) return "nothing";
        FIValue name;
        FIValue value;
        entry->GetName(name);
        entry->GetAttribute(FIValue(access_.row), value);
        return Text(name) + " " + Text(value);
    }
    std::string Rest() {
        Ref<FICursorBase>::Adopt(cursor_->Clone(false))->IsHidden();
        cursor_->AtBegin();
        cursor_->SeekName(kFromPresent, "S3");
        EntryOf(*cursor_);
        cursor_->SeekName(kFromFirst, "S1");
        for (bool on = cursor_->Seek(kFromFirst, 0); on; on = cursor_->Seek(kFromPresent, 1)) {
            EntryOf(*cursor_);
        }
        cursor_->Seek(kFromEnd, 0);
        cursor_->Seek(kFromPresent, -1);
        EntryOf(*cursor_);
        return "";
    }

    Ref<FICursorBase> cursor_;
    Access access_;
};

class SolverSubject final : public Subject {
 public:
    explicit SolverSubject(std::unique_ptr<FISolver> solver) : solver_(std::move(solver)) {}
    // The case may go on calling one that has not left.
    ~SolverSubject() override { solver_->Unsubscribe(this, 3); }

    std::string Do(Op op) override {
        FIValue out;
        switch (op) {
            case Op::read:
                solver_->GetAttribute(FIValue("active"), out);
                return Text(out);
            case Op::store:
                solver_->SetAttribute(FIValue("wait_for_solve"), FIValue::OfInt(1), out);
                return Text(out);
            case Op::run:
                return Text(solver_->Run());
            case Op::subscribe:
                return Text(solver_->Subscribe(this, 3, [](void*, int, const FIErrorList*) {}));
            default:
                return Rest();
        }
    }

 private:
    std::string Rest() {
        FIErrorList errors;
        FIValue out;
        solver_->Pause();
        solver_->Resume();
        solver_->Stop();
        solver_->CheckSolve(errors);
        solver_->Options(errors);
        solver_->SolveOnceNow(errors);
        solver_->SetAttribute(FIValue("autosolve"), FIValue::OfInt(1), out);
        const auto source = Ref<FIAttributeSource>::Adopt(solver_->GetAttributeSource());
        const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
        for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
            cursor->GetValue(out);
        }
        return "";
    }

    std::unique_ptr<FISolver> solver_;
};

}  // namespace

std::unique_ptr<Subject> MakeAttributeCursorSubject(Ref<FIAttributeCursorBase> cursor) {
    return std::make_unique<AttributeCursorSubject>(std::move(cursor));
}

std::unique_ptr<Subject> MakeChildCursorSubject(Ref<FICursorBase> cursor, const Access& access) {
    return std::make_unique<ChildCursorSubject>(std::move(cursor), access);
}

std::unique_ptr<Subject> MakeSolverSubject(std::unique_ptr<FISolver> solver) {
    return std::make_unique<SolverSubject>(std::move(solver));
}

}  // namespace fixtop::lifetimes
