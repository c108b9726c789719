# SPDX-License-Identifier: Apache-2.0
"""set, solve, watch and saving, on the case that the program carries."""

import errno
import json
import os
import re
import subprocess
import sys
import unittest

from captured import captured
from small_case import STREAMS as SMALL_STREAMS, array, real, small_case, stream, write_case, write_small_case
from support import DONE, FAILED, PROGRAM, UNREADABLE, ProgramTest, run

STREAMS = "appModel.FlowSheetObjects.Streams"
UNITS = "appModel.FlowSheetObjects.UnitOps"
FEED_FLOW = STREAMS + ".Raw Gas.Molar Flow"
FEED_TEMPERATURE = STREAMS + ".Raw Gas.Temperature"
SALES_FLOW = STREAMS + ".Sales Gas.Molar Flow"
SMALL_FEED = SMALL_STREAMS + ".Feed 1"
# The same fraction with the options of its view.
FRACTIONS = {STREAMS + ".Raw Gas.Comp Mole Frac.Methane": [],
             "Flowsheet.Stream(Raw Gas).Composition.Component(Methane).MoleFraction": ["--neutral"]}
COMPOSITION = STREAMS + ".Raw Gas.Comp Mole Frac"
ONE_FRACTION = STREAMS + ".Pure.Comp Mole Frac.Methane"


def fraction_case(fractions):
    composition = array([("text", ["Methane", "Ethane"])], fractions)
    composition["spec"]["variableType"] = 9
    composition["spec"]["number"] = 501
    case = small_case()
    case["flowsheet"]["objects"] = [stream("Pure", 25, **{"Comp Mole Frac": composition})]
    return case


def saved_fractions(file, name):
    """Of a stream in a case file, to the last digit."""
    objects = json.loads(file.read_text())["flowsheet"]["objects"]
    variables = next(each for each in objects if each["name"] == name)["variables"]
    return variables["Comp Mole Frac"]["values"]


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
        self.check(run("set", "demo", FEED_FLOW, ""), FAILED, "\n",
                   "stream Raw Gas: flow is not specified\n")
        result = self.check(run("set", "demo", FEED_FLOW, "", "--json"), FAILED)
        self.assertEqual((None, False), tuple(json.loads(result.lines[0])[name] for name in ("value", "complete")))
        self.assertEqual([{"error": "stream Raw Gas: flow is not specified", "exit": FAILED}],
                         [json.loads(line) for line in result.lines[1:]])
        self.check(run("set", "demo", FEED_TEMPERATURE, "-1e5"), FAILED, "-100000\n",
                   "stream Raw Gas: temperature -100000 C is outside the range of the property methods\n")

    def test_json(self):
        result = self.check(run("set", "demo", FEED_FLOW, "1200", "--json"), DONE, err="")
        self.assertEqual({"path": FEED_FLOW, "value": 1200, "uom": "kgmole/h", "status": "Specified",
                          "complete": True}, json.loads(result.out))

    def test_a_unit_may_stand_behind_the_number(self):
        file = self.folder / "behind.json"
        self.check(run("set", "demo", FEED_TEMPERATURE, "303.15 K", "--set", FEED_FLOW, " 1 kgmole/s ",
                       "--save", file), DONE, "303.15\n1\n", "")
        self.check(run("get", file, FEED_TEMPERATURE, FEED_FLOW), DONE, "30\n3600\n", "")
        self.check(run("set", "demo", FEED_TEMPERATURE, "303.15 K", "--unit", "K"), DONE, "303.15\n", "")
        self.check(run("set", "demo", FEED_TEMPERATURE, "303.15 K", "--unit", "C"), FAILED, "",
                   f"{FEED_TEMPERATURE}: two units: K and C\n")
        self.check(run("set", "demo", FEED_TEMPERATURE, "30 kPa"), FAILED, "")

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
            (FEED_FLOW, "1_2"): "not a number: 1_2",
            (FEED_FLOW, "12x"): "no such unit: x; expected kgmole/h, kgmole/s, mol/s, mol/h, lbmole/hr",
            (FEED_FLOW, "nan"): "not a number: nan",
            (FEED_FLOW, "1", "--unit", "K"):
                "no such unit: K; expected kgmole/h, kgmole/s, mol/s, mol/h, lbmole/hr",
            (SALES_FLOW, "1"): "Value not stored; it is calculated",
            (UNITS + ".MIX-100.Outlet Pressure Assignment", "Nonsense"):
                "Value not stored; expected Equalize All, Set Outlet to Lowest Inlet",
            (UNITS + ".E-100.Inlet 1", "x"): "Cannot set attachment",
            (UNITS + ".V-100.Advice", "x"): "Cannot set message",
            (STREAMS + ".Raw Gas", "1"): "Not supported",
            (STREAMS + ".Raw Gas.Comp Mole Frac", "1"): "expected a value for each element, 8 and not 1",
            ("appModel", "1"): "Not supported.",
            ("appModel(id)", "1"): "Not supported.",
        }
        for (path, *rest), message in cases.items():
            with self.subTest(path):
                self.check(run("set", "demo", path, *rest), FAILED, "", f"{path}: {message}\n")

    @unittest.skipIf(sys.platform == "win32" or len(PROGRAM) > 1, "needs a terminal of this machine")
    def test_at_a_terminal_a_change_that_is_not_saved_is_told(self):
        import pty  # pylint: disable=import-outside-toplevel

        def seen(*arguments):
            ours, theirs = pty.openpty()
            subprocess.run(PROGRAM + list(map(str, arguments)), stdout=subprocess.DEVNULL, stderr=theirs, check=False)
            os.write(theirs, b"!")
            text = b""
            while not text.endswith(b"!"):
                text += os.read(ours, 1000)
            os.close(ours)
            os.close(theirs)
            return text.decode()

        told = "not saved; --save FILE keeps the change"
        self.assertIn(told, seen("set", "demo", FEED_FLOW, "1200"))
        self.assertNotIn(told, seen("set", "demo", FEED_FLOW, "1200", "--save", self.folder / "kept.json"))
        self.assertNotIn(told, seen("set", "demo", SALES_FLOW, "1200"))
        self.assertNotIn(told, seen("solve", "demo"))
        self.assertIn(told, seen("solve", "demo", "--set", FEED_FLOW, "1200"))

    def test_limits_are_told_in_the_unit_that_is_shown(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream("Feed", 25, Level=real(50, "Pressure", minimum=0, maximum=200))]
        file = write_case(self.folder, "limits.json", case)
        for unit, told in (((), "at least 0 kPa, at most 200 kPa"), (("--unit", "bar"), "at least 0 bar, at most 2 bar")):
            result = self.check(run("set", file, STREAMS + ".Feed.Level", "-1", *unit), FAILED, "")
            self.assertTrue(result.err.startswith(f"{STREAMS}.Feed.Level: Value not stored; expected {told}\n"), result)

    def test_nothing_is_solved_when_nothing_was_stored(self):
        case = small_case()
        del case["recorded"]
        case["flowsheet"]["objects"] = [{**stream("Feed", 25), "status": "notSolved"}]
        file = write_case(self.folder, "unsolved.json", case)
        path = SMALL_STREAMS + ".Feed.Temperature"
        refused = f"{path}: not a number: warm\n"
        self.check(run("set", file, path, "warm"), FAILED, "", refused)
        self.check(run("set", file, path, "30"), FAILED, "30\n", "the case has no compounds\n")
        chosen = self.folder / "unsolved.xml"
        self.check(run("collect", "add", chosen, file, path), DONE)
        self.check(run("collect", "write", chosen, file, "warm", "--csv"), FAILED, err=refused)
        self.check(run("collect", "write", chosen, file, "30", "--csv"), FAILED, err="the case has no compounds\n")

    def test_a_long_text_is_not_repeated(self):
        self.check(run("set", "demo", FEED_FLOW, "many " * 1000), FAILED, "",
                   f"{FEED_FLOW}: not a number: {'many ' * 12}... (5000 bytes)\n")

    def test_missing_node(self):
        self.check(run("set", "demo", STREAMS + ".Raw Gass.Temperature", "1"), FAILED, "",
                   f"no such node: {STREAMS}.Raw Gass.Temperature\n  found: {STREAMS}\n"
                   "  near: Raw Gas\n")

    def test_a_fraction_is_stored_as_its_share_of_all(self):
        # The others are 0.25 together.
        shares = {"0.5": 2 / 3, "2": 8 / 9, "0.75": 0.75, "0": 0, "": 0}
        for path, view in FRACTIONS.items():
            for value, share in shares.items():
                with self.subTest(path + value):
                    whole = float(value or 0) + 0.25
                    told = "" if whole == 1 else (f"{COMPOSITION}: the fractions sum to {whole:g} "
                                                  "and are normalised\n")
                    result = self.check(run("set", "demo", *view, path, value), DONE, err=told)
                    self.assertAlmostEqual(share, float(result.out), places=10)

    def test_fractions_that_are_stored_together_stand_as_they_are_typed(self):
        file = self.folder / "typed.json"
        neutral = "Flowsheet.Stream(Raw Gas).Composition"
        lists = ["0.02,0.02,0.8,0.05,0.06,0.03,0.019,0.001", "0.1,0.2,0.3,0.1,0.1,0.1,0.05,0.05",
                 "0.02, 0.02, 0.80, 0.05, , , , "]
        now = [0.02, 0.02, 0.75, 0.1, 0.06, 0.03, 0.019, 0.001]
        for text in lists:
            typed = [float(part) if part.strip() else old for part, old in zip(text.split(","), now)]
            for path, view in ((COMPOSITION, []), (neutral, ["--neutral"])):
                with self.subTest(path + text):
                    result = self.check(run("set", "demo", *view, path, text, "--json", "--save", file), DONE, err="")
                    self.assertEqual((typed, True), tuple(json.loads(result.out)[name] for name in ("value", "complete")))
                    self.assertEqual(typed, saved_fractions(file, "Raw Gas"))

    def test_several_stores_are_one(self):
        file = self.folder / "together.json"
        pair = [COMPOSITION + ".Methane", "0.80", "--set", COMPOSITION + ".Ethane", "0.05"]
        self.check(run("set", "demo", *pair, "--save", file), DONE, "0.8\n0.05\n", "")
        typed = [0.02, 0.02, 0.8, 0.05, 0.06, 0.03, 0.019, 0.001]
        self.assertEqual(typed, saved_fractions(file, "Raw Gas"))
        for word, rest in (("solve", []), ("watch", [COMPOSITION + ".Methane"])):
            self.check(run(word, "demo", *rest, "--set", *pair[:2], *pair[2:]), DONE)
        self.check(run("solve", "demo", "--set", *pair, "--save", file), DONE, "Solve is complete\n", "")
        self.assertEqual(typed, saved_fractions(file, "Raw Gas"))
        told = self.check(run("watch", "demo", COMPOSITION + ".Methane", "--set", *pair), DONE)
        self.assertEqual([f"{COMPOSITION}.Methane\t0.75\t0.8\t"], told.lines)

    def test_of_several_nodes_none_is_stored_unless_they_are_meant(self):
        file = self.folder / "several.json"
        feeds = STREAMS + ".*[Pressure=6000].Temperature"
        found = run("find", "demo", feeds).lines
        self.assertGreater(len(found), 1)
        result = self.check(run("set", "demo", feeds, "35", "--save", file), FAILED, "")
        self.assertTrue(result.err.startswith(f"leads to several nodes: {feeds}\n  {found[0]}\n"), result)
        self.assertFalse(file.exists())
        self.check(run("set", "demo", feeds, "35", "--first", "--save", file), DONE, "35\n", "")
        self.check(run("get", file, found[0]), DONE, "35\n")
        # Those that are calculated are refused, the others stand.
        given = [path for path in found
                 if json.loads(run("get", "demo", path, "--json").out)["status"] == "Specified"]
        self.assertGreater(len(given), 1)
        result = run("set", "demo", feeds, "36", "--all", "--json")
        self.check(result, FAILED)
        *stored, error = (json.loads(line) for line in result.lines)
        self.assertEqual(given, [record["path"] for record in stored])
        self.assertEqual(len(found) - len(given), error["error"].count("Value not stored"))

    def test_nothing_is_saved_when_one_of_several_is_refused(self):
        file = self.folder / "half.json"
        self.check(run("set", "demo", FEED_FLOW, "1200", "--set", SALES_FLOW, "1", "--save", file), FAILED,
                   "1200\n", f"{SALES_FLOW}: Value not stored\n{file}: not saved\n")
        self.assertFalse(file.exists())

    def test_compositions_of_two_streams_in_the_shell(self):
        other = STREAMS + ".Tail Gas.Comp Mole Frac"
        file = self.folder / "two.json"
        whole = "0.1,0.1,0.1,0.1,0.1,0.1,0.1,0.3"
        lines = ["hold", f"set '{COMPOSITION}.Methane' 0.80", f"set '{other}' {whole}",
                 f"set '{COMPOSITION}.Ethane' 0.05", f"get '{COMPOSITION}.Methane'", "release --json", f"save {file}"]
        result = run("shell", "demo", stdin="\n".join(lines))
        self.check(result, DONE, f"0.8\n{whole}\n0.05\n0.8\n"
                   '{"complete":true,"message":"Solve is complete"}\n', "")
        self.assertEqual([0.02, 0.02, 0.8, 0.05, 0.06, 0.03, 0.019, 0.001], saved_fractions(file, "Raw Gas"))
        self.assertEqual([float(part) for part in whole.split(",")], saved_fractions(file, "Tail Gas"))

    def test_streams_that_were_held_together_are_each_normalised(self):
        other = STREAMS + ".Tail Gas.Comp Mole Frac"
        lines = ["hold", f"set '{COMPOSITION}' 1,1,1,1,0,0,0,0", f"set '{other}' 0,0,0,0,0,0,1,1", "release",
                 f"get '{COMPOSITION}.Methane' '{other}.H2O'"]
        told = [f"{path}: the fractions sum to {count} and are normalised\n" for path, count in
                ((COMPOSITION, 4), (other, 2))]
        self.check(run("shell", "demo", stdin="\n".join(lines)), DONE,
                   "1,1,1,1,0,0,0,0\n0,0,0,0,0,0,1,1\nSolve is complete\n0.25\n0.5\n", "".join(told))

    def test_an_array_that_is_no_composition_takes_a_list_too(self):
        case = small_case()
        case["flowsheet"]["objects"] = [stream("Odd", 25, Row=array([("text", ["a", "b"])], [1, 2]))]
        case = write_case(self.folder, "row.json", case)
        result = run("set", case, STREAMS + ".Odd.Row", "5,7")
        self.assertEqual("5,7\n", result.out)

    def test_the_only_fraction_stays_whole(self):
        case = write_case(self.folder, "pure.json", fraction_case([1, 0]))
        path = ONE_FRACTION.removesuffix(".Methane")
        result = run("set", case, ONE_FRACTION, "0.5")
        self.assertEqual("1\n", result.out)
        self.assertIn(f"{path}: the fractions sum to 0.5 and are normalised\n", result.err)
        result = self.check(run("set", case, ONE_FRACTION, "0"), FAILED, "1\n")
        self.assertIn(f"{path}: the fractions sum to 0, and stay as they were\n", result.err)

    def test_a_fraction_that_is_not_taken_is_refused(self):
        file = self.folder / "refused.json"
        found = STREAMS + ".Sales Gas.Comp Mole Frac.Methane"
        lines = [(path, view, value) for path, view in FRACTIONS.items()
                 for value in ("-1", "-0.1", "-1e-3")]
        for path, view, value in [*lines, (found, [], "0.5"), (found, [], "0")]:
            with self.subTest(path + value):
                why = "; it is calculated" if path == found else ""
                self.check(run("set", "demo", *view, path, value, "--save", file), FAILED, "",
                           f"{path}: Value not stored{why}\n")
                self.assertFalse(file.exists())

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


class Unwritten(ProgramTest):
    """Nobody takes the output: the work is saved all the same, and the status tells of it."""

    LINES = (["set", "demo", FEED_FLOW, "1200"], ["solve", "demo"])

    def run_without_output(self, arguments, stdin=b"", how=""):
        """With standard output as `how` says in the shell's language, or into a closed pipe."""
        command = [*PROGRAM, *map(str, arguments)]
        if how:
            command = ["sh", "-c", f'"$@" {how}', "sh", *command]
        reader, writer = os.pipe()
        os.close(reader)
        try:
            return captured(command, input=stdin, stdout=writer, timeout=600)
        finally:
            os.close(writer)

    def ways(self):
        messages = {"": "", ">&-": f"fixtop: the output can't be written: {os.strerror(errno.EBADF)}\n",
                    ">/dev/full": f"fixtop: the output can't be written: {os.strerror(errno.ENOSPC)}\n"}
        local = os.name != "nt" and len(PROGRAM) == 1
        return messages if local else {"": messages[""]}

    def test_the_case_is_saved_and_the_run_has_failed(self):
        for line in self.LINES:
            whole = self.folder / f"{line[0]}.json"
            self.check(run(*line, "--save", whole), DONE)
            for how, message in self.ways().items():
                with self.subTest(line[0] + how):
                    file = self.folder / "unwritten.json"
                    done = self.run_without_output([*line, "--save", file], how=how)
                    self.assertEqual((FAILED, message), (done.returncode, done.stderr.decode()))
                    self.assertEqual(whole.read_bytes(), file.read_bytes())
                    file.unlink()

    def test_the_shell_goes_on_to_what_saves(self):
        for how, message in self.ways().items():
            with self.subTest(how):
                file = self.folder / "shell.json"
                lines = f"get '{FEED_FLOW}'\nset '{FEED_FLOW}' 1200\nsave {file}\n"
                done = self.run_without_output(["shell", "demo"], lines.encode(), how)
                self.assertEqual((FAILED, message), (done.returncode, done.stderr.decode()))
                self.check(run("get", file, FEED_FLOW), DONE, "1200\n", "")
                file.unlink()

    def test_no_word_has_succeeded(self):
        stream = STREAMS + ".Raw Gas"
        lines = (["ls", "demo"], ["tree", "demo"], ["attrs", "demo", stream], ["get", "demo", FEED_FLOW],
                 ["find", "demo", "appModel.*"], ["table", "demo", stream, "Temperature"],
                 ["explain", "demo", "Flowsheet.Stream(Raw Gas).MolarFlow"], ["classes"], ["path", "a.b"],
                 ["check-map", "--unmapped"],
                 ["watch", "demo", FEED_FLOW, "--set", FEED_FLOW, "1200"], ["complete", "demo", "l"],
                 ["demo"], ["--help"], ["get", "--help"], ["--version"])
        for line in lines:
            for how, message in self.ways().items():
                with self.subTest(line[0] + how):
                    done = self.run_without_output(line, how=how)
                    self.assertEqual(FAILED, done.returncode)
                    self.assertIn(message, done.stderr.decode())

    @unittest.skipIf(os.name == "nt" or len(PROGRAM) > 1, "needs a shell of this machine")
    def test_closed_streams_are_not_written_into_files(self):
        for how in (">&- 2>&-", "<&- >&- 2>&-", "2>&-"):
            with self.subTest(how):
                file = self.folder / "closed.json"
                self.run_without_output(["set", "demo", FEED_FLOW, "", "--save", file], how=how)
                self.assertEqual("casehost case", json.loads(file.read_text())["format"])
                file.unlink()


class Solve(ProgramTest):
    def test_complete(self):
        self.check(run("solve", "demo"), DONE, "Solve is complete\n", "")
        result = self.check(run("solve", "demo", "--json"), DONE, err="")
        self.assertEqual({"complete": True, "message": "Solve is complete"}, json.loads(result.out))

    def test_not_complete(self):
        file = self.folder / "no-flow.json"
        self.check(run("set", "demo", FEED_FLOW, "", "--save", file), FAILED, "\n")
        result = self.check(run("solve", file), FAILED, "Solve did not complete\n")
        self.assertIn("Raw Gas: Under-Specified\n", result.err)
        self.assertTrue(result.err.startswith("stream Raw Gas: flow is not specified\n"), result)
        result = self.check(run("solve", file, "--json"), FAILED)
        told = json.loads(result.out)
        problem = "stream Raw Gas: flow is not specified"
        self.assertEqual((False, "Solve did not complete", problem, problem, 1),
                         tuple(told[name] for name in ("complete", "message", "problem", "error", "exit")))
        self.assertIn({"path": STREAMS + ".Raw Gas", "status": "Under-Specified"}, told["failed"])
        self.assertEqual("stream Raw Gas: flow is not specified\n", result.err)

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

    def test_without_one_of_its_stores_it_is_not_saved(self):
        file = self.folder / "lacking.json"
        result = self.check(run("solve", "demo", "--set", FEED_FLOW, "900", "--set", "nowhere", "1", "--save", file), FAILED)
        self.assertTrue(result.err.endswith(f"{file}: not saved\n"), result)
        self.assertFalse(file.exists())

    def test_json_is_one_record_whatever_fails(self):
        lines = {("--set", "nowhere", "1"): (True, "no such node: nowhere\n  nothing of it was found"),
                 ("--set", FEED_FLOW, ""): (False, "stream Raw Gas: flow is not specified"),
                 ("--set", FEED_FLOW, "", "--set", SALES_FLOW, "1"):
                     (False, f"{SALES_FLOW}: Value not stored\n"
                             "stream Raw Gas: flow is not specified")}
        for line, (complete, error) in lines.items():
            with self.subTest(line):
                record = json.loads(self.check(run("solve", "demo", *line, "--json"), FAILED).out)
                self.assertEqual((complete, error, 1), tuple(record[name] for name in ("complete", "error", "exit")))

    def test_what_failed_is_counted(self):
        file = self.folder / "no-temperature.json"
        self.check(run("set", "demo", STREAMS + ".Raw Gas.Temperature", "", "--save", file), FAILED)
        told = json.loads(run("solve", file, "--json").lines[0])["failed"]
        waiting = [each for each in told if each["status"] == "Not Solved"]
        self.assertEqual(len(told) - 1, len(waiting))
        cause, culprit, count = run("solve", file).err.split("\n")[:-1]
        self.assertEqual("stream Raw Gas: temperature is not specified", cause)
        self.assertEqual("Raw Gas: Under-Specified", culprit)
        self.assertEqual(f"{len(told)} objects failed: {len(waiting)} Not Solved, 1 Under-Specified; "
                         "--all names them", count)
        named = run("solve", file, "--all").err.split("\n")[:-1]
        names = [re.sub(r"\.(Streams|UnitOps)\.", "/", each["path"].split(".", 3)[3]) for each in told]
        self.assertEqual(names, [line.split(":")[0] for line in named[1:]])
        self.assertEqual(len(names), len(set(names)), names)
        self.assertIn("Stabiliser/E-201", names)

    def test_what_fails_in_a_flowsheet_within_is_named(self):
        heater = "appModel.FlowSheetObjects.UnitOps.Stabiliser.UnitOps.E-201"
        line = ["solve", "demo", "--set", heater + ".Product Temperature", ""]
        why = "Stabiliser/E-201: product temperature or duty must be specified\n"
        result = self.check(run(*line), FAILED)
        self.assertTrue(result.err.startswith(why + "Stabiliser: Under-Specified\n"
                                              "Stabiliser/E-201: Under-Specified\n"), result)
        told = json.loads(run(*line, "--json").lines[0])["failed"]
        self.assertIn({"path": heater, "status": "Under-Specified"}, told)
        for each in told:
            self.check(run("get", "demo", each["path"] + "(type)"), DONE, err="")

    def test_what_is_stored_is_saved_and_told_with_the_same_digits(self):
        file = self.folder / "digits.json"
        path = STREAMS + ".Raw Gas.Molar Flow"
        self.check(run("set", "demo", path, repr(1000 / 3), "--save", file), DONE)
        line = self.check(run("get", file, path, "--json"), DONE).out
        self.assertIn('"value":333.3333333333333,', line)
        text = file.read_text(encoding="utf-8")
        self.assertIn("333.3333333333333", text)
        # Of what was calculated as well: each number that the one tells stands in the other.
        saved = set(re.findall(r"-?\d+(?:\.\d+)?(?:e[-+]?\d+)?", text))
        flows = self.check(run("get", file, STREAMS + ".*.Molar Flow", "--all", "--json"), DONE).lines
        numbers = [re.search(r'"value":([^,]+),', each)[1].removesuffix(".0") for each in flows]
        self.assertLess(20, len(numbers))
        self.assertEqual([], [number for number in numbers if number not in saved])

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

    def test_refused_stores_do_not_stop_it(self):
        result = run("watch", "demo", FEED_FLOW, "--set", SALES_FLOW, "1",
                     "--set", FEED_FLOW, "1100", "--set", "yyy", "1")
        self.check(result, FAILED, f"{FEED_FLOW}\t1000\t1100\tkgmole/h\n")
        for text in (f"{SALES_FLOW}: Value not stored", "no such node: yyy", "Solve is complete"):
            self.assertIn(text, result.err)

    def test_without_one_of_its_nodes_nothing_is_stored_or_solved(self):
        line = ["zzz", FEED_FLOW, "yyy", "--set", FEED_FLOW, "1100"]
        missing = "".join(f"no such node: {name}\n  nothing of it was found\n" for name in ("zzz", "yyy"))
        self.check(run("watch", "demo", *line), FAILED, "", missing)
        told = run("shell", "demo", stdin=f"watch zzz '{FEED_FLOW}' --set '{FEED_FLOW}' 1100\nget '{FEED_FLOW}'\n")
        self.check(told, DONE, "1000\n", "no such node: zzz\n  nothing of it was found\n")


class Recorded(ProgramTest):
    def old(self):
        """The small case after a store, with its result at this path."""
        file = self.folder / "old.json"
        self.check(run("set", write_small_case(self.folder), SMALL_FEED + ".Temperature", "30",
                       "--save", file), FAILED, "30\n",
                   f"{file}: results that are older than a change are saved as stale\n"
                   "the case is a recording and can't be computed again\n")
        return file

    def test_results_stay_after_a_store_and_say_so(self):
        file, path = self.old(), SMALL_FEED + ".Pressure"
        self.check(run("get", file, path), DONE, "100\n", f"{path}: older than a change of the case\n")
        self.assertEqual({"path": path, "value": 100, "uom": "kPa", "status": "Calculated", "stale": True},
                         json.loads(run("get", file, path, "--json").out))
        self.check(run("get", file, path, "--attr", "uom"), DONE, "kPa\n", "")
        self.check(run("get", file, SMALL_FEED, "--attr", "status"), DONE, "Not Solved\n", "")
        self.assertNotIn("stale", run("get", file, SMALL_FEED + ".Temperature", "--json").out)
        self.assertNotIn("stale", run("get", file, SMALL_STREAMS + '."Feed.2".Pressure', "--json").out)
        tree = self.check(run("tree", file, SMALL_FEED), DONE, err="").lines
        self.assertIn("  Pressure = 100 kPa  (stale)", tree)
        self.assertIn("  Temperature := 30 C", tree)
        children = json.loads(run("tree", file, SMALL_FEED, "--json").out)["children"]
        self.assertEqual(["Pressure"], [each["name"] for each in children if "stale" in each])

    def test_a_table_has_a_star_behind_what_is_older(self):
        columns = [self.old(), SMALL_STREAMS + ".*", "Temperature", "Pressure"]
        self.check(run("table", *columns), DONE,
                   "Name    Temperature  Pressure\n"
                   "                  C       kPa\n"
                   "Feed 1           30      100*\n"
                   "Feed.2          -40      100\n"
                   "Größe           300      100\n", "* older than a change of the case\n")
        result = self.check(run("table", *columns, "--csv"), DONE,
                            err="Pressure: values are older than a change of the case\n")
        self.assertEqual("Feed 1,30,100", result.lines[1])
        cells = json.loads(run("table", *columns, "--json").lines[0])["cells"]
        self.assertEqual({"value": 100, "uom": "kPa", "stale": True}, cells["Pressure"])
        self.assertNotIn("stale", cells["Temperature"])

    def test_a_store_of_the_same_value_changes_nothing(self):
        case = write_small_case(self.folder)
        unchanged = self.folder / "unchanged.json"
        self.check(run("shell", case, stdin=f"save {unchanged}\n"), DONE, "", "")
        again = self.folder / "again.json"
        for name, value, *unit in (("Temperature", "25"), ("Temperature", "77", "--unit", "F"),
                                   ("Third", "0.333333333333"), ("Mode", "Slow"), ("Word", "3.50"),
                                   ("Unset", "")):
            with self.subTest(name):
                self.check(run("set", case, f"{SMALL_FEED}.{name}", value, *unit, "--save", again),
                           DONE, value + "\n", "")
                self.assertEqual(unchanged.read_text().replace("0.3333333333333333", "0.333333333333"),
                                 again.read_text().replace("0.3333333333333333", "0.333333333333"))

    def test_values_of_the_neutral_view_say_so_too(self):
        path = "Flowsheet.Stream(Feed 1).Pressure"
        record = json.loads(run("get", self.old(), "--neutral", path, "--json").out)
        self.assertEqual((100, True), (record["value"], record["stale"]))

    def test_a_recording_can_not_be_solved(self):
        case = write_small_case(self.folder)
        path = SMALL_STREAMS + ".Feed 1.Temperature"
        self.check(run("set", case, path, "30"), FAILED, "30\n")
        result = run("watch", case, path, "--set", path, "30")
        self.check(result, FAILED, f"{path}\t25\t30\tC\n")
        why = "the case is a recording and can't be computed again\n"
        self.assertTrue(result.err.endswith(why), result)
        result = self.check(run("solve", case), FAILED, "Solve did not complete\n")
        self.assertTrue(result.err.startswith(why), result)


if __name__ == "__main__":
    unittest.main()
