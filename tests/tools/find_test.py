# SPDX-License-Identifier: Apache-2.0
"""find over a small case, and back through get."""

import json
import unittest

from small_case import STREAMS, UNITS, small_case, stream, write_case, write_small_case
from support import DONE, FAILED, ProgramTest, run

FEED = STREAMS + ".Feed 1"


class Find(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_small_case(cls.folder)

    def test_a_star_in_a_name_stands_in_quotes(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream(name, 1) for name in ("a*b", "a1b")]
        file = write_case(self.folder, "star.json", case)
        two = f"{STREAMS}.a*b\n{STREAMS}.a1b\n"
        self.check(run("find", file, STREAMS + ".a*b"), DONE, two, "")
        self.check(run("find", file, STREAMS + '."a*b"'), DONE, two.split("\n", maxsplit=1)[0] + "\n", "")

    def test_matches(self):
        two = STREAMS + '."Feed.2"'
        large = STREAMS + ".Größe"
        patterns = {
            STREAMS + ".*": [FEED, two, large],
            STREAMS + ".*.Temperature": [FEED + ".Temperature", two + ".Temperature",
                                         large + ".Temperature"],
            STREAMS + ".*.Mode": [FEED + ".Mode"],
            STREAMS + ".*[Mode]": [FEED],
            STREAMS + '.*[Temperature="-40"]': [two],
            STREAMS + '.*[Temperature=25]|[Temperature=300].Pressure':
                [FEED + ".Pressure", large + ".Pressure"],
            STREAMS + ".*[Temperature]&![Mode]": [two, large],
            "appModel.FlowSheetObjects.*.*[(type)=MixerOpObject]": [UNITS + ".Mixer 1"],
            STREAMS + ".#1": [two],
            STREAMS + ".*#2.Temperature": [large + ".Temperature"],
            STREAMS + ".*.*#1": [FEED + ".Pressure", two + ".Pressure", large + ".Pressure"],
            FEED + ".*[(type)=Real][(status)=Calculated]": [FEED + ".Pressure"],
            FEED + '."A & B"': [FEED + '."A & B"'],
            FEED + ".*(uom)": [FEED + ".Temperature(uom)", FEED + ".Pressure(uom)",
                               FEED + ".Unset(uom)"],
        }
        for pattern, paths in patterns.items():
            with self.subTest(pattern):
                self.check(run("find", self.case, pattern), DONE,
                           "".join(path + "\n" for path in paths), "")

    def test_wildcards_within_names_and_any_levels(self):
        two = STREAMS + '."Feed.2"'
        large = STREAMS + ".Größe"
        warm = [path + ".Temperature" for path in (FEED, two, large)]
        patterns = {
            STREAMS + ".Feed*": [FEED, two], STREAMS + ".*eed*": [FEED, two],
            STREAMS + ".*ß*.Temp*": [large + ".Temperature"],
            STREAMS + ".Feed*.*ress*": [FEED + ".Pressure", two + ".Pressure"],
            STREAMS + ".Feed*[Mode].Temperature": [FEED + ".Temperature"],
            STREAMS + ".Feed*(status)": [FEED + "(status)", two + "(status)"],
            STREAMS + ".**.Temperature": warm, "**.Temperature": warm, "**.**.Temp*ture": warm,
            "appModel.**.Streams.*.Temperature": warm,
            STREAMS + ".Größe.**": [large] + [f"{large}.{below}" for below in (
                "Temperature", "Pressure", "Vapour Fraction", "Upstream Unit Operations",
                "Upstream Unit Operations.Elem0", "Downstream Unit Operations",
                "Downstream Unit Operations.Elem0")],
        }
        for pattern, paths in patterns.items():
            with self.subTest(pattern):
                self.check(run("find", self.case, pattern), DONE,
                           "".join(path + "\n" for path in paths), "")
        self.check(run("find", self.case, "--name", "*Temp*"), DONE, "".join(path + "\n" for path in warm), "")
        self.check(run("find", self.case, FEED, "--name", "Temperature"), DONE, warm[0] + "\n", "")
        self.check(run("find", self.case, "--name", "Dot.*"), DONE, FEED + '."Dot.ted"\n', "")
        self.check(run("find", self.case, '**."Temp*"'), FAILED, "", 'nothing matches: **."Temp*"\n')
        self.check(run("find", self.case, "--name", "*temp*"), FAILED, "", "nothing matches: *temp*\n")
        self.check(run("find", self.case, "**.a[b"), FAILED, "")

    def test_backtracks_where_a_walk_takes_the_first(self):
        # The first list of the flowsheet has no mixer; a walk stops there.
        pattern = "appModel.FlowSheetObjects.*.Mixer 1"
        self.check(run("get", self.case, pattern + "(id)"), FAILED, "")
        self.check(run("find", self.case, pattern), DONE, UNITS + ".Mixer 1\n", "")

    def test_names_that_need_quotes(self):
        found = run("find", self.case, FEED + ".*[(type)=Real]").lines
        for name in ('"A & B"', "Low <", '"Dot.ted"', '"Say ""so"""'):
            self.assertIn(f"{FEED}.{name}", found)

    def test_get_takes_every_path_back(self):
        for pattern in ("*.*.*.*", "*.*.*.*.*", "*"):
            found = self.check(run("find", self.case, pattern), DONE, err="").lines
            self.assertTrue(found)
            names = run("find", self.case, pattern, "--json").lines
            back = self.check(run("get", self.case, "-", "--attr", "id",
                                  stdin="".join(path + "\n" for path in found)), DONE, err="")
            self.assertEqual([json.loads(line)["name"] for line in names], back.lines)

    def test_json(self):
        result = self.check(run("find", self.case, UNITS + ".*", "--json"), DONE, err="")
        self.assertEqual({"path": UNITS + ".Mixer 1", "name": "Mixer 1", "type": "MixerOpObject"},
                         json.loads(result.out))

    def test_nothing_matches(self):
        for pattern in (STREAMS + ".*.Nonsense", "nonsense.*", STREAMS + ".#9"):
            self.check(run("find", self.case, pattern), FAILED, "", f"nothing matches: {pattern}\n")


if __name__ == "__main__":
    unittest.main()
