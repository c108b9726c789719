# SPDX-License-Identifier: Apache-2.0
"""When lines are written: many at a time, and each at once for those who look at them."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from small_case import small_case
from support import DONE, FAILED, PROGRAM, ProgramTest

PACKET = 4096  # a longer write would be cut
STREAM = "appModel.FlowSheetObjects.Streams.*"


def packets(arguments, stderr=subprocess.DEVNULL):
    """What a program writes into a pipe that keeps its writes apart."""
    reader, writer = os.pipe2(os.O_DIRECT)
    with subprocess.Popen(PROGRAM + arguments, stdout=writer, stderr=stderr) as program:
        os.close(writer)
        pieces = []
        while piece := os.read(reader, 2 * PACKET):
            pieces.append(piece)
        os.close(reader)
        code = program.wait(timeout=600)
    return code, pieces


def writes(arguments):
    """What a program writes into a file, and the write calls that it makes for it."""
    with tempfile.TemporaryFile() as file, \
         subprocess.Popen(PROGRAM + arguments, stdout=file, stderr=subprocess.DEVNULL) as program:
        os.waitid(os.P_PID, program.pid, os.WEXITED | os.WNOWAIT)
        counts = Path(f"/proc/{program.pid}/io").read_text(encoding="ascii")
        code = program.wait()
        file.seek(0)
        return code, file.read(), int(re.search(r"syscw: (\d+)", counts)[1])


@unittest.skipIf(not hasattr(os, "pipe2") or len(PROGRAM) > 1, "needs pipes that keep writes apart")
class Writes(ProgramTest):
    def case_of(self, streams):
        case = small_case()
        stream = next(s for s in case["flowsheet"]["objects"] if s["type"] == "MaterialStreamObject")
        case["flowsheet"]["objects"] += [{**stream, "name": f"S{i}"} for i in range(streams)]
        return str(self.file(f"{streams}.json", json.dumps(case)))

    def test_a_thousand_lines_more_take_ten_writes_at_most(self):
        """Sanitizers write too, however many lines there are."""
        few, many = self.case_of(2), self.case_of(1002)
        for word, *paths in (["table", STREAM, "Temperature", "Pressure"],
                             ["table", STREAM, "Temperature", "--json"],
                             ["tree", "appModel.FlowSheetObjects.Streams"],
                             ["find", "appModel.FlowSheetObjects.Streams.*.Temperature"]):
            with self.subTest(word, paths=paths):
                code, data, calls = writes([word, many, *paths])
                code_of_few, less, calls_of_few = writes([word, few, *paths])
                self.assertEqual((DONE, DONE), (code, code_of_few))
                lines = data.count(b"\n") - less.count(b"\n")
                self.assertGreaterEqual(lines, 1000)
                self.assertLessEqual(calls - calls_of_few, lines / 100)

    def test_a_watched_change_is_out_at_once(self):
        code, pieces = packets(["watch", "demo", "appModel.FlowSheetObjects.Streams.\"Sales Gas\".\"Molar Flow\"",
                                "--set", "appModel.FlowSheetObjects.Streams.\"Raw Gas\".\"Molar Flow\"", "5000",
                                "--set", "appModel.FlowSheetObjects.Streams.\"Raw Gas\".Temperature", "20"])
        self.assertEqual(DONE, code)
        changes = b"".join(pieces).count(b"\n")
        self.assertGreater(changes, 1)
        self.assertEqual(changes, len(pieces))


class Order(ProgramTest):
    def test_notes_stand_behind_the_data_before_them(self):
        file = self.folder / "both.txt"
        with file.open("wb") as both:
            done = subprocess.run(PROGRAM + ["get", "demo", "appModel(type)", "appModel.none", "appModel(type)"],
                                  stdout=both, stderr=subprocess.STDOUT, timeout=600, check=False)
        self.assertEqual(FAILED, done.returncode)
        self.assertEqual(["appModel", "no such node: appModel.none", "  found: appModel", "appModel"],
                         file.read_text(encoding="utf-8").splitlines())

    def test_a_line_that_is_read_is_answered_before_the_next(self):
        for words, line, answer in ((["shell", "demo"], b"get appModel(type)\n", b"appModel\n"),
                                    (["get", "demo", "-"], b"appModel(type)\n", b"appModel\n")):
            with self.subTest(words), subprocess.Popen(PROGRAM + words, stdin=subprocess.PIPE,
                                                       stdout=subprocess.PIPE) as program:
                for _ in range(3):
                    program.stdin.write(line)
                    program.stdin.flush()
                    self.assertEqual(answer, program.stdout.readline())
                program.stdin.close()
                self.assertEqual(DONE, program.wait(timeout=60))


if __name__ == "__main__":
    unittest.main()
