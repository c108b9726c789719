#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""module_files_test.py MODULE FILE...: the built module carries the bytes of every file."""

import pathlib
import sys

module, *files = map(pathlib.Path, sys.argv[1:])
carried = module.read_bytes()
missing = [file.name for file in files if file.read_bytes() not in carried]
if missing or not files:
    sys.exit(f"{module.name} does not carry: {', '.join(missing) or 'any file named here'}")
