// SPDX-License-Identifier: Apache-2.0
#include "fixtop/entry.h"

#include "fixtop/cursor.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

namespace {

constexpr char kNotSupported[] = "Not Supported";

bool IsGone(const LivingNode* node) {
    return node && node->IsGone();
}

}  // namespace

void FIContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.Clear();
    *rest = path;
}

void FIEntry::SetAttribute(const FIValue&, const FIValue&, int, FIValue& out) {
    out.SetText(kNotSupported);
}
bool FIEntry::IsContainer() {
    return true;
}
bool FIEntry::Subscribe(void*, int, FICallback) {
    return false;
}
bool FIEntry::Unsubscribe(void*, int) {
    return false;
}

int FIEntry::Compare(FIEntry& other) {
    const auto* own = LivingOf(*this);
    const auto* others = LivingOf(other);
    if (IsGone(own) || IsGone(others)) {
        return own && others && own->StandsWith(*others) ? 0 : kNotComparable;
    }
    FIValue own_name;
    FIValue other_name;
    GetName(own_name);
    other.GetName(other_name);
    return own_name.Compare(other_name);
}

void FIEntry::SetUnit(const FIValue&, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetSpecUnit(const FIValue&, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetValue(const FIValue&, int, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetValueInUnit(const FIValue&, const FIValue&, int, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetSpecValue(const FIValue&, int, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetSpecValueInUnit(const FIValue&, const FIValue&, int, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetDisplayUnit(const FIValue&, const FIValue&, FIValue& out) {
    out.SetText(kNotSupported);
}
void FIEntry::SetDisplaySpecUnit(const FIValue&, const FIValue&, FIValue& out) {
    out.SetText(kNotSupported);
}

bool FIEntry::QueryService(int, void** out) {
    *out = nullptr;
    return false;
}
bool FIEntry::ReleaseService(void** out) {
    *out = nullptr;
    return false;
}

bool FIEntry::CanHold() {
    return true;
}
void FIEntry::BeginBatch() {}
void FIEntry::EndBatch(int) {}

int FIEntry::GetCaps(int, int) {
    return 0;
}
void FIEntry::DoAction(FIValue& out, int, int) {
    out = FIValue("Action is not valid");
}
void FIEntry::DoActionEx(FIValue& out, int, int, int, int) {
    out = FIValue("Action not supported");
}
void FIEntry::DoCommand(int, FIErrorRecord& error) {
    error = FIErrorRecord();
    error.code = 2;
    error.text.SetText("Action is not supported");
}

}  // namespace fixtop
