# SPDX-License-Identifier: Apache-2.0
"""Names, values and arguments with control characters, and what is written of them."""

import json
import re
import unittest

from captured import captured
from small_case import STREAMS, array, of_kind, small_case, stream, write_case
from support import DONE, FAILED, PROGRAM, UNREADABLE, USAGE, ProgramTest, run

# All but line feed, which ends lines, and tab, which stands between the fields of some.
CONTROLS = re.compile(rb"[\x00-\x08\x0b-\x1f\x7f]|\xc2[\x80-\x9f]")

LETTERS = {"\n": "\\n", "\r": "\\r", "\t": "\\t"}


def written(name):
    """What the program's help promises, for names without a backslash."""
    text = ""
    for c in name:
        if ord(c) < 0x20 or 0x7f <= ord(c) < 0xa0:
            c = LETTERS.get(c) or "".join(f"\\x{byte:02x}" for byte in c.encode())
        text += c
    return text


# Each control character there is; a zero ends a text and can't be part of one.
EACH = [f"S{n:02x}{chr(n)}e" for n in [*range(1, 0x20), *range(0x7f, 0xa0)]]
# Name and line.
BACKSLASHES = [("C:\\Users", "C:\\Users"), ("a\\nb", "a\\x5cnb"), ("a\\x1bb", "a\\x5cx1bb"),
               ("\\\n", "\\\\n"), ("\\\\t", "\\\\x5ct")]
NAMES = EACH + [name for name, _ in BACKSLASHES] + ["\x1b.dot\x1b", "Größe\u009b", "\x1b[31mred"]
LINES = {**{name: written(name) for name in NAMES}, **dict(BACKSLASHES)}

ESC, CSI = "\x1bc", "\u009b2J"


def odd_case():
    case = small_case()
    compounds = ("text", ["Methane", "n\x1bB", "t\tb"])
    objects = [stream(name, n) for n, name in enumerate(NAMES)]
    objects.append(stream("Odd", 1, **{
        f"Text{ESC}": of_kind("text", f"a{ESC}\tb\n{CSI}\\n"),
        f"Mode{CSI}": of_kind("enumeration", f"Slow{ESC}", options=["Fast", f"Slow{ESC}"]),
        f"Fractions{ESC}": array([compounds], [0.5, 0.25, 0.25])}))
    objects.append({"name": f"Mixer{ESC}", "type": "MixerOpObject", "status": "warning",
                    "variables": {f"In{ESC}": of_kind("attachment", f"S1b{chr(0x1b)}e")}})
    case["flowsheet"]["objects"] = objects
    return case


class ControlCharacters(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = write_case(cls.folder, "odd.json", odd_case())

    def run_clean(self, *arguments, stdin=b"", code=DONE):
        """Runs with arguments of any bytes; nothing that it writes has a control character."""
        done = captured(PROGRAM + [a if isinstance(a, bytes) else str(a) for a in arguments],
                        input=stdin, timeout=600)
        for text in (done.stdout, done.stderr):
            self.assertIsNone(CONTROLS.search(text), (arguments, done))
        if code is not None:
            self.assertEqual(code, done.returncode, (arguments, done))
        return done.stdout.decode(), done.stderr.decode()

    def test_names_stand_on_one_line(self):
        out, _ = self.run_clean("ls", self.case, STREAMS)
        self.assertEqual([LINES[name] for name in NAMES] + ["Odd"], out.splitlines())

    def test_what_find_writes_get_reads(self):
        out, _ = self.run_clean("find", self.case, STREAMS + ".*.Temperature")
        values = [str(n) for n in range(len(NAMES))] + ["1"]
        self.assertEqual(len(values), len(out.splitlines()))
        self.assertEqual(values, run("get", self.case, "-", stdin=out).lines)
        self.assertEqual(values, run("get", self.case, *out.splitlines()).lines)

    def test_what_ls_and_table_write_as_json_get_reads(self):
        paths = [json.loads(line) for line in
                 self.run_clean("ls", self.case, STREAMS, "--json")[0].splitlines()]
        self.assertEqual(NAMES + ["Odd"], [each["name"] for each in paths])
        rows = [json.loads(line) for line in
                self.run_clean("table", self.case, STREAMS + ".*", "Temperature", "--json")[0]
                .splitlines()]
        self.assertEqual(NAMES + ["Odd"], [row["name"] for row in rows])
        for records in (paths, rows):
            out = run("get", self.case, "--attr", "id", "--json",
                      *[record["path"] for record in records])
            self.assertEqual([record["name"] for record in records],
                             [json.loads(line)["value"] for line in out.lines])

    def test_raw_bytes_are_read_too(self):
        path = f'{STREAMS}."\x1b[31mred".Temperature'
        if len(PROGRAM) > 1:
            self.skipTest("the emulator takes no such arguments")
        self.check(run("get", self.case, path), DONE, f"{NAMES.index(chr(0x1b) + '[31mred')}\n", "")

    def test_headings_and_cells(self):
        odd = STREAMS + ".Odd"
        columns = ["Text\\x1bc", "Mode\\xc2\\x9b2J", "Fractions\\x1bc"]
        plain, _ = self.run_clean("table", self.case, odd, *columns)
        self.assertNotIn("\t", plain)
        self.assertEqual(2, len(plain.splitlines()))
        cell = "a\\x1bc\\tb\\n\\xc2\\x9b2J\\x5cn"
        for text in (cell, "Slow\\x1bc", *columns[:2], "Fractions\\x1bc.n\\x1bB",
                     "Fractions\\x1bc.t\\tb"):
            self.assertIn(text, plain)
        # Line ends have their own way there.
        table, _ = self.run_clean("table", self.case, odd, *columns[:2], "--csv")
        self.assertEqual(f'Name,{columns[0]},{columns[1]}\nOdd,"{cell}",Slow\\x1bc\n'
                         .replace("\\tb\\n", "\\tb\n"), table)
        record = json.loads(self.run_clean("table", self.case, odd, *columns, "--json")[0])
        for heading, shown in record["cells"].items():
            value = json.loads(run("get", self.case, f"{odd}.{heading}", "--json").out)["value"]
            self.assertEqual(value, shown["value"], heading)
        self.assertEqual(f"a{ESC}\tb\n{CSI}\\n", record["cells"][columns[0]]["value"])

    def test_every_word(self):
        odd = STREAMS + ".Odd"
        name = STREAMS + ".S1b\\x1be"
        lines = {
            ("tree", "appModel"): "S1b\\x1be",
            ("tree", "appModel", "--all", "--attachments"): "In\\x1bc -> S1b\\x1be",
            ("tree", "appModel", "--json"): "\\u009b",
            ("attrs", odd + ".Text\\x1bc"): "value\ta\\x1bc\\tb",
            ("attrs", odd + ".Mode\\xc2\\x9b2J", "--json"): "\\u001b",
            ("get", odd + ".Text\\x1bc"): "a\\x1bc\\tb\\n\\xc2\\x9b2J\\x5cn\n",
            ("get", odd + ".Mode\\xc2\\x9b2J(id)"): "Mode\\xc2\\x9b2J\n",
            ("find", STREAMS + ".*[Temperature=26]"): written(NAMES[26]),
            ("find", odd + ".*[(value)=\"Slow\\x1bc\"]"): "Mode\\xc2\\x9b2J",
            ("find", odd + ".*", "--json"): "\\u009b",
            ("set", name + ".Temperature", "5"): "5\n",
            ("set", odd + ".Text\\x1bc", "x\\ny"): "x\\x5cny\n",
            ("watch", name + ".Temperature", "--set", name + ".Temperature", "5"): name,
            ("solve",): "",
            ("path", "a\x1b.\"b\\x9b\""): "a\\x1b",
            ("complete", f"get {STREAMS}.S1b"): "S1b\\x1be",
            ("complete", f"get {STREAMS}.S1b\\x1be.Temp"): STREAMS + ".S1b\\x1be.Temperature",
            ("complete", f"get {odd}.Text\\x1bc --attr mon"): "moniker\n",
        }
        for (word, *arguments), text in lines.items():
            case = [] if word == "path" else [self.case]
            out, _ = self.run_clean(word, *case, *arguments, code=None)
            self.assertIn(text, out, (word, *arguments))

    def test_neutral_words(self):
        for arguments in (("tree", self.case, "Flowsheet", "--neutral", "--depth", "1"),
                          ("ls", self.case, "Flowsheet", "--neutral"),
                          ("ls", self.case, "Flowsheet", "--neutral", "--json"),
                          ("find", self.case, "Flowsheet.*.Name", "--neutral"),
                          ("table", self.case, "Flowsheet.*", "Name", "--neutral")):
            out, _ = self.run_clean(*arguments)
            self.assertIn("S1b\\\\x1be" if "--json" in arguments else "S1b\\x1be", out)
        path = "Flowsheet.Stream(S1b\\x1be).Name"
        self.assertEqual("S1b\\x1be\n", self.run_clean("get", self.case, path, "--neutral")[0])
        self.assertIn(f"path\t{path}\n", self.run_clean("explain", self.case, path)[0])

    def test_the_shell(self):
        lines = [f"cd '{STREAMS}.S1b\\x1be'", "pwd", "get Temperature", "get Nonsense", "bad 'quote",
                 "nonsense\x1b", "get x\u009b"]
        out, err = self.run_clean("shell", self.case, stdin="\n".join(lines).encode(), code=None)
        self.assertEqual(f"{STREAMS}.S1b\\x1be\n26\n", out)
        for text in ("no such word: nonsense\\x1b", "no such node: x\\xc2\\x9b",
                     "a quote is not closed: bad 'quote"):
            self.assertIn(text, err)

    def test_messages(self):
        name = f"{STREAMS}.S1b\\x1b"
        rows = [
            (FAILED, ["get", self.case, f"{STREAMS}.S1b\x1b"],
             f"no such node: {name}\n  found: {STREAMS}\n  near: S1b\\x1be"),
            (FAILED, ["get", self.case, "a\x1b["], "Parse error, ] expected in: a\\x1b[\n"),
            (FAILED, ["get", self.case, f"{STREAMS}.S1b\\x1be.Temperature", "--unit", "\x1bK"],
             f"{STREAMS}.S1b\\x1be.Temperature: "),
            (FAILED, ["find", self.case, "\x1b"], "nothing matches: \\x1b\n"),
            (FAILED, ["set", self.case, STREAMS + ".Odd.Temperature", "\x1b"],
             f"{STREAMS}.Odd.Temperature: not a number: \\x1b\n"),
            (FAILED, ["classes", "QSIMaterialStrea\x1b"], "no such class: QSIMaterialStrea\\x1b\n"),
            (UNREADABLE, ["ls", self.folder / "no\x1b.json"], "no\\x1b.json"),
            (USAGE, ["ls", self.case, "a", "[b\x1b]"], "[b\\x1b]"),
            (USAGE, ["\x1b"], "fixtop: no such word: \\x1b\n"),
            (USAGE, ["ls", self.case, "--\x1b"], "--\\x1b"),
            (USAGE, ["table", self.case, "a", "b", "--unit", "\x1b=K"], "no such column: \\x1b=K"),
        ]
        if len(PROGRAM) > 1:
            self.skipTest("the emulator takes no such arguments")
        for code, arguments, text in rows:
            _, err = self.run_clean(*arguments, code=code)
            self.assertIn(text, err)

    @unittest.skipIf(len(PROGRAM) > 1, "arguments are no bytes there")
    def test_bytes_that_are_no_text(self):
        _, err = self.run_clean("get", self.case, b"a\x9b\xff\xc3", code=FAILED)
        self.assertIn("no such node: a\\x9b\\xff\\xc3\n", err)
        _, err = self.run_clean("get", self.case, "-", stdin=b"a\x9b\n", code=FAILED)
        self.assertIn("no such node: a\\x9b\n", err)

    def test_problems_of_files(self):
        case = odd_case()
        case["flowsheet"]["objects"].append(stream(f"S1b{chr(0x1b)}e", 1))
        file = write_case(self.folder, "twice.json", case)
        _, err = self.run_clean("ls", file, code=UNREADABLE)
        self.assertIn("S1b\\x1be", err)
        library = self.file("library.xml", "<QZClassLibrary><Class Name='\u009b2J'>"
                            "<Superclass>a\tb\u0085</Superclass></Class></QZClassLibrary>")
        out, _ = self.run_clean("classes", "--library", library)
        self.assertEqual("\\xc2\\x9b2J\n", out)
        out, _ = self.run_clean("classes", "\\xc2\\x9b2J", "--library", library)
        self.assertIn("superclass\ta\\tb\\xc2\\x85\n", out)


if __name__ == "__main__":
    unittest.main()
