// SPDX-License-Identifier: Apache-2.0
#include "automation/variant_value.h"

#include "automation/task_text.h"
#include "platform/real_array.h"

namespace fixtop {

Variant ToVariant(const FIValue& value) {
    Variant variant;
    if (value.Kind() == FIValue::kInt) {
        variant.type = Variant::kInt;
        variant.number = value.AsInt();
    } else if (value.Kind() == FIValue::kReal) {
        variant.type = Variant::kReal;
        variant.real = value.AsDouble();
    } else if (value.IsText()) {
        variant.text = ToTaskText(value).release();
        variant.type = Variant::kText;
    } else {
        variant.type = Variant::kNull;
    }
    return variant;
}

FIValue ToValue(const Variant& variant) {
    switch (variant.type) {
        case Variant::kInt:
            return FIValue::OfInt(variant.number);
        case Variant::kReal:
            return FIValue::OfReal(variant.real);
        case Variant::kText:
            return FIValue(variant.text);
        default:
            return {};
    }
}

void ClearVariant(Variant& variant) noexcept {
    if (variant.type == Variant::kText) FreeTaskMemory(variant.text);
    if (variant.type == Variant::kRealArray) FreeRealArray(variant.array);
    variant = Variant();
}

}  // namespace fixtop
