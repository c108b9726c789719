# SPDX-License-Identifier: Apache-2.0
"""The shell: piped lines, and a terminal where there is one."""

import json
import os
import re
import select
import sys
import time
import unittest

from small_case import write_case
from support import DONE, FAILED, PROGRAM, USAGE, ProgramTest, run

NEEDS_A_TERMINAL = unittest.skipIf(sys.platform == "win32" or len(PROGRAM) > 1,
                                   "needs a terminal of this machine")

STREAMS = "appModel.FlowSheetObjects.Streams"


def shell(*lines):
    return run("shell", "demo", stdin="".join(line + "\n" for line in lines))


class Piped(ProgramTest):
    def test_words_are_those_of_the_program(self):
        for line in ("ls", "ls appModel", f"tree {STREAMS} --depth 1", f"attrs {STREAMS}",
                     f"get {STREAMS}(type)", f"find {STREAMS}.*"):
            with self.subTest(line):
                word, *rest = line.split(" ")
                self.check(shell(line), DONE, run(word, "demo", *rest).out, "")

    def test_no_prompt_and_no_end_of_line_needed(self):
        self.check(run("shell", "demo", stdin="pwd\nls"), DONE, "\n" + run("ls", "demo").out, "")

    def test_moving(self):
        result = shell("cd appModel", "pwd", "cd FlowSheetObjects.Streams", "pwd", "ls", "cd ..", "pwd",
                       "cd", "pwd")
        streams = run("ls", "demo", STREAMS).out
        self.check(result, DONE, f"appModel\n{STREAMS}\n{streams}appModel.FlowSheetObjects\n\n", "")

    def test_a_path_begins_at_the_top_when_it_does_not_begin_here(self):
        result = shell(f"cd {STREAMS}", "get appModel(type)", "cd appModel", "pwd")
        self.check(result, DONE, "appModel\nappModel\n", "")

    def test_going_up_from_the_top_stays(self):
        self.check(shell("cd ..", "pwd"), DONE, "\n", "")

    def test_mistakes_do_not_end_it(self):
        result = shell("nonsense", "get", "get nowhere", 'get "open', "cd nowhere", "get a[b", "",
                       "   ", "get appModel(type)")
        self.check(result, DONE, "appModel\n")
        for text in ("nonsense", "no such node: nowhere", 'a quote is not closed: get "open',
                     "Parse error, ] expected in: a[b"):
            self.assertIn(text, result.err)

    def test_code_is_that_of_the_last_word(self):
        self.check(shell("get nowhere"), FAILED, "")
        self.check(shell("nonsense"), USAGE, "")
        self.check(shell("get nowhere", "pwd"), DONE, "\n")

    def test_quit_ends_it(self):
        for word in ("quit", "exit"):
            self.check(shell("pwd", word, "ls"), DONE, "\n", "")

    def test_single_quotes_hold_together_and_double_quotes_stay(self):
        self.check(shell('path "a b".c'), DONE, run("path", '"a b".c').out, "")
        self.check(shell("path 'a b.c'"), DONE, run("path", "a b.c").out, "")
        self.check(shell("path 'a[b=\"x y\"]'"), DONE, run("path", 'a[b="x y"]').out, "")

    def test_help(self):
        result = self.check(shell("help"), DONE, err="")
        for word in ("cd", "pwd", "save", "quit", "get"):
            self.assertRegex(result.out, rf"(?m)^  {word} ")
        self.assertIn("Usage: get ", self.check(shell("help get"), DONE, err="").out)
        self.assertNotIn("CASE TEXT", shell("help get").out)
        self.assertIn("Usage: collect add ", self.check(shell("help collect add"), DONE, err="").out)
        self.assertIn("no such word: gett; near: get", self.check(shell("help gett"), USAGE, "").err)

    def test_explain_is_of_the_neutral_view(self):
        told = run("explain", "demo", "Flowsheet.Stream(Raw Gas).MolarFlow").out
        self.check(shell("explain 'Flowsheet.Stream(Raw Gas).MolarFlow'"), DONE, told, "")
        neutral = run("shell", "demo", "--neutral", stdin="cd 'Flowsheet.Stream(Raw Gas)'\nexplain MolarFlow\n")
        self.check(neutral, DONE, told, "")
        self.check(shell(f"explain '{STREAMS}.Raw Gas.Molar Flow'"), FAILED, "")

    def test_carriage_returns_are_taken_off(self):
        self.check(run("shell", "demo", stdin="cd appModel\r\npwd\r\n"), DONE, "appModel\n", "")


class Solving(ProgramTest):
    def test_a_store_after_a_solve_solves_again(self):
        path = STREAMS + ".Sales Gas.Molar Flow"
        feed = STREAMS + ".Raw Gas.Molar Flow"
        alone = shell(f"set '{feed}' 1200", f"get '{path}'")
        self.check(shell("solve", f"set '{feed}' 1200", f"get '{path}'"), DONE,
                   "Solve is complete\n" + alone.out, "")
        self.assertGreater(float(alone.lines[1]), 900)


FLOW = STREAMS + ".Raw Gas.Molar Flow"
TEMPERATURE = STREAMS + ".Raw Gas.Temperature"
COMPOSITION = STREAMS + ".Raw Gas.Comp Mole Frac"
FRACTIONS = [0.02, 0.02, 0.75, 0.1, 0.06, 0.03, 0.019, 0.001]  # of the case as it comes


class Undo(ProgramTest):
    def values(self, result, paths):
        """The values of the paths in the last lines, to the last digit."""
        return [json.loads(line)["value"] for line in result.lines[-len(paths):]]

    def test_nothing_to_undo(self):
        self.check(shell("undo"), FAILED, "", "nothing to undo\n")
        self.check(shell("get appModel", f"set '{STREAMS}.Sales Gas.Molar Flow' 1", "undo"), FAILED, "\n")

    def test_line_by_line(self):
        result = self.check(shell(f"set '{FLOW}' 1200", f"set '{FLOW}' 1300 --set '{TEMPERATURE}' 40", "undo", "undo"),
                            DONE, err="")
        self.assertEqual([f"{FLOW}\t1200", f"{TEMPERATURE}\t30", f"{FLOW}\t1000"], result.lines[-3:])

    def test_the_case_is_solved_again(self):
        sales = f"get '{STREAMS}.Sales Gas.Molar Flow'"
        result = shell("solve", sales, f"set '{FLOW}' 1200", sales, f"solve --set '{FLOW}' 900", "undo", "undo", sales)
        self.check(result, DONE, err="")
        self.assertNotEqual(result.lines[1], result.lines[3])
        self.assertEqual(result.lines[1], result.lines[-1])

    def test_a_value_that_was_not_there_goes_again(self):
        result = shell(f"set '{TEMPERATURE}' ''", f"set '{TEMPERATURE}' 40", "undo")
        self.check(result, FAILED, f"\n40\n{TEMPERATURE}\t\n")
        self.assertTrue(result.err.endswith("stream Raw Gas: temperature is not specified\n"), result)
        result = shell(f"set '{TEMPERATURE}' ''", f"set '{TEMPERATURE}' 40", "undo", "undo")
        self.check(result, DONE, f"\n40\n{TEMPERATURE}\t\n{TEMPERATURE}\t30\n")

    def test_a_line_that_changed_nothing_is_passed_over(self):
        result = shell(f"set '{FLOW}' 1200", f"set '{FLOW}' 1200", f"set '{STREAMS}.Sales Gas.Molar Flow' 1", "undo")
        self.check(result, DONE, f"1200\n1200\n{FLOW}\t1000\n")

    def test_fractions_have_all_their_digits_again(self):
        elements = [f"{COMPOSITION}.{name}" for name in run("ls", "demo", COMPOSITION).lines]
        get = "get " + " ".join(f"'{each}'" for each in elements) + " --json"
        for line in (f"set '{COMPOSITION}.Methane' 0.5", f"set '{COMPOSITION}' 1,1,1,1,1,1,1,0",
                     f"set '{elements[0]}' 0.1 --set '{elements[1]}' 0.7"):
            with self.subTest(line):
                now = self.values(shell(line, get), elements)
                self.assertNotIn(FRACTIONS[1], now)
                self.assertEqual(FRACTIONS, self.values(self.check(shell(line, "undo", get), DONE), elements))

    def test_the_unit_is_the_former_one(self):
        result = self.check(shell(f"set '{TEMPERATURE}' '95 F'", "undo", f"get '{TEMPERATURE}' --json"), DONE, err="")
        self.assertEqual(("35", f"{TEMPERATURE}\t30"), (shell(f"set '{TEMPERATURE}' '95 F'", f"get '{TEMPERATURE}' --unit C").lines[1], result.lines[1]))
        record = json.loads(result.lines[-1])
        self.assertEqual((30, "C"), (record["value"], record["uom"]))

    def test_in_a_hold_nothing_is_solved(self):
        result = self.check(shell("hold", f"set '{COMPOSITION}.Methane' 0.5", f"set '{FLOW}' 1200", "undo", "undo",
                                  f"get '{COMPOSITION}.Methane' '{STREAMS}.Sales Gas.Molar Flow'", "release"), DONE, err="")
        self.assertEqual([f"{FLOW}\t1000", f"{COMPOSITION}.Methane\t0.75", "0.75", "", "Solve is complete"],
                         result.lines[-5:])

    def test_what_is_stored_through_a_selection(self):
        chosen = self.folder / "chosen.xml"
        self.check(run("collect", "add", chosen, "demo", FLOW), DONE)
        self.check(run("collect", "add", chosen, "demo", TEMPERATURE, "--unit", "K"), DONE)
        self.check(run("collect", "add", chosen, "demo", COMPOSITION + ".Methane"), DONE)
        get = f"get '{FLOW}' '{TEMPERATURE}' '{STREAMS}.Sales Gas.Molar Flow'"
        result = self.check(shell("solve", get, f"collect write {chosen} 1200 310 0.5 --csv", "undo", get, "undo"), FAILED)
        self.assertEqual(f"{COMPOSITION}: the fractions sum to 0.75 and are normalised\nnothing to undo\n", result.err)
        undone = [f"{FLOW}\t1000", f"{TEMPERATURE}\t303.15", f"{COMPOSITION}.Methane\t0.75"]
        self.assertEqual(undone + result.lines[1:4], result.lines[-6:])

    def test_what_is_stored_through_a_selection_in_a_hold(self):
        chosen = self.folder / "held.xml"
        self.check(run("collect", "add", chosen, "demo", FLOW), DONE)
        result = shell("solve", "hold", f"collect write {chosen} 1200 --csv", f"get '{STREAMS}.Sales Gas.Molar Flow'",
                       "undo", "release")
        self.check(result, DONE)
        self.assertEqual(["", f"{FLOW}\t1000", "Solve is complete"], result.lines[-3:])

    def test_in_the_neutral_view(self):
        path = "Flowsheet.Stream(Raw Gas).Temperature"
        result = run("shell", "demo", "--neutral", stdin=f"set '{path}' 40\nundo\nget '{path}' --json\n")
        self.check(result, DONE, err="")
        self.assertEqual(30, json.loads(result.lines[-1])["value"])
        self.assertEqual(["40", f"{path}\t30"], result.lines[:2])


class Completion(ProgramTest):
    def complete(self, line):
        return run("complete", "demo", line)

    def test_words(self):
        self.check(self.complete("fi"), DONE, "find\n", "")
        self.check(self.complete("p"), DONE, "publish\npath\npwd\n", "")

    def test_nodes(self):
        self.check(self.complete("ls app"), DONE, "appModel\n", "")
        self.check(self.complete("get appModel.FlowSheetObjects.Str"), DONE, STREAMS + "\n", "")
        self.check(self.complete('get appModel."FlowSheetObjects".Un'), DONE,
                   'appModel."FlowSheetObjects".UnitOps\n', "")

    def test_attributes(self):
        self.check(self.complete("get appModel(ty"), DONE, "appModel(type)\n", "")
        self.check(self.complete("get appModel --attr ty"), DONE, "type\n", "")

    def test_what_is_no_path(self):
        self.check(self.complete("help wa"), DONE, "watch\n", "")
        self.check(self.complete("set appModel --set appM"), DONE, "appModel\n", "")
        self.check(self.complete("collect add chosen.xml appM"), DONE, "appModel\n", "")
        for line in ("undo ", "hold ", "nonsense app", "collect add ", "collect read chosen.xml ", "publish ",
                     "set appModel app", "ls appModel app"):
            self.check(self.complete(line), FAILED, "", "")

    def test_explain_is_of_the_neutral_view(self):
        self.check(self.complete("explain Flowsheet.Stream(Raw"), DONE, 'Flowsheet.Stream("Raw Gas")\n', "")
        self.check(self.complete("explain app"), FAILED, "", "")

    def test_nothing_fits(self):
        self.check(self.complete("ls nonsense.x"), FAILED, "", "")


def port(role, index, name):
    return {"role": role, "index": index, "stream": name}


def endless_case(template, coolers):
    """A feed that goes round through coolers and hardly ever out: its solve takes many seconds. The
    compounds and the feed come from a case of a material stream."""
    feed = {**next(each for each in template["flowsheet"]["objects"] if each["name"] == "Raw Gas"),
            "name": "Feed"}
    shape = feed["shape"]

    def stream(name):
        return {"name": name, "type": "MaterialStreamObject", "shape": shape}

    def number(value, **spec):
        return {"spec": spec, "value": value}

    mixer = {"name": "Mixer", "type": "MixerOpObject",
             "ports": [port("feed", 0, "Feed"), port("feed", 1, "Back"), port("product", 0, "S0")]}
    tee = {"name": "Tee", "type": "TeeOpObject",
           "ports": [port("feed", 0, f"S{coolers}"), port("product", 0, "Out"), port("product", 1, "Back")],
           "variables": {"Flow Ratio": {"spec": {"dimensions": [{"count": 2}]}, "values": [None, 0.9999],
                                        "states": ["missing", "specified"]}}}
    objects = [feed, stream("Back"), stream("Out"), stream("S0"), mixer, tee]
    for i in range(coolers):
        drop = number(0, quantity="PressureDifference")
        warm = number(20 if i % 2 else -20, quantity="Temperature")
        objects += [stream(f"S{i + 1}"),
                    {"name": f"E{i}", "type": "CoolerOpObject",
                     "variables": {"Pressure Drop": drop, "Product Temperature": warm},
                     "ports": [port("feed", 0, f"S{i}"), port("product", 0, f"S{i + 1}")]}]
    return {"format": "casehost case", "version": 1, "name": "endless", "solveTurns": 1000,
            "compounds": template["compounds"], "shapes": {shape: template["shapes"][shape]},
            "flowsheet": {"objects": objects}}


class OnTerminal(ProgramTest):
    locale = "C.UTF-8"
    case = "demo"

    def setUp(self):
        import pty

        pid, self.terminal = pty.fork()
        if pid == 0:
            os.environ.update(TERM="dumb", LC_ALL=self.locale)
            os.execv(PROGRAM[0], PROGRAM + ["shell", str(self.case)])
        self.pid = pid
        self.seen = ""
        self.until("Top> ")

    def tearDown(self):
        os.close(self.terminal)
        os.waitpid(self.pid, 0)

    def until(self, text):
        """Reads on until the terminal has shown the text."""
        start = len(self.seen)
        end = time.monotonic() + 30
        while text not in self.seen[start:]:
            self.assertLess(time.monotonic(), end, f"{text!r} in {self.seen[start:]!r}")
            if select.select([self.terminal], [], [], 0.1)[0]:
                self.seen += os.read(self.terminal, 4096).decode()
        return self.seen[start:]

    def type(self, text):
        os.write(self.terminal, text.encode())


@NEEDS_A_TERMINAL
class Typed(OnTerminal):
    def test_tab_completes_a_node(self):
        self.type("get appM\t(ty\t\n")
        self.assertIn("get appModel(type)", self.until("\r\nappModel\r\n"))

    def test_tab_lists_what_may_follow(self):
        self.type("ls appModel.FlowSheetObjects.\t\t")
        shown = self.until("appModel.FlowSheetObjects.Reactions")
        for name in ("Streams", "UnitOps", "Utilities"):
            self.assertIn("appModel.FlowSheetObjects." + name, shown)
        self.type("\nquit\n")

    def test_tab_leaves_an_open_quote(self):
        self.type(f"get '{STREAMS}.Raw G\t.Temp\t'\n")
        self.until("\r\n30\r\n")

    def test_interrupt_drops_the_line(self):
        self.type("cd appModel\n")
        self.until("appModel> ")
        self.type("get nonsense")
        self.until("get nonsense")
        self.type("\x03")
        self.until("appModel> ")
        self.type("pwd\n")
        self.assertNotIn("no such", self.until("\r\nappModel\r\n"))

    def test_a_solve_tells_the_share_that_is_done(self):
        self.type("solve\n")
        shown = self.until("Solve is complete\r\nTop> ")
        shares = [int(share) for share in re.findall(r"\rsolving, step \d+, +(\d+) %", shown)]
        self.assertGreater(len(shares), 1, shown)
        self.assertEqual(sorted(shares), shares)
        self.assertLess(0, shares[0])
        self.assertLess(shares[-1], 100)

    def test_history_comes_back(self):
        self.type("cd appModel\n")
        self.until("appModel> ")
        self.type("pwd\n")
        self.until("\r\nappModel\r\n")
        self.type("\x10\n")
        self.until("\r\nappModel\r\n")


@NEEDS_A_TERMINAL
class Leaving(OnTerminal):
    QUESTION = "Changes are not saved. Leave all the same? [y/N] "

    def ends(self):
        """Reads to the end of the program, which it comes to."""
        end = time.monotonic() + 30
        while select.select([self.terminal], [], [], max(0, end - time.monotonic()))[0]:
            try:
                shown = os.read(self.terminal, 4096)
            except OSError:  # how a terminal ends whose program is gone
                return
            if not shown:
                return
            self.seen += shown.decode()
        self.fail(f"it goes on: {self.seen!r}")

    def test_what_is_not_saved_is_asked_about(self):
        for leave in ("quit\n", "exit\n", "\x04"):
            self.type(f"set '{FLOW}' 1200\n")
            self.until("\r1200\r\nTop> ")
            for no in ("n\n", "\n", "\x03"):
                self.type(leave)
                self.until(self.QUESTION)
                self.type(no)
                self.until("Top> ")
        self.type("quit\n")
        self.until(self.QUESTION)
        self.type("y\n")
        self.ends()

    def test_the_end_of_the_input_is_an_answer(self):
        self.type(f"set '{FLOW}' 1200\n")
        self.until("\r1200\r\nTop> ")
        self.type("\x04")
        self.until(self.QUESTION)
        self.type("\x04")
        self.ends()

    def test_nobody_is_asked_without_changes(self):
        self.type(f"get '{FLOW}'\n")
        self.until("\r\n1000\r\n")
        self.type("quit\n")
        self.ends()
        self.assertNotIn(self.QUESTION, self.seen)

    def test_nobody_is_asked_about_what_was_refused(self):
        self.type(f"set '{FLOW}' many\n")
        self.until("not a number: many\r\n")
        self.type("quit\n")
        self.ends()
        self.assertNotIn(self.QUESTION, self.seen)

    def test_nobody_is_asked_about_what_is_saved(self):
        self.type(f"set '{FLOW}' 1200\n")
        self.until("\r1200\r\nTop> ")
        self.type(f"save {self.folder / 'left.json'}\n")
        self.until("Top> ")
        self.type("quit\n")
        self.ends()
        self.assertNotIn(self.QUESTION, self.seen)


@NEEDS_A_TERMINAL
class Interrupted(OnTerminal):
    """^C while something is at work: that ends, and the shell goes on."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        template = cls.folder / "template.json"
        run("solve", "demo", "--save", template)
        cls.case = write_case(cls.folder, "endless.json",
                              endless_case(json.loads(template.read_text(encoding="utf-8")), 2000))

    def interrupt(self, line, once_shown):
        """What is shown from the ^C to the next prompt."""
        self.type(line + "\n")
        self.until(once_shown)
        self.type("\x03")
        shown = self.until("Top> ")
        self.type("get appModel(type)\n")
        self.until("\r\nappModel\r\nTop> ")
        return shown

    def test_a_solve(self):
        for _ in range(2):
            self.assertIn("Solve did not complete\r\nthe solve was stopped\r\n",
                          self.interrupt("solve", "solving, step 2"))

    def test_the_solve_after_a_store(self):
        file = self.folder / "stopped.json"
        shown = self.interrupt(f"set {STREAMS}.Feed.Temperature 41 --save {file}", "solving, step 2")
        self.assertIn(f"{file}: not saved\r\n", shown)
        self.assertIn("41\r\nthe solve was stopped\r\n", shown)
        self.assertFalse(file.exists())
        # The store stands, and saving what there is remains the user's choice.
        self.type(f"save {file}\n")
        self.until("Top> ")
        self.check(run("get", file, f"{STREAMS}.Feed.Temperature"), DONE, "41\n")

    def test_the_solve_of_a_watch(self):
        shown = self.interrupt(f"watch {STREAMS}.Feed.Temperature --set {STREAMS}.Feed.Temperature 42",
                               "\t42\tC\r\n")
        self.assertIn("Solve did not complete\r\nthe solve was stopped\r\n", shown)

    def test_a_solve_is_a_change_that_is_asked_about(self):
        self.interrupt("solve", "solving, step 2")
        self.type("quit\n")
        self.until("Changes are not saved. Leave all the same? [y/N] ")

    def test_a_store_after_it_solves_again(self):
        self.interrupt("solve", "solving, step 2")
        self.interrupt(f"set {STREAMS}.Feed.Temperature 43", "solving, step 2")

    def test_a_long_answer(self):
        self.assertIn("interrupted\r\n", self.interrupt(f"tree {STREAMS}", "S1  "))

    def test_reading_paths_from_the_keyboard(self):
        import termios

        self.type("get -\n")
        end = time.monotonic() + 30
        while not termios.tcgetattr(self.terminal)[3] & termios.ICANON:  # the line is still edited
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)
        self.assertIn("interrupted\r\n",
                      self.interrupt(f"{STREAMS}(type)", "\r\nStreams\r\n"))


class TypedInPlainLocale(Typed):
    locale = "C"

    def test_letters_beyond_ascii_can_be_typed(self):
        self.type("ls Größe\n")
        self.until("no such node: Größe\r\n")


if __name__ == "__main__":
    unittest.main()
