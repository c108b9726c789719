# SPDX-License-Identifier: Apache-2.0
"""Command lines: help, versions, mistakes, and cases that can't be read."""

import errno
import json
import os
import pathlib
import re
import subprocess
import unittest

from small_case import small_case, write_case
from support import DONE, FAILED, PROGRAM, UNREADABLE, USAGE, ProgramTest, run

WORDS = ["ls", "tree", "attrs", "get", "find", "table", "set", "solve", "watch", "path", "shell",
         "demo", "complete", "explain", "classes", "streams"]
FULL_DEVICE = pathlib.Path("/dev/full")


class Usage(ProgramTest):
    def test_help_names_every_word(self):
        result = self.check(run("--help"), DONE, err="")
        for word in WORDS:
            self.assertRegex(result.out, rf"(?m)^  {word} ", word)

    def test_each_word_has_help_of_its_own(self):
        for word in WORDS:
            with self.subTest(word):
                result = self.check(run(word, "--help"), DONE, err="")
                self.assertIn(f"Usage: fixtop {word} ", result.out)

    def test_version(self):
        project = pathlib.Path(os.environ["FIXTOP_SOURCE"], "CMakeLists.txt").read_text()
        version = re.search(r"^project\(fixtop VERSION (\d+\.\d+\.\d+) ", project, re.M)[1]
        self.check(run("--version"), DONE, f"fixtop {version}\n", "")

    def test_wrong_lines_end_with_2_and_usage(self):
        lines = [[], ["nonsense"], ["--nonsense"], ["ls"], ["ls", "demo", "a", "b"],
                 ["ls", "demo", "--nonsense"], ["table", "demo", "x"],
                 ["get", "demo"], ["attrs", "demo"], ["find", "demo"],
                 ["set", "demo", "x"], ["set", "demo"], ["tree", "demo", "--depth", "x"],
                 ["tree", "demo", "--depth", "-1"], ["tree", "demo", "--depth"], ["path"],
                 ["get", "demo", "x", "--unit"], ["solve"], ["watch", "demo"],
                 ["watch", "demo", "x", "--set", "y"], ["demo", "x"], ["shell"],
                 ["shell", "demo", "x"], ["cd", "demo"], ["complete", "demo"], ["explain", "demo"],
                 ["explain", "demo", "x", "--neutral"], ["classes", "a", "b"], ["classes", "--map", "x"],
                 ["solve", "demo", "--neutral"], ["ls", "demo", "--library"],
                 ["ls", "demo", "--map", "x"], ["solve", "demo", "--save", ""],
                 ["set", "demo", "x", "1", "--save", ""]]
        for line in lines:
            with self.subTest(line):
                result = self.check(run(*line), USAGE, out="")
                self.assertTrue(result.err.startswith("fixtop: "), result)
                self.assertIn("Usage: fixtop", result.err)
                self.assertTrue(result.err.endswith("More with --help.\n"), result)

    def test_depth_is_a_whole_number(self):
        for depth in ("-1", "x", "1e400", "2147483648"):
            with self.subTest(depth):
                result = self.check(run("tree", "demo", "--depth", depth), USAGE, out="")
                self.assertIn("--depth", result.err)
                self.assertLess(len(result.err), 200, "no limit of two hundred digits")


class Unreadable(ProgramTest):
    def names_the_file(self, path, *more):
        for word in (["ls"], ["tree"], ["get", "appModel"], ["solve"]):
            result = self.check(run(word[0], path, *word[1:]), UNREADABLE, out="")
            self.assertIn(path.name, result.err)
            for text in more:
                self.assertIn(text, result.err)

    def test_missing_file(self):
        self.names_the_file(self.folder / "missing.json")

    def test_folder(self):
        (self.folder / "folder.json").mkdir()
        self.names_the_file(self.folder / "folder.json")

    def test_empty_file(self):
        for name in ("empty.json", "empty.dwxmz"):
            self.names_the_file(self.file(name, ""))

    def test_no_json(self):
        result = run("ls", self.file("broken.json", '{"name": "x",\n "streams": [}\n'))
        self.check(result, UNREADABLE, out="")
        self.assertRegex(result.err, r"broken\.json.*\b2\b", "names the line")

    def test_json_of_another_shape(self):
        for content in ("[]", "3", "null", '{"foo": 1}'):
            with self.subTest(content):
                self.names_the_file(self.file("shape.json", content))

    def test_json_nested_without_end(self):
        for opening in ("[", '{"a":', '[{"a":'):
            with self.subTest(opening):
                self.names_the_file(self.file("deep.json", opening * 100_000), "deep.json:1: /",
                                    "nested deeper than 64 levels")

    def test_flowsheet_that_is_named_instead_of_held(self):
        inner = {"name": "U", "type": "TemplateOpObject", "flowsheet": "T"}
        outer = {"name": "T", "type": "TemplateOpObject", "flowsheet": {"objects": [inner]}}
        case = {**small_case(), "flowsheet": {"objects": [outer]}}
        self.names_the_file(write_case(self.folder, "ring.json", case),
                            "/flowsheet/objects/0/flowsheet/objects/0/flowsheet: expected an object")

    def test_no_archive(self):
        self.names_the_file(self.file("broken.dwxmz", b"PK\x03\x04" + b"\0" * 60))

    def test_unknown_kind_of_file(self):
        self.names_the_file(self.file("case.txt", "hello"))


class Pipes(ProgramTest):
    def test_closed_pipe_ends_quietly(self):
        program = subprocess.Popen(PROGRAM + ["get", "demo", "-"], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        program.stdout.close()
        try:
            with program.stdin:
                program.stdin.write(b"appModel(type)\n" * 20000)
        except OSError:  # it may have ended before it has read everything
            pass
        self.assertEqual(b"", program.stderr.read())
        self.assertEqual(FAILED, program.wait(timeout=60))
        program.stderr.close()


    @unittest.skipIf(not FULL_DEVICE.exists() or len(PROGRAM) > 1, "needs a device that is full")
    def test_output_that_is_not_written_is_a_failure(self):
        for line in (["ls", "demo"], ["tree", "demo", "--json"], ["demo"], ["--version"]):
            with self.subTest(line), FULL_DEVICE.open("wb") as full:
                done = subprocess.run(PROGRAM + line, stdout=full, stderr=subprocess.PIPE,
                                      timeout=600, check=False)
                self.assertEqual(FAILED, done.returncode, done)
                self.assertEqual("fixtop: the output can't be written: "
                                 f"{os.strerror(errno.ENOSPC)}\n", done.stderr.decode())


# What makes each word that writes JSON fail; MISSING is a file that is not there.
MISSING = "missing.json"
FAILING = {
    "ls": ["demo", "x"], "tree": ["demo", "x"], "attrs": ["demo", "x"], "get": ["demo", "x"],
    "find": ["demo", "x"], "table": ["demo", "x", "y"], "set": ["demo", "x", "1"],
    "solve": ["demo", "--set", "x", "1"], "watch": ["demo", "x"], "explain": ["demo", "x"],
    "report": [MISSING], "streams": [MISSING], "units": [MISSING], "diff": ["demo", MISSING],
    "classes": ["x"], "check-map": ["--case", MISSING], "collect list": [MISSING],
    "collect read": [MISSING, "demo"], "collect write": [MISSING, "demo", "1"],
    "collect watch": [MISSING, "demo"], "collect diff": [MISSING, "demo", "demo"],
    "collect add": [MISSING, "demo", "x"], "collect remove": [MISSING, "x"], "publish": [MISSING, "demo"], "path": ["a[b"],
}


class JsonErrors(ProgramTest):
    def words(self, *group):
        """All words, in full, that have the option."""
        for word in re.findall(r"^  ([a-z][a-z-]+) ", run(*group, "--help").out.split("Subcommands:")[1], re.M):
            shown = run(*group, word, "--help").out
            if "Subcommands:" in shown:
                yield from self.words(*group, word)
            elif "--json" in shown:
                yield " ".join((*group, word))

    def test_every_word_tells_its_failure(self):
        self.assertEqual(set(FAILING), set(self.words()))
        for word, arguments in FAILING.items():
            for unreadable in (False, True):
                given = [MISSING if unreadable and each == "demo" else each for each in arguments]
                with self.subTest(word, arguments=given):
                    plain = run(*word.split(), *given)
                    result = run(*word.split(), *given, "--json")
                    self.assertIn(plain.code, (FAILED, UNREADABLE))
                    self.assertEqual((plain.code, plain.err), (result.code, result.err))
                    record = json.loads(result.lines[-1])
                    self.assertIn(record["error"], result.err)
                    if word != "get" or unreadable:
                        self.assertEqual(result.code, record["exit"])
                    self.assertEqual(1, sum("error" in json.loads(line) for line in result.lines))

    def test_wrong_lines(self):
        for line, text in ((["find", "demo"], "PATTERN or --name is required"), (["ls", "demo", "--nonsense"], "--nonsense"),
                           (["atrs", "demo"], "no such word: atrs; near: attrs"), (["shell", "demo"], "--json")):
            record = json.loads(self.check(run(*line, "--json"), USAGE).out)
            self.assertIn(text, record["error"])
            self.assertEqual(["error", "exit"], list(record))
            self.assertNotIn("\n", record["error"])

    def test_a_path_that_does_not_parse(self):
        result = self.check(run("path", "a[b", "--json"), FAILED)
        self.assertEqual({"error": "Parse error, ] expected in: a[b", "exit": 1}, json.loads(result.out))

    def test_no_error_without_a_failure(self):
        for line in (["ls", "demo"], ["classes"], ["diff", "demo", "demo"]):
            self.assertNotIn('"error"', self.check(run(*line, "--json"), DONE).out)


class UnknownWords(ProgramTest):
    def test_the_nearest_word_is_told(self):
        result = self.check(run("atrs", "demo"), USAGE, "")
        self.assertTrue(result.err.startswith("fixtop: no such word: atrs; near: attrs\n"), result)
        result = self.check(run("zzzzzz", "demo"), USAGE, "")
        self.assertTrue(result.err.startswith("fixtop: no such word: zzzzzz\n"), result)


class PathWord(ProgramTest):
    def test_parse_errors(self):
        cases = {
            "a#": "Parse error, count expected following # in: a#",
            "a#%": "Parse error, count expected following # in: a#%",
            "a[b": "Parse error, ] expected in: a[b",
            "a[b=]": "Parse error, string expected in: a[b=]",
            "(a]": "Parse error, ) expected in: (a]",
            "(.": "Parse error, string expected in: (.",
            "![x]": "Parse error, [ expected in: ![x]",
            "a![x]": "Parse error, [ expected in: a![x]",
            "a[x]|b": "Parse error, [ expected in: a[x]|b",
        }
        for expression, message in cases.items():
            with self.subTest(expression):
                self.check(run("path", expression), FAILED, "", message + "\n")
                self.check(run("find", "demo", expression), FAILED, "", message + "\n")
                self.check(run("get", "demo", expression), FAILED, "", message + "\n")

    def test_expression_in_brackets_reaches_the_parser_whole(self):
        result = self.check(run("path", '[a=b]'), DONE, err="")
        self.assertRegex(result.out, re.compile(r"a.*b", re.S))

    def test_empty_expression_parses(self):
        self.check(run("path", ""), DONE, err="")

    def test_json(self):
        record = json.loads(self.check(run("path", "a.b[c=d]", "--json"), DONE, err="").out)
        self.assertEqual({"path": "a.b[c=d]", "steps": '"a"."b"&["c"="d"]'}, record)


if __name__ == "__main__":
    unittest.main()
