// SPDX-License-Identifier: Apache-2.0
// FIIterator: reads, writes and variables of the present node.

#include <string>
#include <string_view>

#include "diagnostics/memory_guard.h"
#include "framework/iterator/iterator.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/iterator/shown_scope.h"

namespace fixtop {

namespace {

// A path in a host's notation begins with it.
constexpr char kHostPathMark = '/';

// Where the groups ".#index" at the end of a key begin.
std::size_t EndOfName(std::string_view key) {
    while (true) {
        const std::size_t mark = key.find_last_not_of("0123456789");
        const bool is_group = mark != std::string_view::npos && mark > 0 && mark + 1 < key.size() &&
                              key[mark] == '#' && key[mark - 1] == '.';
        if (!is_group) return key.size();
        key = key.substr(0, mark - 1);
    }
}

}  // namespace

void FIIterator::GetName(FIValue& out) {
    entry_->GetName(out);
}

void FIIterator::GetAttribute(const FIValue& name, FIValue& out) {
    ShownScope(entry_, &var_set_)->GetAttribute(name, out);
}

void FIIterator::GetAttributes(const FIValue* names, int count, FIValue* out) {
    const ShownScope entry(entry_, &var_set_);
    for (int i = 0; i < count; ++i) entry->GetAttribute(names[i], out[i]);
}

FIAttributeSource* FIIterator::GetAttributeSource() {
    return ShownScope(entry_, &var_set_)->GetAttributeSource();
}

// The nearest node, from the present one up, that takes the host's hold.
Ref<FIEntry> FIIterator::FindHolder() {
    for (int level = Depth(); level >= 0; --level) {
        Ref<FIEntry> holder = Ref<FIEntry>::Share(EntryAt(level));
        if (holder->CanHold()) return holder;
    }
    return entry_;
}

void FIIterator::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    const Ref<FIEntry> holder = FindHolder();
    const std::uint64_t revision = life_ ? life_->Revision() : 0;
    try {
        ShownScope(entry_, &var_set_)->SetAttribute(name, value, mode, out);
    } catch (...) {
        // A hold that stayed would silence the stores that follow.
        memory::Contain([&] { holder->BeginBatch(); });
        throw;
    }
    holder->BeginBatch();
    // The solve that the end of the hold starts may take the node away too.
    const bool may_be_gone = !life_ || life_->MayHaveLost(revision);
    if (may_be_gone && out.IsNull() && IsGone()) out.SetText(kNodeDeletedText);
}

void FIIterator::SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) {
    ShownScope(entry_, &var_set_)->SetDisplayUnit(unit, quantity, out);
}
void FIIterator::SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) {
    ShownScope(entry_, &var_set_)->SetDisplaySpecUnit(unit, quantity, out);
}
void FIIterator::SetUnit(const FIValue& unit, FIValue& out) {
    Ref<FIEntry>(entry_)->SetUnit(unit, out);
}
void FIIterator::SetSpecUnit(const FIValue& unit, FIValue& out) {
    Ref<FIEntry>(entry_)->SetSpecUnit(unit, out);
}
void FIIterator::SetValue(const FIValue& value, int mode, FIValue& out) {
    ShownScope(entry_, &var_set_)->SetValue(value, mode, out);
}
void FIIterator::SetValueInUnit(const FIValue& value, const FIValue& unit, int mode, FIValue& out) {
    ShownScope(entry_, &var_set_)->SetValueInUnit(value, unit, mode, out);
}
void FIIterator::SetSpecValue(const FIValue& value, int mode, FIValue& out) {
    ShownScope(entry_, &var_set_)->SetSpecValue(value, mode, out);
}
void FIIterator::SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                    FIValue& out) {
    ShownScope(entry_, &var_set_)->SetSpecValueInUnit(value, unit, mode, out);
}

int FIIterator::GetCaps(int a, int b) {
    return Ref<FIEntry>(entry_)->GetCaps(a, b);
}
void FIIterator::DoAction(FIValue& out, int a, int b) {
    Ref<FIEntry>(entry_)->DoAction(out, a, b);
}
void FIIterator::DoActionEx(FIValue& out, int a, int b, int c, int d) {
    Ref<FIEntry>(entry_)->DoActionEx(out, a, b, c, d);
}
void FIIterator::DoCommand(int command, FIErrorRecord& error) {
    Ref<FIEntry>(entry_)->DoCommand(command, error);
}

FrameVars& FIIterator::PresentVars() {
    if (!vars_) vars_ = Ref<FrameVars>::Adopt(new FrameVars);
    return *vars_;
}

// They are found out on a copy that stands at the level: nothing that the iterator is about to do
// sees a step of it.
void FIIterator::SettleLate(int level) const {
    FrameVars* vars = VarsAt(level);
    const VarMap::Late late = vars ? vars->map.GetLate() : VarMap::Late();
    if (!late.variables) return;
    vars->map.SetLate({});
    try {
        const auto there = Ref<FIIterator>::Adopt(new Shielded<FIIterator>(*this));
        there->ReturnTo(level);
        late.variables->set(there.Get(), late.index);
        vars->map = there->PresentVars().map;
    } catch (...) {
        vars->map.SetLate(late);
        throw;
    }
}

void FIIterator::SetLateVars(const LateVariables& variables, int index) {
    const LateVariables* before = PresentVars().map.GetLate().variables;
    if (before && before != &variables) SettleLate(Depth());
    vars_->map.SetLate({&variables, index});
}

void FIIterator::SetVar(const FIValue& name, const FIValue& value) {
    if (vars_ && vars_->map.IsLate(name)) SettleLate(Depth());
    PresentVars().map.Set(name, value);
}
void FIIterator::SetVarText(const char* name, const char* value) {
    SetVar(FIValue(name), FIValue(value));
}
void FIIterator::SetVarText(const char* name, const FIValue& value) {
    SetVar(FIValue(name), value);
}

template <class Use>
bool FIIterator::AnyVars(Use use) const {
    int level = frames_.Size();
    if (vars_ && use(*vars_, level)) return true;
    if (frames_.IsFolded()) {
        FrameVars* vars = frames_.Chain();
        while (vars && !use(*vars, --level)) vars = vars->level.above.Get();
        return vars != nullptr;
    }
    for (int i = frames_.Size() - 1; i >= 0; --i) {
        if (frames_[i].vars && use(*frames_[i].vars, i)) return true;
    }
    return false;
}

const FIValue* FIIterator::FindVar(const FIValue& name) const {
    const FIValue* found = nullptr;
    AnyVars([&](const FrameVars& vars, int level) {
        if (vars.map.IsLate(name)) SettleLate(level);
        return (found = vars.map.Find(name)) != nullptr;
    });
    return found;
}

bool FIIterator::GetVar(const FIValue& name, FIValue& out) {
    const FIValue* found = FindVar(name);
    if (!found) {
        out.Clear();
        return false;
    }
    out = *found;
    return true;
}

bool FIIterator::GetVarText(const char* name, FIValue& out) {
    return GetVar(FIValue(name), out);
}

bool FIIterator::RemoveVar(const FIValue& name) {
    return AnyVars([&](FrameVars& vars, int level) {
        if (vars.map.IsLate(name)) SettleLate(level);
        return vars.map.Remove(name);
    });
}

bool FIIterator::RemoveVarText(const char* name) {
    return RemoveVar(FIValue(name));
}

// A key is a name, with ".#index" behind it for each array index that the notation gave, or else a
// path such as "*#4".
bool FIIterator::SeekKey(const FIValue& key) {
    const std::string text = key.ToText();
    const std::size_t end = EndOfName(text);
    FIValue path;
    path.AppendText(text.substr(0, end).c_str(), true, false);
    path.AppendText(text.c_str() + end, false, false);
    return SeekPath(path) || SeekPath(key);
}

// A context that leaves the name as it was has given a whole path, or else a level that the
// notation of a host leaves out; then the next one is asked about the same. A path of the host
// leads nowhere before all of it is used up, any other name to where the last context knew nothing
// more of it.
FIIterator* FIIterator::OpenAttribute(const FIValue& name) {
    Ref<FIIterator> opened = Ref<FIIterator>::Adopt(Copy());
    const std::string text = name.ToText();
    const char* rest = text.c_str();
    int levels = 0;
    do {
        const char* const begin = rest;
        const Ref<FIContext> context =
            Ref<FIContext>::Adopt(ShownScope(opened->entry_, &opened->var_set_)->GetContext());
        FIValue key;
        context->GetKeyValue(begin, key, &rest);
        const bool is_untouched = begin == text.c_str() && *begin != kHostPathMark;
        if (key.IsNull()) return levels > 0 && is_untouched ? opened.Detach() : nullptr;
        const int depth = opened->Depth();
        if (!opened->SeekKey(key)) return nullptr;
        levels = opened->Depth() - depth;
        if (rest == begin && levels == 0) return nullptr;
        if (rest == begin && levels > 1) break;
    } while (rest && *rest);
    return opened.Detach();
}

}  // namespace fixtop
