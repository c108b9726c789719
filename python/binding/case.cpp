// SPDX-License-Identifier: Apache-2.0
#include "case.h"

#include <pybind11/stl.h>

#include "node.h"
#include "text.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

// Its host calls nothing of Python while it loads or saves, so other threads may go on.
PyCase Open(const Text& file) {
    Owner::Claim();
    auto opened = [&] {
        const py::gil_scoped_release others_go_on;
        return client::Case::Open(file);
    }();
    return PyCase(std::move(opened));
}

void Save(PyCase& self, const Text& file) {
    client::Case& open_case = *self;
    const py::gil_scoped_release others_go_on;
    open_case.Save(file);
}

}  // namespace

void BindCase(py::module_& module) {
    py::class_<PyCase>(module, "Case", py::dynamic_attr(), "An open case.")
        .def(py::init(&Open), py::arg("file"))
        .def_property_readonly("raw", [](PyCase& self) { return PyNode(self->Top()); })
        .def_property_readonly("neutral", [](PyCase& self) { return PyNode(self->Neutral()); })
        .def_property_readonly("remarks", [](PyCase& self) { return TextsOf(self->Remarks()); })
        .def_property_readonly("unit_sets", [](PyCase& self) { return TextsOf(self->UnitSets()); })
        .def_property(
            "unit_set", [](PyCase& self) { return Text(self->UnitSet()); },
            [](PyCase& self, const Text& name) { self->UseUnitSet(name); })
        .def_property_readonly("has_old_results",
                               [](PyCase& self) { return self->HasOldResults(); })
        .def("save", &Save, py::arg("file"))
        .def("close", [](PyCase& self) { self->Close(); });
}

}  // namespace fixtop::python
