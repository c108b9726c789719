# SPDX-License-Identifier: Apache-2.0
"""The session on the front page."""

import os
import pathlib
import unittest

from sessions import SessionTest, sessions

README = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "README.md"


class Readme(SessionTest):
    def test_session(self):
        steps = sessions(README.read_text(encoding="utf-8"))
        self.assertGreater(len(steps), 5)
        for command, lines in steps:
            printed = self.run_in_folder(command).splitlines()
            self.assert_same_text("\n".join(lines), "\n".join(printed), command)


if __name__ == "__main__":
    unittest.main()
