# SPDX-License-Identifier: Apache-2.0
"""What the tests share: cases that are open for one test."""

import json
import os
import pathlib
import sys

import pytest

import fixtop

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "tests" / "tools"))

REAL = sorted((pathlib.Path(os.environ.get("FIXTOP_CASES", "")) / "real").glob("*.dwxmz"))


@pytest.fixture
def case():
    with fixtop.open(fixtop.demo()) as opened:
        yield opened


@pytest.fixture
def feed(case):
    return case.stream("Raw Gas")


@pytest.fixture
def write(tmp_path):
    """Writes a case, as the file holds it, and answers the file."""

    def written(content, name="case.json"):
        path = tmp_path / name
        path.write_text(json.dumps(content, ensure_ascii=False), encoding="utf-8", errors="surrogateescape")
        return path

    return written


@pytest.fixture(params=REAL or [None], ids=lambda path: path.stem if path else "none")
def real_case(request):
    if request.param is None:
        pytest.skip("the real cases are not here")
    return request.param
