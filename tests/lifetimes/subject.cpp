#include "lifetimes/subject.h"

namespace lifetimes {

std::string Text(const FIValue& value) {
    return value.IsNull() ? "NULL" : "\"" + value.ToText() + "\"";
}

std::string Text(bool value) {
    return value ? "true" : "false";
}

FIValue NextNumber(const Access& access) {
    static int number = 0;
    number = number % 400 + 1;
    return FIValue::OfReal(access.is_fraction ? number / 1024.0 : 500 + number);
}

std::string Subject::Compared(Op op) {
    Subject* partner = op == Op::self ? this : op == Op::other ? other_ : fresh_;
    return partner ? std::to_string(CompareWith(*partner)) : "nobody";
}

}  // namespace lifetimes
