// SPDX-License-Identifier: Apache-2.0
#include "host/host_attributes.h"

namespace fixtop {

namespace {

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

bool StoreSkipSwitch(FIVarSet* vars, const FIValue& name, const FIValue& value, FIValue& out) {
    out.Clear();
    if (!vars) return false;
    vars->SetVar(name, value);
    return true;
}

}  // namespace fixtop
