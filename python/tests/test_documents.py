# SPDX-License-Identifier: Apache-2.0
"""The samples of the documents do what they show."""

import doctest

from conftest import ROOT


def test_the_page_on_python():
    page = ROOT / "docs" / "python.md"
    options = doctest.IGNORE_EXCEPTION_DETAIL | doctest.NORMALIZE_WHITESPACE
    failed, tried = doctest.testfile(str(page), module_relative=False, optionflags=options)
    assert tried > 25 and failed == 0
