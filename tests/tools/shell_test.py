# SPDX-License-Identifier: Apache-2.0
"""The shell: piped lines, and a terminal where there is one."""

import json
import os
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

    def test_history_comes_back(self):
        self.type("cd appModel\n")
        self.until("appModel> ")
        self.type("pwd\n")
        self.until("\r\nappModel\r\n")
        self.type("\x10\n")
        self.until("\r\nappModel\r\n")


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
