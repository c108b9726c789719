// SPDX-License-Identifier: Apache-2.0
#include "node.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <limits>

#include "errors.h"
#include "fixtop/client/reference.h"
#include "fixtop/client/search.h"
#include "fixtop/client/typed.h"
#include "storing.h"
#include "text.h"
#include "values.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
const FIValue kValue("value");

// The value as the node shows it, in one read. Throws Gone.
FIValue ValueShown(const client::Node& node) {
    FIValue value;
    node.Iterator().GetAttribute(kValue, value);
    if (value.IsText() && node.IsGone()) throw client::Gone("", value.ToText());
    return value;
}

// The node in an object of its class, as the interpreter sees to for attributes.
PyNode& NodeIn(PyObject* self) {
    auto* instance = reinterpret_cast<py::detail::instance*>(self);
    return *static_cast<PyNode*>(instance->get_value_and_holder().value_ptr());
}

// Null, with the error set, when `work` throws.
template <class Work>
PyObject* Guarded(const Work& work) {
    try {
        return work();
    } catch (py::error_already_set& raised) {
        raised.restore();
    } catch (py::builtin_exception& raised) {
        raised.set_error();
    } catch (...) {
        RaiseThrown();
    }
    return nullptr;
}

// The node; throws Gone when its object is no longer there, whatever is asked of it.
client::Node& There(PyNode& self) {
    if (self->IsGone()) throw client::Gone("", self->Attribute("status").ToText());
    return *self;
}

// By which its parent finds it: what it says of itself may show characters as entities.
std::string NameOf(const client::Node& node) {
    std::string name = node.Name();
    const auto parent = name.find('&') == std::string::npos ? std::nullopt : node.Parent();
    if (!parent) return name;
    parent->ForEachChild([&](const client::Child& child) {
        if (!(child.node == node)) return true;
        name = child.name;
        return false;
    });
    return name;
}

double NumberIn(const client::Node& node, const FIValue& value) {
    if (value.IsNumber()) return value.AsDouble();
    if (value.IsNull()) return kNothing;
    throw client::Refused(node.Path(), "not a number: " + value.ToText());
}

double NumberOf(PyNode& self, const Text& unit) {
    if (unit.bytes.empty()) return NumberIn(*self, ValueShown(*self));
    const client::Node shown = ShownIn(*self, unit);
    return NumberIn(shown, ValueShown(shown));
}

client::Reading ReadingOf(PyNode& self, const Text& unit, const Text& attribute) {
    if (unit.bytes.empty()) return self->Read("", attribute);
    try {
        return self->Read(unit, attribute);
    } catch (const client::Gone&) {
        throw;
    } catch (const client::Refused& refused) {
        throw RefusedUnit(refused.Path(), refused.Text());
    }
}

void Gather(const client::Node& node, const std::string& unit, std::vector<double>& numbers) {
    node.ForEachChild([&](const client::Child& child) {
        if (child.node.IsVariable()) {
            const client::Node shown = ShownIn(child.node, unit);
            numbers.push_back(NumberIn(shown, ValueShown(shown)));
        } else {
            Gather(child.node, unit, numbers);
        }
        return true;
    });
}

py::array_t<double> ArrayOf(const std::vector<double>& numbers) {
    return py::array_t<double>(static_cast<py::ssize_t>(numbers.size()), numbers.data());
}

py::list FoundBy(PyNode& self, const Text& expression) {
    py::list nodes;
    client::Search(expression).ForEach(There(self), [&](const client::Place& place) {
        nodes.append(PyNode(place.node));
        return true;
    });
    return nodes;
}

py::list FoundBy(PyNode& self, const client::Pattern& pattern) {
    py::list nodes;
    pattern.ForEachBelow(There(self), [&](const client::Place& place) {
        nodes.append(PyNode(place.node));
        return true;
    });
    return nodes;
}

py::object FirstOf(PyNode& self, const client::Pattern& pattern) {
    auto place = pattern.First(There(self));
    return place ? py::cast(PyNode(std::move(place->node))) : py::none();
}

bool Leads(PyNode& self, const Text& path) {
    return There(self).Find(path).has_value();
}

PyNode ChildAt(PyNode& self, long index) {
    auto nodes = There(self).Children();
    const long count = static_cast<long>(nodes.size());
    const long at = index < 0 ? index + count : index;
    if (at < 0 || at >= count) {
        throw py::index_error(self->Path() + " has " + std::to_string(count) + " children, no " +
                              std::to_string(index));
    }
    return PyNode(std::move(nodes[at]));
}

py::array_t<double> Slice(PyNode& self, const py::slice& slice) {
    return ArrayOf(NumbersOf(There(self), "")).attr("__getitem__")(slice);
}

py::list ChildrenOf(PyNode& self) {
    return NodesOf(There(self).Children());
}

// Each with its name and with the step that leads to it and to no other.
py::list StepsOf(PyNode& self) {
    py::list steps;
    There(self).ForEachChild([&](const client::Child& child) {
        steps.append(py::make_tuple(TextOf(child.step), PyNode(child.node)));
        return true;
    });
    return steps;
}

py::dict AttributesOf(PyNode& self) {
    py::dict attributes;
    for (const auto& [name, value] : There(self).Attributes())
        attributes[TextOf(name)] = ObjectOf(value);
    return attributes;
}

// The class of an object of the neutral view; null for any other node.
const client::NeutralClass* ClassOf(const client::Node& node) {
    const auto object = client::TypedObject::Of(node);
    return object ? &object->Class() : nullptr;
}

py::list MembersOf(PyNode& self) {
    py::list members;
    const client::NeutralClass* its = ClassOf(There(self));
    if (!its) return members;
    for (const client::NeutralMember& member : its->AllMembers()) {
        members.append(py::make_tuple(TextOf(member.name), static_cast<int>(member.kind)));
    }
    return members;
}

py::object MemberOf(PyNode& self, const Text& name) {
    const client::TypedObject object(There(self));
    const client::TypedMember member = object.Member(name);
    return std::visit(
        [](const auto& each) -> py::object {
            if constexpr (std::is_same_v<std::decay_t<decltype(each)>, client::TypedArray>) {
                py::list list;
                for (const auto& element : each) list.append(PyNode(element.ToNode()));
                return list;
            } else {
                return py::cast(PyNode(each.ToNode()));
            }
        },
        member);
}

py::object SideOf(PyNode& self, bool specified) {
    using Side = client::Node::Side;
    return NodeOrNone(There(self).Raw(specified ? Side::kSpecified : Side::kCalculated));
}

void BindReading(py::module_& module) {
    using client::Reading;
    py::class_<Reading>(module, "Reading", "A value as it is shown.")
        .def_property_readonly("value", [](const Reading& self) { return ObjectOf(self.value); })
        .def_property_readonly("unit", [](const Reading& self) { return TextOf(self.unit); })
        .def_property_readonly("status", [](const Reading& self) { return TextOf(self.status); })
        .def_readonly("stale", &Reading::stale);
}

void BindPattern(py::module_& module) {
    // It stands on no case, and may be kept from case to case.
    py::class_<client::Pattern>(
        module, "Pattern",
        "A path expression that is parsed once and walked many times, on any case.")
        .def(py::init([](const Text& expression) {
                 Owner::Claim();
                 return client::Pattern(expression);
             }),
             py::arg("expression"))
        .def_property_readonly("text",
                               [](const client::Pattern& self) { return TextOf(self.Text()); })
        .def("__repr__",
             [](const client::Pattern& self) { return TextOf("<Pattern " + self.Text() + ">"); });
}

void BindTree(py::class_<PyNode>& node) {
    node.def_property_readonly("parent",
                               [](PyNode& self) { return NodeOrNone(There(self).Parent()); })
        .def("children", &ChildrenOf)
        .def("steps", &StepsOf)
        .def("__iter__", [](PyNode& self) { return py::iter(ChildrenOf(self)); })
        .def("at", [](PyNode& self, const Text& path) { return PyNode(There(self).At(path)); })
        .def("__getitem__",
             [](PyNode& self, const Text& path) { return PyNode(There(self).At(path)); })
        .def("__getitem__", &ChildAt)
        .def("__getitem__", &Slice)
        .def("__contains__", &Leads)
        .def("find", py::overload_cast<PyNode&, const client::Pattern&>(&FoundBy),
             py::arg("pattern"))
        .def("find", py::overload_cast<PyNode&, const Text&>(&FoundBy), py::arg("pattern"))
        .def("first", &FirstOf, py::arg("pattern"))
        .def("raw", &SideOf, py::arg("specified") = false)
        .def("neutral", [](PyNode& self) { return NodeOrNone(There(self).Neutral()); })
        .def_property_readonly("class_name",
                               [](PyNode& self) {
                                   const auto* its = ClassOf(There(self));
                                   return its ? TextOf(its->name) : py::str("");
                               })
        .def("is_a",
             [](PyNode& self, const Text& name) {
                 const auto* its = ClassOf(There(self));
                 return its && its->IsA(name.bytes);
             })
        .def("members", &MembersOf)
        .def("member", &MemberOf, py::arg("name"));
}

// ---- The value, which is read in long loops: as an attribute of the interpreter's own kind, which
// calls no more than this.

PyObject* GetValue(PyObject* self, void*) {
    return Guarded([&] { return ObjectOf(ValueShown(*NodeIn(self))).release().ptr(); });
}

int SetValue(PyObject* self, PyObject* value, void*) {
    const auto stored = [&] {
        if (!value) throw py::type_error("a value can't be deleted; None takes it away");
        Store(*NodeIn(self), value, "");
        return self;
    };
    return Guarded(stored) ? 0 : -1;
}

void BindValue(py::class_<PyNode>& node) {
    static PyGetSetDef definition = {"value", &GetValue, &SetValue,
                                     "In the unit that the node shows; None for none.", nullptr};
    auto* type = reinterpret_cast<PyTypeObject*>(node.ptr());
    node.attr("value") = py::reinterpret_steal<py::object>(PyDescr_NewGetSet(type, &definition));
}

void BindValues(py::class_<PyNode>& node) {
    BindValue(node);
    node.def("number", &NumberOf, py::arg("unit") = Text())
        .def("to", &NumberOf, py::arg("unit"))
        .def(
            "numbers",
            [](PyNode& self, const Text& unit) { return ArrayOf(NumbersOf(There(self), unit)); },
            py::arg("unit") = Text())
        .def("read", &ReadingOf, py::arg("unit") = Text(), py::arg("attribute") = Text("value"))
        .def(
            "store",
            [](PyNode& self, const py::object& value, const Text& unit) {
                Store(*self, value, unit);
            },
            py::arg("value"), py::arg("unit") = Text())
        .def(
            "show_in",
            [](PyNode& self, const Text& unit) { return TextOf(There(self).ShowIn(unit)); },
            py::arg("unit"))
        .def_property_readonly("unit",
                               [](PyNode& self) { return TextOf(There(self).UnitOf("value")); })
        .def_property_readonly(
            "status", [](PyNode& self) { return TextOf(There(self).Attribute("status").ToText()); })
        .def_property_readonly("is_stale", [](PyNode& self) { return There(self).IsStale(); })
        .def(
            "attribute",
            [](PyNode& self, const Text& name) { return ObjectOf(There(self).Attribute(name)); },
            py::arg("name"))
        .def("attributes", &AttributesOf)
        .def(
            "set_attribute",
            [](PyNode& self, const Text& name, const py::object& value) {
                There(self).SetAttribute(name, ValueOf(value));
            },
            py::arg("name"), py::arg("value"));
}

}  // namespace

py::object NodeOrNone(std::optional<client::Node> node) {
    return node ? py::cast(PyNode(std::move(*node))) : py::none();
}

py::list NodesOf(std::vector<client::Node> nodes) {
    py::list list;
    for (client::Node& node : nodes) list.append(PyNode(std::move(node)));
    return list;
}

client::Node ShownIn(const client::Node& node, const std::string& unit) {
    client::Node shown = node;
    if (unit.empty()) return shown;
    try {
        shown.ShowIn(unit);
    } catch (const client::Gone&) {
        throw;
    } catch (const client::Refused& refused) {
        throw RefusedUnit(refused.Path(), refused.Text());
    }
    return shown;
}

std::vector<double> NumbersOf(const client::Node& array, const std::string& unit) {
    std::vector<double> numbers;
    Gather(array, unit, numbers);
    return numbers;
}

void BindNode(py::module_& module) {
    BindReading(module);
    BindPattern(module);
    py::class_<PyNode> node(
        module, "Node", py::dynamic_attr(),
        "A place in the tree of a case. It raises NodeGone when its object is no longer there.");
    node.def_property_readonly("name", [](PyNode& self) { return TextOf(NameOf(There(self))); })
        .def_property_readonly("key", [](PyNode& self) { return TextOf(There(self).Key()); })
        .def_property_readonly("path", [](PyNode& self) { return TextOf(There(self).Path()); })
        .def_property_readonly("type", [](PyNode& self) { return TextOf(There(self).Type()); })
        .def_property_readonly("is_variable", [](PyNode& self) { return There(self).IsVariable(); })
        .def_property_readonly("is_array", [](PyNode& self) { return There(self).IsArray(); })
        .def_property_readonly("is_gone", [](PyNode& self) { return self->IsGone(); })
        .def(
            "__eq__", [](PyNode& self, PyNode& other) { return *self == *other; },
            py::is_operator())
        .def(
            "__ne__", [](PyNode& self, PyNode& other) { return !(*self == *other); },
            py::is_operator());
    node.attr("__hash__") = py::none();
    // One that is made past the library would hold none.
    node.attr("__new__") =
        py::staticmethod(py::cpp_function([](const py::args&, const py::kwargs&) {
            throw py::type_error("nodes come from a case: case.at(path), case.find(pattern)");
        }));
    BindTree(node);
    BindValues(node);
}

}  // namespace fixtop::python
