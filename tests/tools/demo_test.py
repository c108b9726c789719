# SPDX-License-Identifier: Apache-2.0
"""The tour: every line that it shows does what it shows."""

import unittest

from support import DONE, ProgramTest, run


class Demo(ProgramTest):
    def test_every_step_does_what_it_says(self):
        self.check(run("demo"), DONE)

    def test_the_same_lines_typed_into_the_shell_write_the_same(self):
        shown = run("demo")
        typed = [line.split("> ", 1)[1] for line in shown.lines
                 if line.startswith(("Top> ", "FlowSheetObjects> "))]
        self.assertGreater(len(typed), 10)
        played = run("shell", "demo", stdin="".join(line + "\n" for line in typed))
        self.check(played, DONE, err=shown.err)
        data = [line for line in shown.lines
                if line and not line.startswith(("$ ", "# ", "Top> ", "FlowSheetObjects> "))]
        self.assertEqual(data, played.lines)

    def test_it_shows_a_change_a_refusal_and_a_path_error(self):
        shown = run("demo")
        self.assertIn("Value not stored; it is calculated\n", shown.err)
        self.assertIn("no such node: ", shown.err)
        self.assertIn("Parse error, ] expected in: ", shown.err)
        flows = [shown.lines[at + 1] for at, line in enumerate(shown.lines)
                 if line.endswith("get 'Streams.Sales Gas.Molar Flow'")]
        self.assertEqual(2, len(flows))
        self.assertGreater(float(flows[1]), float(flows[0]))


if __name__ == "__main__":
    unittest.main()
