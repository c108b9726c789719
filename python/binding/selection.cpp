// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/selection.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "case.h"
#include "node.h"
#include "storing.h"
#include "text.h"
#include "values.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

// A selection with the places into which it is read, which are kept from read to read.
class ReadSelection {
 public:
    explicit ReadSelection(client::Selection selection) : selection_(std::move(selection)) {}

    client::Selection& Items() { return selection_; }

    py::array_t<double> Numbers() {
        Read({Sized(values_), {}, {}, {}});
        py::array_t<double> numbers(static_cast<py::ssize_t>(values_.size()));
        double* at = numbers.mutable_data();
        for (const FIValue& value : values_) *at++ = NumberOr(value);
        return numbers;
    }
    py::list Values() {
        Read({Sized(values_), {}, Sized(statuses_), {}});
        ClearGone();
        return ListOf(values_);
    }
    // Values, units, statuses, and how old each value is.
    py::tuple Table() {
        freshness_.resize(selection_.Size());
        Read({Sized(values_), Sized(units_), Sized(statuses_), freshness_});
        ClearGone();
        py::list ages;
        for (const client::Freshness each : freshness_) ages.append(static_cast<int>(each));
        return py::make_tuple(ListOf(values_), ListOf(units_), ListOf(statuses_), ages);
    }
    std::vector<Text> Store(const py::sequence& values, const Text& unit) {
        if (PyUnicode_Check(values.ptr())) throw py::type_error("a list of values, not one text");
        if (values.size() != selection_.Size()) {
            throw py::value_error(std::to_string(values.size()) + " values for " +
                                  std::to_string(selection_.Size()) + " items");
        }
        // As they are typed: a text has to be a number where the node is one.
        std::vector<std::string> typed;
        for (const py::handle each : values) typed.push_back(TypedOf(each));
        const auto refused = selection_.Store(std::span<const std::string>(typed), unit);
        return {refused.begin(), refused.end()};
    }

 private:
    // Of an item without its node the status says why; value and unit would say it too.
    void ClearGone() {
        for (std::size_t i = 0; i < statuses_.size(); ++i) {
            if (!IsGone(statuses_[i].ToText())) continue;
            values_[i].Clear();
            if (i < units_.size()) units_[i].Clear();
        }
    }
    static bool IsGone(const std::string& status) {
        static constexpr std::string_view texts[] = {"Node deleted", "Node invalid",
                                                     "No element under this node"};
        return std::ranges::find(texts, status) != std::end(texts);
    }
    // A text stands where there is no number, and nothing where there is no value.
    static double NumberOr(const FIValue& value) {
        return value.IsNumber() ? value.AsDouble() : std::numeric_limits<double>::quiet_NaN();
    }
    static py::list ListOf(const std::vector<FIValue>& values) {
        py::list list(values.size());
        for (std::size_t i = 0; i < values.size(); ++i) list[i] = ObjectOf(values[i]);
        return list;
    }
    std::span<FIValue> Sized(std::vector<FIValue>& values) {
        values.resize(selection_.Size());
        return values;
    }
    void Read(const client::SelectedValues& into) { selection_.Read(into); }

    client::Selection selection_;
    std::vector<FIValue> values_, units_, statuses_;
    std::vector<client::Freshness> freshness_;
};

using PySelection = Owned<ReadSelection>;

py::list StatesOf(PySelection& self) {
    py::list states;
    for (const client::ItemState& state : self->Items().States()) {
        states.append(py::make_tuple(
            TextOf(state.path), static_cast<int>(state.kind),
            std::vector<Text>(state.candidates.begin(), state.candidates.end()), state.lacks_unit));
    }
    return states;
}

}  // namespace

void BindSelection(py::module_& module) {
    py::class_<PySelection>(module, "Selection",
                            "Chosen nodes in an order, each with the unit in which it is shown.")
        .def(py::init(
                 [](PyNode& root) { return PySelection(ReadSelection(client::Selection(*root))); }),
             py::arg("root"))
        .def_static(
            "load",
            [](const Text& file, PyCase& on) {
                return PySelection(ReadSelection(client::Selection::Load(file, *on)));
            },
            py::arg("file"), py::arg("case"))
        .def(
            "save", [](PySelection& self, const Text& file) { self->Items().Save(file); },
            py::arg("file"))
        .def("publish", [](PySelection& self) { return Text(self->Items().Publish()); })
        .def("__len__", [](PySelection& self) { return self->Items().Size(); })
        .def(
            "add",
            [](PySelection& self, PyNode& node, const Text& unit) {
                // The unit is the item's, not that of the node that was given.
                return self->Items().Add(client::Node(*node), unit);
            },
            py::arg("node"), py::arg("unit") = Text())
        .def(
            "remove",
            [](PySelection& self, const Text& path) { return self->Items().Remove(path); },
            py::arg("path"))
        .def(
            "node",
            [](PySelection& self, std::size_t item) {
                if (item >= self->Items().Size()) throw py::index_error("no such item");
                return NodeOrNone(self->Items().NodeOf(item));
            },
            py::arg("item"))
        .def_property_readonly("paths",
                               [](PySelection& self) { return TextsOf(self->Items().Paths()); })
        .def_property_readonly("units",
                               [](PySelection& self) { return TextsOf(self->Items().Units()); })
        .def_property_readonly("remarks",
                               [](PySelection& self) { return TextsOf(self->Items().Remarks()); })
        .def_property_readonly("states", &StatesOf)
        .def("numbers", [](PySelection& self) { return self->Numbers(); })
        .def("values", [](PySelection& self) { return self->Values(); })
        .def("table", [](PySelection& self) { return self->Table(); })
        .def(
            "store",
            [](PySelection& self, const py::sequence& values, const Text& unit) {
                return self->Store(values, unit);
            },
            py::arg("values"), py::arg("unit") = Text());
}

}  // namespace fixtop::python
