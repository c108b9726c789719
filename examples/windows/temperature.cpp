// SPDX-License-Identifier: Apache-2.0
// x86_64-w64-mingw32-g++ -std=c++20 -static temperature.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
// The component services follow the base header.
#include <ole2.h>

#include <cstdio>
#include <initializer_list>

// Calls a member with texts; what it answers is the caller's to clear.
VARIANT Call(IDispatch* object, const wchar_t* name, std::initializer_list<const wchar_t*> texts) {
    VARIANT answer, given[2] = {};
    VariantInit(&answer);
    UINT count = 0;
    for (auto text = texts.end(); text != texts.begin(); ++count) {
        given[count].vt = VT_BSTR;
        given[count].bstrVal = SysAllocString(*--text);
    }
    DISPPARAMS arguments = {given, nullptr, count, 0};
    auto* member = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &member, 1, 0, &id))) {
        object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &arguments, &answer,
                       nullptr, nullptr);
    }
    while (count > 0) VariantClear(&given[--count]);
    return answer;
}

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID id;
    void* made = nullptr;
    if (FAILED(CLSIDFromProgID(L"Fixtop.Case", &id)) ||
        FAILED(CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, &made))) {
        return 1;
    }
    auto* plant = static_cast<IDispatch*>(made);
    Call(plant, L"Open", {L"demo"});
    VARIANT node = Call(plant, L"Find", {L"appModel.FlowSheetObjects.Streams.Raw Gas.Temperature"});
    if (node.vt == VT_DISPATCH) {
        const VARIANT kelvin = Call(node.pdispVal, L"ValueIn", {L"K"});
        std::printf("%g K\n", kelvin.dblVal);
    }
    VariantClear(&node);
    plant->Release();
    CoUninitialize();
}
