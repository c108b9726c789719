# SPDX-License-Identifier: Apache-2.0
"""The page on class libraries and maps: its files are checked and read as it says."""

import os
import pathlib
import re
import unittest

from sessions import SessionTest, sessions
from support import DONE, run

PAGE = (pathlib.Path(os.environ["FIXTOP_SOURCE"]) / "docs/maps.md").read_text(encoding="utf-8")
COUNTS = re.compile(r"in (\d+) of (\d+):")


class Maps(SessionTest):
    def setUp(self):
        files = re.findall(r"<!-- file:([\w.-]+) -->\n(.*?)<!-- file:end -->", PAGE, re.S)
        self.assertGreater(len(files), 2)
        for name, text in files:
            self.file(name, "".join(line[4:] + "\n" for line in text.splitlines()))

    def streams_of_the_case(self):
        streams = run("find", "demo", 'appModel.FlowSheetObjects.Streams.*[(type)="MaterialStreamObject"]')
        return len(self.check(streams, DONE).lines)

    def test_sessions(self):
        steps = sessions(PAGE)
        self.assertGreater(len(steps), 5)
        count = self.streams_of_the_case()
        for command, lines in steps:
            # The page has the number of streams that the case had when it was written.
            expected = COUNTS.sub(f"in {count} of {count}:", "\n".join(lines))
            self.assert_same_text(expected, "\n".join(self.run_in_folder(command).splitlines()), command)


if __name__ == "__main__":
    unittest.main()
