// SPDX-License-Identifier: Apache-2.0
#include "storing.h"

#include <stdexcept>
#include <string_view>

#include "node.h"
#include "text.h"
#include "values.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

client::Hold* open_hold = nullptr;

// Stands until the interpreter ends, and then with it.
py::object& AfterStore() {
    static auto* call = new py::object(py::none());
    return *call;
}

// Of Python and of numpy: it would be stored as 1 or 0.
bool IsBool(const py::handle& value) {
    const std::string_view type = Py_TYPE(value.ptr())->tp_name;
    return PyBool_Check(value.ptr()) || type == "numpy.bool_" || type == "numpy.bool";
}

void RefuseBool(const py::handle& value) {
    if (IsBool(value))
        throw py::type_error("a bool is no value of a node; give a number or a text");
}

void StoreNow(const client::Node& node, const py::handle& value, const std::string& unit) {
    if (client::Hold* hold = HeldStores::Open()) return hold->Store(node, TypedOf(value), unit);
    if (PyUnicode_Check(value.ptr())) return client::Node(node).Store(TextFrom(value), unit);
    RefuseBool(value);
    ShownIn(node, unit).Store(ValueOf(value));
}

// Of a solve that a store began: results are older than the store then, or none.
void WarnIfUnsolved(const client::Node& node) {
    const client::Solver solver(node.OpenCase());
    if (!solver.SolvesOnStore() || solver.IsComplete()) return;
    const std::string why = solver.Problem();
    const py::object kind = py::module_::import("fixtop.errors").attr("NotSolved");
    const std::string text =
        node.Path() + ": stored, and the case is not solved" + (why.empty() ? "" : ": " + why);
    if (PyErr_WarnEx(kind.ptr(), text.c_str(), 1) != 0) throw py::error_already_set();
}

}  // namespace

std::string TypedOf(const py::handle& value) {
    if (value.is_none()) return "";
    if (PyUnicode_Check(value.ptr())) return TextFrom(value);
    RefuseBool(value);
    if (!PySequence_Check(value.ptr())) {
        return TextFrom(py::repr(py::float_(ValueOf(value).AsDouble())));
    }
    std::string list;
    bool is_first = true;
    for (const py::handle each : value) {
        if (!is_first) list += ',';
        is_first = false;
        list += TypedOf(each);
    }
    return list;
}

void Store(const client::Node& node, const py::handle& value, const std::string& unit) {
    if (node.IsGone()) throw client::Gone("", node.Attribute("status").ToText());
    try {
        StoreNow(node, value, unit);
    } catch (const client::Gone&) {
        throw;
    } catch (const RefusedUnit&) {
        throw;
    } catch (const client::Refused& refused) {
        throw RefusedStore(refused.Path(), refused.Text());
    }
    if (HeldStores::Open()) return;
    WarnIfUnsolved(node);
    if (!AfterStore().is_none()) AfterStore()();
}

void SetAfterStore(py::object call) {
    AfterStore() = std::move(call);
}

HeldStores::HeldStores(const client::Solver& solver) : hold_(solver) {
    open_hold = &hold_;
}

HeldStores::~HeldStores() {
    if (open_hold == &hold_) open_hold = nullptr;
}

client::Released HeldStores::Release(const client::Solver::Progress& progress) {
    open_hold = nullptr;
    return hold_.Release(progress);
}

client::Hold* HeldStores::Open() {
    return open_hold;
}

}  // namespace fixtop::python
