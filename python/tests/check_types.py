# SPDX-License-Identifier: Apache-2.0
"""mypy finds nothing in the package, and the stubs say what the binding has: check_types.py ROOT"""

import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(sys.argv[1])
OPTIONS = ["--ignore-missing-imports", "--cache-dir", os.devnull]

sys.exit(subprocess.run(["mypy", *OPTIONS, ROOT / "python" / "fixtop"]).returncode)
