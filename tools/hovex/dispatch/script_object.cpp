// SPDX-License-Identifier: Apache-2.0
#include "dispatch/script_object.h"

#include "dispatch/own_names.h"
#include "dispatch/text.h"
#include "process_life.h"

namespace fixtop::hovex {

namespace {

// By this id an object tells that it is one of ours.
constexpr GUID kOursId = {
    0xda0905d5, 0xbbeb, 0x490a, {0xb6, 0xfa, 0xa3, 0xd9, 0x9a, 0x9b, 0xb2, 0x60}};

bool IsStore(WORD flags) {
    return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

const MemberRow* RowOf(std::span<const MemberRow> rows, const std::string& name) {
    for (const MemberRow& row : rows) {
        if (SameName(row.name, name)) return &row;
    }
    return nullptr;
}

// The row of an id and a kind. Throws when there is none, or the call has not the right count.
const MemberRow& RowFor(std::span<const MemberRow> rows, DISPID id, MemberRow::Kind kind,
                        int count) {
    for (const MemberRow& row : rows) {
        if (row.id != id || row.kind != kind) continue;
        if (count < row.least || count > row.most) throw CallError(DISP_E_BADPARAMCOUNT);
        return row;
    }
    throw CallError(DISP_E_MEMBERNOTFOUND);
}

}  // namespace

ScriptObject::ScriptObject() {
    ProcessLife::Begin();
}

ScriptObject::~ScriptObject() {
    ProcessLife::End();
}

HRESULT ScriptObject::QueryInterface(REFIID id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    const bool is_known = id == IID_IUnknown || id == IID_IDispatch || id == kOursId;
    if (!is_known) return E_NOINTERFACE;
    AddRef();
    *out = static_cast<IDispatch*>(this);
    return S_OK;
}

ULONG ScriptObject::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&count_));
}

ULONG ScriptObject::Release() {
    const LONG left = InterlockedDecrement(&count_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT, LCID, ITypeInfo** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    return DISP_E_BADINDEX;
}

// Names behind the first are those of arguments, which have none.
HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) try {
    if (!names || !ids || count == 0) return E_POINTER;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    const std::string name = Utf8(names[0]);
    if (const MemberRow* row = RowOf(Rows(), name)) {
        ids[0] = row->id;
    } else if (const auto own = OwnName(name)) {
        ids[0] = IdOfOwnName(*own);
    }
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
} catch (const std::exception&) {
    return DISP_E_UNKNOWNNAME;
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                             VARIANT* result, EXCEPINFO* told, UINT*) {
    if (result) VariantInit(result);
    if (!given) return E_POINTER;
    // A member may end the reference by which it was called.
    AddRef();
    HRESULT answer = S_OK;
    try {
        const MemberRow::Kind kind = IsStore(flags) ? MemberRow::kStore : MemberRow::kRead;
        ScriptValue value = Run(id, kind, Call(*given));
        if (result) *result = value.Release();
    } catch (const std::exception&) {
        answer = AnswerToException(told);
    }
    Release();
    return answer;
}

ScriptValue ScriptObject::Run(DISPID id, MemberRow::Kind kind, const Call& call) {
    CheckAlive();
    if (const std::string* name = OwnNameOf(id)) return RunOwn(*name, kind, call);
    return RowFor(Rows(), id, kind, call.Count()).run(*this, call);
}

ScriptValue ScriptObject::RunOwn(const std::string&, MemberRow::Kind, const Call&) {
    throw CallError(DISP_E_MEMBERNOTFOUND);
}

ScriptObject* ScriptObject::Behind(const VARIANT& argument) {
    if ((argument.vt != VT_DISPATCH && argument.vt != VT_UNKNOWN) || !argument.punkVal) {
        return nullptr;
    }
    void* found = nullptr;
    if (FAILED(argument.punkVal->QueryInterface(kOursId, &found))) return nullptr;
    // The argument holds it.
    auto* const object = static_cast<ScriptObject*>(static_cast<IDispatch*>(found));
    object->Release();
    return object;
}

}  // namespace fixtop::hovex
