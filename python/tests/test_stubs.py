# SPDX-License-Identifier: Apache-2.0
"""The stubs say what the binding has, no less and no more."""

import ast

from conftest import ROOT
from fixtop import _core

STUBS = ast.parse((ROOT / "python" / "fixtop" / "_core.pyi").read_text(encoding="utf-8"))
# What each class of Python has, or of pybind11.
COMMON = set(dir(object)) | {
    "__module__",
    "__dict__",
    "_pybind11_conduit_v1_",
    "__bool__",
    "__hash__",
    "__slotnames__",
}


def names_in(body):
    names = set()
    for part in body:
        if isinstance(part, (ast.FunctionDef, ast.ClassDef)):
            names.add(part.name)
        elif isinstance(part, ast.AnnAssign):
            names.add(part.target.id)
    return names


def test_the_module_has_what_its_stub_says():
    told = names_in(STUBS.body)
    has = {name for name in dir(_core) if not name.startswith("__")}
    assert told == has


def test_each_class_has_what_its_stub_says():
    for part in STUBS.body:
        if isinstance(part, ast.ClassDef):
            told, has = names_in(part.body) - COMMON, set(dir(getattr(_core, part.name))) - COMMON
            assert told == has, part.name


def test_each_public_name_has_a_docstring():
    import fixtop

    for name in fixtop.__all__:
        assert getattr(fixtop, name).__doc__, name
