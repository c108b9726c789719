// SPDX-License-Identifier: Apache-2.0
#pragma once

// Text: a std::string of the library as str of Python. One that is no UTF-8 keeps its bytes as lone
// surrogates, as names of files do in Python, so that each name finds its way back.

#include <pybind11/pybind11.h>

#include <string>
#include <utility>
#include <vector>

namespace fixtop::python {

struct Text {
    std::string bytes;

    Text() = default;
    Text(std::string text) : bytes(std::move(text)) {}
    operator const std::string&() const { return bytes; }
};

inline pybind11::str TextOf(const std::string& text) {
    PyObject* made =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (!made) throw pybind11::error_already_set();
    return pybind11::reinterpret_steal<pybind11::str>(made);
}

inline pybind11::list TextsOf(const std::vector<std::string>& texts) {
    pybind11::list list;
    for (const std::string& text : texts) list.append(TextOf(text));
    return list;
}

// Throws UnicodeEncodeError for what is no such text, and ValueError for one with a NUL, behind
// which the library would not look.
inline std::string TextFrom(const pybind11::handle& text) {
    const auto bytes = pybind11::reinterpret_steal<pybind11::bytes>(
        PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
    if (!bytes) throw pybind11::error_already_set();
    std::string taken = bytes;
    if (taken.find('\0') != std::string::npos) throw pybind11::value_error("a text holds no NUL");
    return taken;
}

}  // namespace fixtop::python

template <>
struct pybind11::detail::type_caster<fixtop::python::Text> {
    PYBIND11_TYPE_CASTER(fixtop::python::Text, const_name("str"));

    bool load(handle source, bool) {
        if (!source || !PyUnicode_Check(source.ptr())) return false;
        value.bytes = fixtop::python::TextFrom(source);
        return true;
    }
    static handle cast(const fixtop::python::Text& text, return_value_policy, handle) {
        return fixtop::python::TextOf(text.bytes).release();
    }
};
