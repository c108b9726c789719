// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/subject.h"

namespace fixtop::lifetimes {

std::string Text(const FIValue& value) {
    return value.IsNull() ? "NULL" : "\"" + value.ToText() + "\"";
}

std::string Text(bool value) {
    return value ? "true" : "false";
}

FIValue NextNumber(const Access& access) {
    static int part = 0;
    part = part % 1000 + 1;
    return FIValue::OfReal(access.base + part / 1024.0);
}

std::string Subject::Compared(Op op) {
    Subject* partner = op == Op::self    ? this
                       : op == Op::twin  ? twin_
                       : op == Op::other ? other_
                                         : fresh_;
    return partner ? std::to_string(CompareWith(*partner)) : "nobody";
}

}  // namespace fixtop::lifetimes
