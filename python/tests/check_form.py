# SPDX-License-Identifier: Apache-2.0
"""black and flake8 find nothing: check_form.py ROOT"""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(sys.argv[1])
FILES = [ROOT / "setup.py", ROOT / "python", ROOT / "examples" / "python"]

black = subprocess.run(["black", "--check", "--quiet", "--diff", "-l", "110", *FILES])
flake8 = subprocess.run(["flake8", "--config", ROOT / "python" / ".flake8", *FILES])
sys.exit(black.returncode or flake8.returncode)
