// SPDX-License-Identifier: Apache-2.0
#pragma once

// ScriptObject: what all objects have that scripts hold. The members of a class stand in a table of
// rows; an object may have members of its own beside them, by names that only it knows.
//
// Names are found whatever the case of their letters. Reads of properties and calls of methods are
// the same here, for scripts write them alike. Members throw; a script gets the text.
// Threads: the one of the apartment.

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>

#include <optional>
#include <span>
#include <string>

#include "dispatch/call.h"
#include "dispatch/script_error.h"
#include "dispatch/script_value.h"

namespace fixtop::hovex {

class ScriptObject;

struct MemberRow {
    enum Kind : unsigned char { kRead, kStore };
    const char* name;
    DISPID id;  // the same for a read and a store of one name; 0 for what the object stands for
    Kind kind;
    int least, most;  // arguments; a store has its value among them
    ScriptValue (*run)(ScriptObject& object, const Call& call);
};

// The function of a row: `Method` is a member function that takes the call.
template <auto Method>
struct RunOf;
template <class T, ScriptValue (T::*Method)(const Call&)>
struct RunOf<Method> {
    static ScriptValue Run(ScriptObject& object, const Call& call) {
        return (static_cast<T&>(object).*Method)(call);
    }
};
template <auto Method>
constexpr MemberRow Reads(const char* name, DISPID id, int least = 0, int most = 0) {
    return {name, id, MemberRow::kRead, least, most, &RunOf<Method>::Run};
}
template <auto Method>
constexpr MemberRow Stores(const char* name, DISPID id) {
    return {name, id, MemberRow::kStore, 1, 1, &RunOf<Method>::Run};
}

class ScriptObject : public IDispatch {
 public:
    ScriptObject();
    ScriptObject(const ScriptObject&) = delete;
    ScriptObject& operator=(const ScriptObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) final;
    ULONG STDMETHODCALLTYPE AddRef() final;
    ULONG STDMETHODCALLTYPE Release() final;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** out) final;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count,
                                            LCID locale, DISPID* ids) final;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* given, VARIANT* result, EXCEPINFO* told,
                                     UINT* wrong) final;

    // The object behind an argument, lent; null when it is none of this process.
    static ScriptObject* Behind(const VARIANT& argument);

 protected:
    virtual ~ScriptObject();

    virtual std::span<const MemberRow> Rows() const = 0;
    // Throws when no member can be run any more.
    virtual void CheckAlive() const {}
    // The name of a member of its own as the object has it; nothing when it has none of this name.
    virtual std::optional<std::string> OwnName(const std::string&) { return std::nullopt; }
    virtual ScriptValue RunOwn(const std::string& name, MemberRow::Kind kind, const Call& call);

 private:
    ScriptValue Run(DISPID id, MemberRow::Kind kind, const Call& call);

    LONG count_ = 1;
};

}  // namespace fixtop::hovex
