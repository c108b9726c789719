// SPDX-License-Identifier: Apache-2.0
#include "dispatch/script_value.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <utility>

#include "dispatch/script_error.h"
#include "dispatch/text.h"

namespace fixtop::hovex {

namespace {

constexpr std::array<VARTYPE, 14> kNumbers = {VT_I1,  VT_UI1, VT_I2,   VT_UI2,    VT_I4,
                                              VT_UI4, VT_INT, VT_UINT, VT_I8,     VT_UI8,
                                              VT_R4,  VT_R8,  VT_CY,   VT_DECIMAL};

void ThrowIf(bool wrong) {
    if (wrong) throw CallError(DISP_E_TYPEMISMATCH);
}

// Headers of the system differ in whether what is read only is constant.
VARIANT* AsSystemWants(const VARIANT& read) {
    return const_cast<VARIANT*>(&read);
}

VARIANT Plain(VARTYPE type) {
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return value;
}

}  // namespace

ScriptValue& ScriptValue::operator=(ScriptValue&& other) noexcept {
    if (this == &other) return *this;
    VariantClear(&held_);
    held_ = other.Release();
    return *this;
}

VARIANT ScriptValue::Copy() const {
    VARIANT copy = Plain(VT_EMPTY);
    ThrowIf(FAILED(VariantCopy(&copy, AsSystemWants(held_))));
    return copy;
}

VARIANT ScriptValue::Release() noexcept {
    return std::exchange(held_, Plain(VT_EMPTY));
}

ScriptValue ScriptValue::Of(const FIValue& value) {
    if (value.Kind() == FIValue::kInt) return Of(value.AsInt());
    if (value.Kind() == FIValue::kReal) return Of(value.AsDouble());
    return value.IsText() ? Of(value.ToText()) : ScriptValue(Plain(VT_NULL));
}

ScriptValue ScriptValue::Of(const std::string& text) {
    const std::wstring wide = Wide(text);
    VARIANT made = Plain(VT_BSTR);
    made.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (!made.bstrVal) throw std::bad_alloc();
    return ScriptValue(made);
}

ScriptValue ScriptValue::Of(bool truth) {
    VARIANT made = Plain(VT_BOOL);
    made.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    return ScriptValue(made);
}

ScriptValue ScriptValue::Of(int number) {
    VARIANT made = Plain(VT_I4);
    made.lVal = number;
    return ScriptValue(made);
}

ScriptValue ScriptValue::Of(double number) {
    VARIANT made = Plain(VT_R8);
    made.dblVal = number;
    return ScriptValue(made);
}

ScriptValue ScriptValue::Object(IDispatch* object) {
    VARIANT made = Plain(VT_DISPATCH);
    made.pdispVal = object;
    return ScriptValue(made);
}

ScriptValue ScriptValue::Array(std::vector<ScriptValue> elements) {
    VARIANT made = Plain(VT_ARRAY | VT_VARIANT);
    made.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
    if (!made.parray) throw std::bad_alloc();
    auto* const places = static_cast<VARIANT*>(made.parray->pvData);
    for (std::size_t i = 0; i < elements.size(); ++i) places[i] = elements[i].Release();
    return ScriptValue(made);
}

ScriptValue ScriptValue::Array(const std::vector<std::string>& texts) {
    std::vector<ScriptValue> elements;
    elements.reserve(texts.size());
    for (const std::string& text : texts) elements.push_back(Of(text));
    return Array(std::move(elements));
}

ScriptValue PlainCopy(const VARIANT& given) {
    VARIANT copy = Plain(VT_EMPTY);
    const HRESULT result = VariantCopyInd(&copy, AsSystemWants(given));
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    ThrowIf(FAILED(result));
    // A reference may lead to one more.
    if (copy.vt & VT_BYREF) {
        VARIANT inner = Plain(VT_EMPTY);
        ThrowIf(FAILED(VariantCopyInd(&inner, &copy)));
        copy = inner;
    }
    return ScriptValue(copy);
}

bool IsNothing(const VARIANT& plain) {
    return plain.vt == VT_EMPTY || plain.vt == VT_NULL;
}

bool IsLeftOut(const VARIANT& plain) {
    return plain.vt == VT_ERROR && plain.scode == DISP_E_PARAMNOTFOUND;
}

bool IsText(const VARIANT& plain) {
    return plain.vt == VT_BSTR;
}

std::string TextOf(const VARIANT& plain) {
    ThrowIf(!IsText(plain));
    std::string text = Utf8({plain.bstrVal ? plain.bstrVal : L"", SysStringLen(plain.bstrVal)});
    // What is behind a NUL would be lost.
    ThrowIf(text.find('\0') != text.npos);
    return text;
}

double NumberOf(const VARIANT& plain) {
    ThrowIf(std::find(kNumbers.begin(), kNumbers.end(), plain.vt) == kNumbers.end());
    VARIANT number = Plain(VT_EMPTY);
    ThrowIf(FAILED(VariantChangeType(&number, AsSystemWants(plain), 0, VT_R8)));
    return number.dblVal;
}

int IntegerOf(const VARIANT& plain) {
    const double number = NumberOf(plain);
    ThrowIf(number != std::floor(number) || std::abs(number) > 1e9);
    return static_cast<int>(number);
}

bool TruthOf(const VARIANT& plain) {
    return plain.vt == VT_BOOL ? plain.boolVal != VARIANT_FALSE : NumberOf(plain) != 0;
}

std::vector<ScriptValue> ElementsOf(const VARIANT& plain) {
    ThrowIf(!(plain.vt & VT_ARRAY) || !plain.parray || SafeArrayGetDim(plain.parray) != 1);
    const VARTYPE type = plain.vt & VT_TYPEMASK;
    ThrowIf(type != VT_VARIANT && SafeArrayGetElemsize(plain.parray) > sizeof(LONGLONG));
    LONG first = 0, last = -1;
    SafeArrayGetLBound(plain.parray, 1, &first);
    SafeArrayGetUBound(plain.parray, 1, &last);
    std::vector<ScriptValue> elements;
    for (LONG i = first; i <= last; ++i) {
        VARIANT element = Plain(VT_EMPTY);
        if (type != VT_VARIANT) element.vt = type;
        void* const place = type == VT_VARIANT ? static_cast<void*>(&element) : &element.llVal;
        ThrowIf(FAILED(SafeArrayGetElement(plain.parray, &i, place)));
        elements.push_back(PlainCopy(element));
        VariantClear(&element);
    }
    return elements;
}

FIValue ValueOf(const VARIANT& plain) {
    if (IsNothing(plain)) return {};
    if (IsText(plain)) return FIValue(TextOf(plain).c_str());
    if (plain.vt == VT_BOOL) return FIValue::OfInt(plain.boolVal ? 1 : 0);
    return FIValue::OfReal(NumberOf(plain));
}

}  // namespace fixtop::hovex
