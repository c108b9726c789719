// SPDX-License-Identifier: Apache-2.0
// FIReference: the operations that pass to the private iterator, guarded or as they are.

#include "framework/reference/reference.h"

namespace fixtop {

// Where nobody tells of changes, the position can't be trusted after the call.
template <class Operation>
const char* FIReference::Guard(Operation operation) {
    PrefetchNode();
    const Stay stay(*this);
    if (state_ != kLive || IsBehind()) CatchUp();
    if (state_ == kDeleted) return kNodeDeletedText;
    if (state_ != kLive && !Rebind()) return kNodeInvalidText;
    operation(*iterator_);
    if (!on_delete_ && !on_ancestor_) MarkStale();
    return nullptr;
}

template <class Operation>
const char* FIReference::GuardRead(Operation operation) {
    if (!MayReadUnbound()) return Guard(operation);
    const Stay stay(*this);
    was_read_ = true;
    operation(*iterator_);
    return nullptr;
}

template <class Operation>
void FIReference::GuardText(FIValue& out, Operation operation) {
    if (const char* failure = Guard(operation)) out.SetText(failure);
}

template <class Operation>
void FIReference::GuardNull(FIValue& out, Operation operation) {
    if (Guard(operation)) out.Clear();
}

template <class Operation>
bool FIReference::GuardBool(Operation operation) {
    bool result = false;
    Guard([&](FIIterator& it) { result = operation(it); });
    return result;
}

Ref<FIReference> FIReference::UnboundCopy() {
    Ref<FIIterator> copy;
    const auto make_copy = [&](FIIterator& it) { copy = Ref<FIIterator>::Adopt(it.Copy()); };
    if (MayMoveUnbound()) {
        make_copy(*iterator_);
    } else {
        Guard(make_copy);
    }
    return copy ? Unbound(std::move(copy)) : Ref<FIReference>();
}

FIIteratorBase* FIReference::Copy() {
    return iterator_->Copy();
}
int FIReference::Depth() {
    return iterator_->Depth();
}
void FIReference::GetName(FIValue& out) {
    iterator_->GetName(out);
}
void FIReference::NameText(char* buffer, int size) {
    iterator_->NameText(buffer, size);
}
int FIReference::NameLength() {
    return iterator_->NameLength();
}
void FIReference::GetPath(FIValue& out) {
    iterator_->GetPath(out);
}
void FIReference::PathText(char* buffer, int size) {
    iterator_->PathText(buffer, size);
}
int FIReference::PathLength() {
    return iterator_->PathLength();
}
void FIReference::KeyText(char* buffer, int size) {
    iterator_->KeyText(buffer, size);
}
int FIReference::KeyLength() {
    return iterator_->KeyLength();
}
void FIReference::DumpVars(FIValue& out) {
    iterator_->DumpVars(out);
}
FIVarSet* FIReference::GetVarSet() {
    return iterator_->GetVarSet();
}

void FIReference::GetAttribute(const FIValue& name, FIValue& out) {
    const char* failure = GuardRead([&](FIIterator& it) { it.GetAttribute(name, out); });
    if (failure) out.SetText(failure);
}
void FIReference::GetAttributes(const FIValue* names, int count, FIValue* out) {
    const char* failure = GuardRead([&](FIIterator& it) { it.GetAttributes(names, count, out); });
    for (int i = 0; failure && i < count; ++i) out[i].SetText(failure);
}
void FIReference::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetAttribute(name, value, mode, out); });
}
void FIReference::SetValue(const FIValue& value, int mode, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetValue(value, mode, out); });
}
void FIReference::SetValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                 FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetValueInUnit(value, unit, mode, out); });
}
void FIReference::SetSpecValue(const FIValue& value, int mode, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetSpecValue(value, mode, out); });
}
void FIReference::SetSpecValueInUnit(const FIValue& value, const FIValue& unit, int mode,
                                     FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetSpecValueInUnit(value, unit, mode, out); });
}
void FIReference::SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetDisplayUnit(unit, quantity, out); });
}
void FIReference::SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetDisplaySpecUnit(unit, quantity, out); });
}
void FIReference::SetUnit(const FIValue& unit, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetUnit(unit, out); });
}
void FIReference::SetSpecUnit(const FIValue& unit, FIValue& out) {
    GuardText(out, [&](FIIterator& it) { it.SetSpecUnit(unit, out); });
}

bool FIReference::GetVarText(const char* name, FIValue& out) {
    out.Clear();
    return GuardBool([&](FIIterator& it) { return it.GetVarText(name, out); });
}
bool FIReference::GetVar(const FIValue& name, FIValue& out) {
    out.Clear();
    return GuardBool([&](FIIterator& it) { return it.GetVar(name, out); });
}
bool FIReference::RemoveVar(const FIValue& name) {
    return GuardBool([&](FIIterator& it) { return it.RemoveVar(name); });
}
bool FIReference::RemoveVarText(const char* name) {
    return GuardBool([&](FIIterator& it) { return it.RemoveVarText(name); });
}
void FIReference::SetVar(const FIValue& name, const FIValue& value) {
    Guard([&](FIIterator& it) { it.SetVar(name, value); });
}

void FIReference::DumpXml(FIValue& out, int levels) {
    GuardNull(out, [&](FIIterator& it) { it.DumpXml(out, levels); });
}
void FIReference::DumpXmlDefault(FIValue& out) {
    GuardNull(out, [&](FIIterator& it) { it.DumpXmlDefault(out); });
}
void FIReference::DumpNode(FIValue& out) {
    GuardNull(out, [&](FIIterator& it) { it.DumpNode(out); });
}
void FIReference::DumpNodeFlat(FIValue& out) {
    GuardNull(out, [&](FIIterator& it) { it.DumpNodeFlat(out); });
}
void FIReference::DumpNodeDeep(FIValue& out) {
    GuardNull(out, [&](FIIterator& it) { it.DumpNodeDeep(out); });
}

int FIReference::Compare(FIReferenceBase& other) {
    return iterator_->Compare(*other.GetIterator());
}
bool FIReference::Less(FIReferenceBase& other) {
    return iterator_->Less(*other.GetIterator());
}
bool FIReference::Greater(FIReferenceBase& other) {
    return iterator_->Greater(*other.GetIterator());
}
bool FIReference::Equal(FIReferenceBase& other) {
    return iterator_->Equal(*other.GetIterator());
}
bool FIReference::NotEqual(FIReferenceBase& other) {
    return iterator_->NotEqual(*other.GetIterator());
}

SavedStep* FIReference::MakeElement() {
    std::unique_ptr<SavedStep> element;
    Guard([&](FIIterator& it) { element = it.MakeElement(); });
    return element.release();
}

}  // namespace fixtop
