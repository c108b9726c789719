#include "host/host_attributes.h"

namespace fixtop {

namespace {

bool IsNamed(const FIValue& name, const char* text) {
    return name.IsText() && std::strcmp(name.CStr(), text) == 0;
}

bool IsSwitchedOn(FIVarSet* vars, const FIValue& name) {
    FIValue value;
    return vars && vars->GetVar(name, value) && value.Kind() == FIValue::kInt && value.AsInt() == 1;
}

}  // namespace

void ReadPath(FIVarSet* vars, FIValue& out) {
    out.Clear();
    if (vars) vars->GetPath(out);
}

void ReadSkipSwitch(FIVarSet* vars, const FIValue& name, FIValue& out) {
    if (!vars || !vars->GetVar(name, out)) out.SetInt(0);
}

bool IsSkippingAttachments(FIVarSet* vars) {
    static const FIValue name(kSkipAttachments);
    return IsSwitchedOn(vars, name);
}

bool IsSkippingCorrelations(FIVarSet* vars) {
    static const FIValue name(kSkipCorrelations);
    return IsSwitchedOn(vars, name);
}

bool SetSkipSwitch(FIVarSet* vars, const FIValue& name, const FIValue& value) {
    if (!vars) return false;
    if (!IsNamed(name, kSkipCorrelations) && !IsNamed(name, kSkipAttachments)) return false;
    vars->SetVar(name, value);
    return true;
}

bool SetAttachmentsSwitch(bool& follow, const FIValue& name, const FIValue& value) {
    if (!IsNamed(name, kAttachments)) return false;
    follow = value.AsInt() != 0;
    return true;
}

}  // namespace fixtop
