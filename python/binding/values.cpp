// SPDX-License-Identifier: Apache-2.0
#include "values.h"

#include <cmath>
#include <limits>
#include <string>

#include "text.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

FIValue OfFinite(double number) {
    if (std::isfinite(number)) return FIValue::OfReal(number);
    throw py::value_error("a node holds finite numbers; None takes its value away");
}

bool FitsInt(long long number) {
    return number >= std::numeric_limits<std::int32_t>::min() &&
           number <= std::numeric_limits<std::int32_t>::max();
}

// Of numpy too.
bool IsNumber(const py::handle& object) {
    return PyNumber_Check(object.ptr()) && !PySequence_Check(object.ptr());
}

FIValue OfInteger(const py::handle& object) {
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(object.ptr(), &overflow);
    if (overflow == 0 && FitsInt(number)) return FIValue::OfInt(static_cast<std::int32_t>(number));
    const double real = PyFloat_AsDouble(object.ptr());
    if (PyErr_Occurred()) throw py::error_already_set();
    return OfFinite(real);
}

}  // namespace

py::object ObjectOf(const FIValue& value) {
    switch (value.Kind()) {
        case FIValue::kNull:
            return py::none();
        case FIValue::kInt:
            return py::int_(value.AsInt());
        case FIValue::kReal:
            return py::float_(value.AsDouble());
        default:
            return TextOf(value.ToText());
    }
}

FIValue ValueOf(const py::handle& object) {
    if (object.is_none()) return FIValue();
    if (PyLong_Check(object.ptr())) return OfInteger(object);
    if (PyUnicode_Check(object.ptr())) {
        FIValue text;
        text.SetText(TextFrom(object));
        return text;
    }
    if (PySequence_Check(object.ptr()) && !PyBytes_Check(object.ptr())) {
        throw py::type_error("a list of values is stored within `with case.hold():`");
    }
    if (!IsNumber(object)) {
        throw py::type_error("a value is a number, a text or None, not " +
                             std::string(Py_TYPE(object.ptr())->tp_name));
    }
    const double number = PyFloat_AsDouble(object.ptr());
    if (PyErr_Occurred()) throw py::error_already_set();
    return OfFinite(number);
}

}  // namespace fixtop::python
