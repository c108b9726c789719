// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/reference.h"

#include "case.h"
#include "fixtop/client/watch.h"
#include "node.h"
#include "text.h"
#include "values.h"

namespace fixtop::python {

namespace py = pybind11;

// With the path that it had when it was made.
struct KeptNode {
    client::Reference reference;
    std::string first_path;
};
using PyReference = Owned<KeptNode>;
using PyWatch = Owned<client::Watch>;

namespace {

client::Reference ReferenceTo(const client::Node& node) {
    if (node.IsGone()) throw client::Gone("", node.Attribute("status").ToText());
    return client::Reference(node);
}

py::list ChangesOf(PyWatch& self) {
    py::list changes;
    for (const client::Change& change : self->Changes()) {
        changes.append(py::make_tuple(TextOf(change.path), ObjectOf(change.before),
                                      ObjectOf(change.now), TextOf(change.unit)));
    }
    return changes;
}

}  // namespace

void BindReference(py::module_& module) {
    py::class_<PyReference>(
        module, "Reference",
        "A durable handle on a node, which follows its object through changes of the case.")
        .def(py::init([](PyNode& node) {
                 return PyReference({ReferenceTo(*node), node->Path()});
             }),
             py::arg("node"))
        .def_property_readonly("is_live",
                               [](PyReference& self) { return self->reference.IsLive(); })
        .def_property_readonly("why_gone",
                               [](PyReference& self) { return Text(self->reference.WhyGone()); })
        .def_property_readonly("path",
                               [](PyReference& self) { return Text(self->reference.Path()); })
        .def_property_readonly("first_path",
                               [](PyReference& self) { return Text(self->first_path); })
        .def("get", [](PyReference& self) { return PyNode(self->reference.Get()); })
        .def_property_readonly("value", [](PyReference& self) {
            return ObjectOf(self->reference.Attribute("value"));
        });
    py::class_<PyWatch>(module, "Watch")
        .def(py::init([] {
            Owner::Claim();
            return PyWatch(client::Watch());
        }))
        .def(
            "add", [](PyWatch& self, PyNode& node) { self->Add(*node); }, py::arg("node"))
        .def("changes", &ChangesOf);
}

}  // namespace fixtop::python
