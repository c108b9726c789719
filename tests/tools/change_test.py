"""set, solve, watch and saving, on the case that the program carries."""

import json
import os
import subprocess
import unittest

from small_case import STREAMS as SMALL_STREAMS, write_small_case
from support import DONE, FAILED, PROGRAM, UNREADABLE, ProgramTest, run

STREAMS = "appModel.FlowSheetObjects.Streams"
UNITS = "appModel.FlowSheetObjects.UnitOps"
FEED_FLOW = STREAMS + ".Raw Gas.Molar Flow"
FEED_TEMPERATURE = STREAMS + ".Raw Gas.Temperature"
SALES_FLOW = STREAMS + ".Sales Gas.Molar Flow"


class Store(ProgramTest):
    def test_the_value_as_it_then_stands_is_written(self):
        self.check(run("set", "demo", FEED_FLOW, "1200"), DONE, "1200\n", "")
        self.check(run("set", "demo", FEED_TEMPERATURE, "-10.5"), DONE, "-10.5\n", "")
        self.check(run("set", "demo", FEED_FLOW, "1.2e3"), DONE, "1200\n", "")
        self.check(run("set", "demo", UNITS + ".E-100.Notes", "[a, b]"), DONE, "[a, b]\n", "")
        self.check(run("set", "demo", UNITS + ".E-100.Notes", "12.50"), DONE, "12.50\n", "")
        self.check(run("set", "demo", UNITS + ".E-100.Notes", "--", "-x"), DONE, "-x\n", "")
        self.check(run("set", "demo", UNITS + '.MIX-100.Outlet Pressure Assignment', "Equalize All"),
                   DONE, "Equalize All\n", "")

    def test_a_store_stands_though_the_case_does_not_solve(self):
        self.check(run("set", "demo", FEED_FLOW, ""), DONE, "\n",
                   "stream Raw Gas: flow is not specified\n")
        self.check(run("set", "demo", FEED_TEMPERATURE, "-1e5"), DONE, "-100000\n",
                   "stream Raw Gas: temperature -100000 C is outside the range of the property methods\n")

    def test_json(self):
        result = self.check(run("set", "demo", FEED_FLOW, "1200", "--json"), DONE, err="")
        self.assertEqual({"path": FEED_FLOW, "value": 1200, "uom": "kgmole/h", "status": "Specified"},
                         json.loads(result.out))

    def test_units(self):
        file = self.folder / "unit.json"
        self.check(run("set", "demo", FEED_TEMPERATURE, "303.15", "--unit", "K", "--save", file),
                   DONE, "303.15\n", "")
        self.check(run("get", file, FEED_TEMPERATURE), DONE, "30\n", "")

    def test_names_of_files_may_be_other_than_ascii(self):
        file = self.folder / "Größe.json"
        self.check(run("set", "demo", FEED_FLOW, "1200", "--save", file), DONE, "1200\n", "")
        self.assertEqual([file.name], [saved.name for saved in self.folder.glob("Gr*")])
        self.check(run("get", file, FEED_FLOW), DONE, "1200\n", "")

    def test_refusals(self):
        cases = {
            (FEED_FLOW, "abc"): "not a number: abc",
            (FEED_FLOW, "12x"): "not a number: 12x",
            (FEED_FLOW, "nan"): "not a number: nan",
            (FEED_FLOW, "1", "--unit", "K"): "Invalid unit for variable type",
            (SALES_FLOW, "1"): "Value not stored",
            (UNITS + ".MIX-100.Outlet Pressure Assignment", "Nonsense"): "Value not stored",
            (UNITS + ".E-100.Inlet 1", "x"): "Cannot set attachment",
            (UNITS + ".V-100.Advice", "x"): "Cannot set message",
            (STREAMS + ".Raw Gas", "1"): "Not supported",
            (STREAMS + ".Raw Gas.Comp Mole Frac", "1"): "Non scalar variable",
            ("appModel", "1"): "Not supported.",
            ("appModel(id)", "1"): "Not supported.",
        }
        for (path, *rest), message in cases.items():
            with self.subTest(path):
                self.check(run("set", "demo", path, *rest), FAILED, "", f"{path}: {message}\n")

    def test_missing_node(self):
        self.check(run("set", "demo", STREAMS + ".Raw Gass.Temperature", "1"), FAILED, "",
                   f"no such node: {STREAMS}.Raw Gass.Temperature\n  found: {STREAMS}\n"
                   "  near: Raw Gas\n")

    def test_a_store_changes_what_depends_on_it(self):
        file = self.folder / "more.json"
        before = float(run("get", "demo", SALES_FLOW).out)
        self.check(run("set", "demo", FEED_FLOW, "1200", "--save", file), DONE, "1200\n", "")
        after = float(run("get", file, SALES_FLOW).out)
        self.assertGreater(after, before + 50)
        # Nothing is lost on the way.
        feeds = [STREAMS + ".Raw Gas.Mass Flow", STREAMS + ".Tail Gas.Mass Flow"]
        products = [STREAMS + f".{name}.Mass Flow" for name in
                    ("Sales Gas", "Fuel Gas", "Cooled Gas", "Stabiliser Gas", "Stable Condensate")]
        total = [sum(map(float, run("get", file, *paths).lines)) for paths in (feeds, products)]
        self.assertAlmostEqual(1, total[0] / total[1], places=6)


class Solve(ProgramTest):
    def test_complete(self):
        self.check(run("solve", "demo"), DONE, "Solve is complete\n", "")
        result = self.check(run("solve", "demo", "--json"), DONE, err="")
        self.assertEqual({"complete": True, "message": "Solve is complete"}, json.loads(result.out))

    def test_not_complete(self):
        file = self.folder / "no-flow.json"
        self.check(run("set", "demo", FEED_FLOW, "", "--save", file), DONE, "\n")
        result = self.check(run("solve", file), FAILED, "Solve did not complete\n")
        self.assertIn("Raw Gas: Under-Specified\n", result.err)
        self.assertTrue(result.err.startswith("stream Raw Gas: flow is not specified\n"), result)
        result = self.check(run("solve", file, "--json"), FAILED)
        self.assertEqual({"complete": False, "message": "Solve did not complete"},
                         json.loads(result.out))

    def test_save_and_solve_again_gives_the_same_values(self):
        file = self.folder / "saved.json"
        self.check(run("solve", "demo", "--save", file), DONE, "Solve is complete\n", "")
        self.assertEqual(run("tree", "demo", "appModel").out, run("tree", file, "appModel").out)
        again = self.folder / "again.json"
        self.check(run("solve", file, "--save", again), DONE, "Solve is complete\n", "")
        self.assertEqual(file.read_bytes(), again.read_bytes())

    def test_what_can_not_be_saved(self):
        (self.folder / "folder").mkdir()
        for name in ("missing-folder/x.json", "x.txt", "folder"):
            result = self.check(run("solve", "demo", "--save", self.folder / name), UNREADABLE)
            self.assertIn(name.rsplit("/", maxsplit=1)[-1], result.err)
            self.assertEqual(1, result.err.count("\n"), result)
        self.assertFalse((self.folder / "folder.json").exists())
        self.assertEqual([], list((self.folder / "folder").iterdir()))

    @unittest.skipIf(os.name == "nt" or len(PROGRAM) > 1, "needs a limit on the size of files")
    def test_full_disk_leaves_the_old_file(self):
        import resource  # only where the system has it
        folder = self.folder / "full"
        folder.mkdir()
        file = folder / "full.json"
        file.write_text("the old file", encoding="utf-8")

        def fill_the_disk():
            resource.setrlimit(resource.RLIMIT_FSIZE, (5000, 5000))

        done = subprocess.run(PROGRAM + ["solve", "demo", "--save", str(file)], check=False,
                              capture_output=True, timeout=600, preexec_fn=fill_the_disk,
                              restore_signals=False)
        self.assertEqual(UNREADABLE, done.returncode, done)
        self.assertIn("full.json: can't be written: ", done.stderr.decode())
        self.assertEqual("the old file", file.read_text(encoding="utf-8"))
        self.assertEqual([file], list(folder.iterdir()))


class Watch(ProgramTest):
    def test_changes_while_the_solver_runs(self):
        before = run("get", "demo", SALES_FLOW).out.strip()
        result = self.check(run("watch", "demo", SALES_FLOW, FEED_FLOW, FEED_TEMPERATURE,
                                "--set", FEED_FLOW, "1200"), DONE, err="Solve is complete\n")
        rows = [line.split("\t") for line in result.lines]
        self.assertIn([FEED_FLOW, "1000", "1200", "kgmole/h"], rows)
        sales = [row for row in rows if row[0] == SALES_FLOW]
        self.assertEqual(before, sales[0][1])
        for earlier, later in zip(sales, sales[1:]):
            self.assertEqual(earlier[2], later[1])
        self.assertGreater(float(sales[-1][2]), float(before))
        self.assertNotIn(FEED_TEMPERATURE, [row[0] for row in rows])

    def test_json(self):
        result = run("watch", "demo", FEED_FLOW, "--set", FEED_FLOW, "1200", "--json")
        self.check(result, DONE)
        self.assertEqual({"path": FEED_FLOW, "old": 1000, "new": 1200, "uom": "kgmole/h"},
                         json.loads(result.out))

    def test_nothing_to_do(self):
        self.check(run("watch", "demo", SALES_FLOW), DONE, "", "Solve is complete\n")

    def test_mistakes_do_not_stop_it(self):
        result = run("watch", "demo", "zzz", FEED_FLOW, "--set", SALES_FLOW, "1",
                     "--set", FEED_FLOW, "1100", "--set", "yyy", "1")
        self.check(result, FAILED, f"{FEED_FLOW}\t1000\t1100\tkgmole/h\n")
        for text in ("no such node: zzz", f"{SALES_FLOW}: Value not stored", "no such node: yyy"):
            self.assertIn(text, result.err)


class Recorded(ProgramTest):
    def test_a_recording_can_not_be_solved(self):
        case = write_small_case(self.folder)
        path = SMALL_STREAMS + ".Feed 1.Temperature"
        self.check(run("set", case, path, "30"), DONE, "30\n")
        result = run("watch", case, path, "--set", path, "30")
        self.check(result, FAILED, f"{path}\t25\t30\tC\n")
        why = "the case is a recording and can't be computed again\n"
        self.assertTrue(result.err.endswith(why), result)
        result = self.check(run("solve", case), FAILED, "Solve did not complete\n")
        self.assertTrue(result.err.startswith(why), result)


if __name__ == "__main__":
    unittest.main()
