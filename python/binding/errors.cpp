// SPDX-License-Identifier: Apache-2.0
#include "errors.h"

#include <pybind11/stl.h>

#include <string_view>

#include "fixtop/client/error.h"
#include "node.h"
#include "owner.h"
#include "text.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

// As the library begins the text of a unit that a node does not take.
constexpr std::string_view kNoUnit = "no such unit";

template <class... Arguments>
void Raise(const char* name, const Arguments&... arguments) {
    const py::object kind = py::module_::import("fixtop.errors").attr(name);
    const py::object error = kind(arguments...);
    PyErr_SetObject(kind.ptr(), error.ptr());
}

// The likeliest class last: a node that is gone refuses everything.
const char* NameOf(const client::Refused& error) {
    if (dynamic_cast<const client::Gone*>(&error)) return "NodeGone";
    if (dynamic_cast<const RefusedUnit*>(&error)) return "UnitError";
    if (error.Text().compare(0, kNoUnit.size(), kNoUnit) == 0) return "UnitError";
    return dynamic_cast<const RefusedStore*>(&error) ? "StoreRefused" : "Refused";
}

void Translate(std::exception_ptr thrown) {
    try {
        if (thrown) std::rethrow_exception(thrown);
    } catch (const client::NotFound& error) {
        Raise("NoSuchNode", TextOf(error.Path()), TextOf(error.Found()), TextsOf(error.Near()));
    } catch (const client::NoMember& error) {
        Raise("NoSuchMember", TextOf(error.what()), TextOf(error.Member()), TextsOf(error.Near()));
    } catch (const client::Refused& error) {
        Raise(NameOf(error), TextOf(error.Path()), TextOf(error.Text()));
    } catch (const client::PathError& error) {
        Raise("PathError", TextOf(error.Path()), TextOf(error.what()));
    } catch (const client::CaseError& error) {
        Raise("CaseError", TextsOf(error.Problems()));
    } catch (const client::Error& error) {
        Raise("Error", TextOf(error.what()));
    } catch (const WrongThread& error) {
        Raise("WrongThread", TextOf(error.what()));
    }
}

}  // namespace

void RaiseThrown() {
    try {
        Translate(std::current_exception());
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
}

void TranslateErrors() {
    py::register_local_exception_translator(&Translate);
}

}  // namespace fixtop::python
