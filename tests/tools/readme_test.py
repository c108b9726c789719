# SPDX-License-Identifier: Apache-2.0
"""The sessions on the front page and of the page on paths."""

import os
import pathlib
import unittest

from sessions import SessionTest, sessions

SOURCE = pathlib.Path(os.environ["FIXTOP_SOURCE"])


class Pages(SessionTest):
    def run_sessions(self, page):
        steps = sessions((SOURCE / page).read_text(encoding="utf-8"))
        for command, lines in steps:
            with self.subTest(command):
                printed = self.run_in_folder(command).splitlines()
                self.assert_same_text("\n".join(lines), "\n".join(printed), command)
        return steps

    def test_front_page(self):
        self.assertGreater(len(self.run_sessions("README.md")), 5)

    def test_paths(self):
        self.assertGreater(len(self.run_sessions("docs/paths.md")), 25)

    def test_a_number_is_compared_as_it_is_written(self):
        for shown, printed in (("1000", "1000.0"), ("30 C", "30.1 C"), ("1", "1.000000001")):
            with self.assertRaises(AssertionError, msg=printed):
                self.assert_same_text(shown, printed, "")
        self.assert_same_text("1434.5012464981241 kW", "1434.501246498123 kW", "")
        with self.assertRaises(AssertionError):
            self.assert_same_text("1434.5012464981241 kW", "1434.6012464981241 kW", "")


if __name__ == "__main__":
    unittest.main()
