"""The shell: piped lines, and a terminal where there is one."""

import os
import select
import sys
import time
import unittest

from support import DONE, FAILED, PROGRAM, USAGE, ProgramTest, run

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
        self.check(shell("pwd", "quit", "ls"), DONE, "\n", "")

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


class Completion(ProgramTest):
    def complete(self, line):
        return run("complete", "demo", line)

    def test_words(self):
        self.check(self.complete("fi"), DONE, "find\n", "")
        self.check(self.complete("p"), DONE, "path\npwd\n", "")

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


@unittest.skipIf(sys.platform == "win32" or len(PROGRAM) > 1, "needs a terminal of this machine")
class Typed(ProgramTest):
    locale = "C.UTF-8"

    def setUp(self):
        import pty

        pid, self.terminal = pty.fork()
        if pid == 0:
            os.environ.update(TERM="dumb", LC_ALL=self.locale)
            os.execv(PROGRAM[0], PROGRAM + ["shell", "demo"])
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


class TypedInPlainLocale(Typed):
    locale = "C"

    def test_letters_beyond_ascii_can_be_typed(self):
        self.type("ls Größe\n")
        self.until("no such node: Größe\r\n")


if __name__ == "__main__":
    unittest.main()
