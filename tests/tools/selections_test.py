# SPDX-License-Identifier: Apache-2.0
"""The page about selections, over the five real cases."""

import os
import pathlib
import shutil
import unittest

from sessions import SessionTest, sessions
from support import CASES

PAGE = pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "docs/selections.md"


@unittest.skipUnless(CASES.is_dir(), f"no sample cases in {CASES}")
class Selections(SessionTest):
    def test_page(self):
        steps = sessions(PAGE.read_text(encoding="utf-8"))
        self.assertGreater(len(steps), 20)
        cases = sorted(CASES.glob("*.dwxmz"))
        self.assertEqual(5, len(cases))
        for case in cases:
            self.assertTrue(any(case.name in command for command, _ in steps), case.name)
            shutil.copy(case, self.folder)
        for command, lines in steps:
            printed = self.run_in_folder(command).splitlines()
            self.assert_same_text("\n".join(lines), "\n".join(printed), command)


if __name__ == "__main__":
    unittest.main()
