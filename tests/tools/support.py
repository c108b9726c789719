# SPDX-License-Identifier: Apache-2.0
"""Runs the built program and compares what it writes, byte for byte."""

import os
import pathlib
import sys
import tempfile
import unittest

from captured import captured

PROGRAM = os.environ["FIXTOP_PROGRAM"].split("|")
CASES = pathlib.Path(os.environ.get("FIXTOP_CASES", "")) / "real"

DONE, FAILED, USAGE, UNREADABLE = 0, 1, 2, 3


class Result:
    def __init__(self, arguments, code, out, err):
        self.arguments, self.code, self.out, self.err = arguments, code, out, err

    @property
    def lines(self):
        return self.out.split("\n")[:-1]

    def __str__(self):
        return f"fixtop {self.arguments}: {self.code}\n--out--\n{self.out}\n--err--\n{self.err}"


def run(*arguments, stdin="", cwd=None):
    done = captured(PROGRAM + [str(a) for a in arguments], input=stdin.encode(), timeout=600, cwd=cwd)
    result = Result(arguments, done.returncode, done.stdout.decode(), done.stderr.decode())
    if result.code not in (DONE, FAILED, USAGE, UNREADABLE):
        print(f"an end that is none of the program's: {result}", file=sys.stderr)
    return result


class ProgramTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)

    def check(self, result, code=DONE, out=None, err=None):
        """The exit code, and exactly these texts where they are given."""
        self.assertEqual(code, result.code, result)
        if out is not None:
            self.assertEqual(out, result.out, result)
        if err is not None:
            self.assertEqual(err, result.err, result)
        return result

    def file(self, name, content):
        path = self.folder / name
        if isinstance(content, bytes):
            path.write_bytes(content)
        else:
            path.write_text(content, encoding="utf-8")
        return path
