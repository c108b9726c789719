// SPDX-License-Identifier: Apache-2.0
#include "dispatch/script_error.h"

#include "dispatch/text.h"
#include "fixtop/client/error.h"

namespace fixtop::hovex {

namespace {

constexpr wchar_t kSource[] = L"Fixtop";

HRESULT Tell(EXCEPINFO* told, HRESULT code, const std::string& text) {
    if (!told) return DISP_E_EXCEPTION;
    *told = {};
    told->scode = code;
    told->bstrSource = SysAllocString(kSource);
    const std::wstring wide = Wide(text);
    told->bstrDescription = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT AnswerToException(EXCEPINFO* told) try {
    try {
        throw;
    } catch (const CallError& error) {
        return error.Code();
    } catch (const client::NotFound& error) {
        return Tell(told, kCodeOfNotFound, error.what());
    } catch (const client::Gone& error) {
        return Tell(told, kCodeOfGone, error.what());
    } catch (const client::Refused& error) {
        return Tell(told, kCodeOfRefused, error.what());
    } catch (const client::PathError& error) {
        return Tell(told, kCodeOfPath, error.Path() + ": " + error.what());
    } catch (const client::CaseError& error) {
        return Tell(told, kCodeOfCase, error.what());
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        return Tell(told, kCodeOfScript, error.what());
    }
} catch (const std::exception&) {
    return E_OUTOFMEMORY;
}

}  // namespace fixtop::hovex
