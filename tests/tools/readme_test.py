# SPDX-License-Identifier: Apache-2.0
"""The session on the front page: every line is run, and what is printed there is compared."""

import os
import pathlib
import re
import shlex
import subprocess
import unittest

from support import PROGRAM, ProgramTest

README = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "README.md"
NUMBER = re.compile(r"-?\d+\.?\d*(?:e[-+]\d+)?")


def session():
    """Pairs of a command line and the lines printed below it."""
    text = README.read_text(encoding="utf-8")
    block = text.split("<!-- session:begin -->\n")[1].split("<!-- session:end -->")[0]
    steps = []
    for line in block.splitlines():
        line = line[4:]
        if line.startswith("$ "):
            steps.append((line[2:], []))
        else:
            steps[-1][1].append(line)
    return steps


class Readme(ProgramTest):
    def assert_same_text(self, expected, printed, command):
        """Equal but for the last digits of numbers, which differ between mathematics libraries."""
        self.assertEqual(NUMBER.sub("#", expected), NUMBER.sub("#", printed), command)
        for one, other in zip(NUMBER.findall(expected), NUMBER.findall(printed)):
            self.assertAlmostEqual(float(one), float(other), delta=1e-9 * abs(float(one)), msg=command)

    def test_session(self):
        steps = session()
        self.assertGreater(len(steps), 5)
        for command, lines in steps:
            words = shlex.split(command)
            self.assertEqual("fixtop", words[0], command)
            done = subprocess.run(PROGRAM + words[1:], cwd=self.folder, capture_output=True,
                                  timeout=600, check=False)
            printed = (done.stdout + done.stderr).decode().splitlines()
            self.assert_same_text("\n".join(lines), "\n".join(printed), command)


if __name__ == "__main__":
    unittest.main()
