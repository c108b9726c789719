# SPDX-License-Identifier: Apache-2.0
"""Sessions in documents: every line is run, and what is printed there is compared."""

import re
import shlex

from captured import captured
from support import PROGRAM, ProgramTest

# One of at least ten digits, which only a calculation leaves.
NUMBER = re.compile(r"-?(?=(?:\.?\d){10})\d+\.?\d*(?:e[-+]\d+)?")


def sessions(text):
    """Pairs of a command line and the lines printed below it, of all sessions of a document."""
    steps = []
    for block in re.findall(r"<!-- session:begin -->\n(.*?)<!-- session:end -->", text, re.S):
        for line in block.splitlines():
            line = line[4:]
            if line.startswith("$ "):
                steps.append((line[2:], []))
            else:
                steps[-1][1].append(line)
    return steps


class SessionTest(ProgramTest):
    def assert_same_text(self, expected, printed, command):
        """Exactly equal but for the last digits of calculated numbers, which differ between
        mathematics libraries: 1000 is not 1000.0."""
        self.assertEqual(NUMBER.sub("#", expected), NUMBER.sub("#", printed), command)
        for one, other in zip(NUMBER.findall(expected), NUMBER.findall(printed)):
            self.assertAlmostEqual(float(one), float(other), delta=1e-9 * abs(float(one)), msg=command)

    def run_in_folder(self, command):
        words = shlex.split(command)
        self.assertEqual("fixtop", words[0], command)
        done = captured(PROGRAM + words[1:], cwd=self.folder, timeout=600)
        return (done.stdout + done.stderr).decode()
