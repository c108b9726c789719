# SPDX-License-Identifier: Apache-2.0
"""Columns of the neutral view: the built-in one, and a recorded one."""

import unittest

from support import CASES, DONE, ProgramTest, run

COLUMN = "Flowsheet.UnitOperation(T-100)"
RECORDED = CASES / "benzene-toluene-distillation.dwxmz"


class Columns(ProgramTest):
    def values(self, case, *paths, unit=()):
        lines = self.check(run("get", case, "--neutral", *paths, *unit), DONE, err="").lines
        return [float(line.split()[0]) for line in lines]

    def texts(self, case, *paths):
        return self.check(run("get", case, "--neutral", *paths), DONE, err="").lines

    def listed(self, case, path):
        """Names of the elements below a node by the list in which they stand."""
        lists = {}
        for line in self.check(run("ls", case, "--neutral", path), DONE, err="").lines:
            name, _, key = line.partition("(")
            lists.setdefault(name, []).append(key.rstrip(")"))
        return lists


class BuiltIn(Columns):
    def test_lists(self):
        lists = self.listed("demo", COLUMN)
        self.assertEqual([str(stage) for stage in range(12)], lists["Stage"])
        self.assertEqual(["Column Feed", "Heavy Feed"], lists["Feed"])
        self.assertEqual(["Main Tower", "Side Stripper", "Side Rectifier"], lists["Section"])
        self.assertEqual(["Side Stripper", "Side Rectifier"], lists["SideColumn"])
        self.assertEqual(["PA-1"], lists["PumpAround"])
        draws = self.listed("demo", f"{COLUMN}.Section(Main Tower)")["SideDraw"]
        self.assertEqual(["PA-1 Draw", "Stripper Feed", "Rectifier Feed"], draws)

    def test_streams_are_found_from_every_part(self):
        pairs = [
            ("Condenser.Reflux", "Condenser.RefluxMolarFlow"),
            ("Condenser.Distillate", "Condenser.DistillateMolarFlow"),
            ("Reboiler.Boilup", "Reboiler.BoilupMolarFlow"),
            ("Reboiler.LiquidProduct", "Reboiler.LiquidMolarFlow"),
            ("PumpAround(PA-1).Draw", "PumpAround(PA-1).MolarFlow"),
            ("PumpAround(PA-1).Return", "PumpAround(PA-1).MolarFlow"),
            ("SideColumn(Side Stripper).Draw", "Stage(3).NetMolarDraw"),
            ("SideColumn(Side Stripper).Return", "Stage(2).NetMolarFeed"),
            ("SideColumn(Side Rectifier).Draw", "Stage(7).NetMolarDraw"),
            ("SideColumn(Side Rectifier).Return", "Stage(8).NetMolarFeed"),
            ("Feed(Heavy Feed).Fluid", "Stage(9).NetMolarFeed"),
        ]
        for fluid, flow in pairs:
            with self.subTest(fluid):
                one, other = self.values("demo", f"{COLUMN}.{fluid}.MolarFlow", f"{COLUMN}.{flow}")
                self.assertAlmostEqual(one, other, places=6)
                self.assertGreater(one, 1)

    def test_kinds_of_stages(self):
        kinds = {"IsFeed": {4, 9}, "IsReturn": {1, 2, 8}, "IsDraw": {0, 2, 3, 7, 11},
                 "IsCondenser": {0}, "IsReboiler": {11}}
        for kind, stages in kinds.items():
            paths = [f"{COLUMN}.Stage({stage}).{kind}" for stage in range(12)]
            found = {i for i, flag in enumerate(self.values("demo", *paths)) if flag}
            self.assertEqual(stages, found, kind)
        types = self.texts("demo", *(f"{COLUMN}.Stage({i}).StageType" for i in (0, 5, 11)))
        self.assertEqual(["Condenser", "Tray", "Reboiler"], types)

    def test_fractions_of_a_stage_are_whole(self):
        for phase in ("VaporFrom", "LiquidFrom"):
            for stage in range(12):
                place = f"{COLUMN}.Stage({stage}).{phase}"
                keys = self.listed("demo", place)["Composition"]
                self.assertEqual(8, len(keys))
                paths = [f'{place}.Composition({key}).MoleFraction' for key in keys]
                self.assertAlmostEqual(1, sum(self.values("demo", *paths)), places=9)


@unittest.skipUnless(RECORDED.exists(), f"no sample case {RECORDED}")
class Recorded(Columns):
    def test_stages(self):
        column = "Flowsheet.UnitOperation(T-101)"
        lists = self.listed(RECORDED, column)
        self.assertEqual(30, len(lists["Stage"]))
        self.assertEqual(["preheated feed"], lists["Feed"])
        self.assertEqual([15], self.values(RECORDED, f"{column}.Feed(preheated feed).FeedStage"))
        temperatures = self.values(
            RECORDED, *(f"{column}.Stage({i}).Temperature" for i in range(30)), unit=("--unit", "K"))
        self.assertEqual(sorted(temperatures), temperatures)
        self.assertAlmostEqual(352.8114743260277, temperatures[0], places=8)
        benzene = self.values(
            RECORDED, f"{column}.Stage(0).VaporFrom.Composition(Benzene).MoleFraction",
            f"{column}.Stage(1).LiquidFrom.Composition(Toluene).MoleFraction")
        self.assertEqual([0.999962, 0.000245973], benzene)

    def test_ends(self):
        column = "Flowsheet.UnitOperation(T-101)"
        flows = self.values(
            RECORDED, f"{column}.Condenser.Distillate.MolarFlow",
            f"{column}.Reboiler.LiquidProduct.MolarFlow", unit=("--unit", "mol/s"))
        for flow in flows:
            self.assertAlmostEqual(50, flow, places=6)
        self.assertAlmostEqual(3, self.values(RECORDED, f"{column}.MolarRefluxRatio")[0], places=6)


if __name__ == "__main__":
    unittest.main()
