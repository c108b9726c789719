# SPDX-License-Identifier: Apache-2.0
"""The sessions on the front page and of the page on paths."""

import json
import os
import pathlib
import re
import unittest

from sessions import SessionTest, sessions
from support import DONE, run

SOURCE = pathlib.Path(os.environ["FIXTOP_SOURCE"])


LISTS = {"S": "appModel.FlowSheetObjects.Streams", "U": "appModel.FlowSheetObjects.UnitOps"}


def samples(page):
    """Pairs of a path and what it leads to, of the last two columns of a table."""
    rows = []
    for line in page.splitlines():
        cells = [cell.strip().replace("\\|", "|") for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        if len(cells) == 4 and cells[2].startswith("`"):
            path = cells[2].strip("`")
            rows.append((re.sub(r"^[SU](?=\.)", lambda start: LISTS[start[0]], path), cells[3]))
    return rows


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
        self.assertGreater(len(self.run_sessions("docs/paths.md")), 2)
        rows = samples((SOURCE / "docs/paths.md").read_text(encoding="utf-8"))
        self.assertGreater(len(rows), 20)
        for path, told in rows:
            with self.subTest(path):
                self.assertEqual(told, self.shown(path, told[0]))

    def shown(self, path, kind):
        """What the program shows of a path, written as the page has it."""
        view = ["--neutral"] if path.startswith("Flowsheet.") else []
        if kind == ":":
            return f": `{self.check(run('path', path), DONE, err='').lines[0]}`"
        if kind == "=":
            return f"= {self.check(run('get', 'demo', *view, path), DONE, err='').lines[0]}"
        found = self.check(run("find", "demo", path, "--json"), DONE, err="").lines
        return ", ".join(json.loads(line)["path"].rsplit(".", 1)[1] for line in found)

    def test_a_number_is_compared_as_it_is_written(self):
        for shown, printed in (("1000", "1000.0"), ("30 C", "30.1 C"), ("1", "1.000000001")):
            with self.assertRaises(AssertionError, msg=printed):
                self.assert_same_text(shown, printed, "")
        self.assert_same_text("1434.5012464981241 kW", "1434.501246498123 kW", "")
        with self.assertRaises(AssertionError):
            self.assert_same_text("1434.5012464981241 kW", "1434.6012464981241 kW", "")


if __name__ == "__main__":
    unittest.main()
