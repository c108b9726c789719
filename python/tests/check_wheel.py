# SPDX-License-Identifier: Apache-2.0
"""Installs the package by pip into an environment of its own and runs the tests against what is there:
check_wheel.py ROOT"""

import os
import pathlib
import shutil
import subprocess
import sys
import venv

ROOT = pathlib.Path(sys.argv[1])
WORK = pathlib.Path(os.environ["FIXTOP_WORK"])


def call(*command, **more):
    subprocess.run([str(part) for part in command], check=True, **more)


shutil.rmtree(WORK, ignore_errors=True)
venv.create(WORK / "venv", system_site_packages=True, with_pip=True)
python = WORK / "venv" / "bin" / "python"
# The compilations of the build are remembered, under the words of its messages too.
words = {name: value for name, value in os.environ.items() if name != "LC_ALL"}
call(
    python,
    "-m",
    "pip",
    "install",
    "--no-build-isolation",
    "--no-deps",
    "--no-index",
    "--quiet",
    ROOT,
    env=words,
)
where = [python, "-c", "import fixtop; print(fixtop.__file__)"]
installed = subprocess.run(where, cwd=WORK, check=True, capture_output=True, text=True).stdout
assert installed.startswith(str(WORK)), installed
tests = [ROOT / "python" / "tests" / f"test_{name}.py" for name in ("nodes", "changes", "tables")]
call(python, "-B", "-m", "pytest", "-q", "-p", "no:cacheprovider", *tests, cwd=WORK)
