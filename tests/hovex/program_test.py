# SPDX-License-Identifier: Apache-2.0
"""The command line of the case host, and what it writes into the registry."""

import unittest

from support import CLIENT, EMULATOR, HOVEX, HovexTest, main, native, registered, run, script

CLASS_ID = "{F71F829B-371F-4057-B2BA-9E00F0192646}"
KEY = "HKEY_LOCAL_MACHINE\\Software\\Classes"
NO_CREATE = 'On Error Resume Next\nSet c = CreateObject("Fixtop.Case")\nWScript.Echo Hex(Err.Number)\n'


class CommandLine(unittest.TestCase):
    def test_help(self):
        for word in ("/help", "-help", "/?", "/HELP"):
            code, out, err = run(HOVEX, word)
            self.assertEqual((0, ""), (code, err), word)
            self.assertTrue(out.startswith("usage: hovex [/regserver"), out)

    def test_unknown_argument_is_an_error(self):
        for words, told in ((["/foo"], "/foo"), (["regserver"], "regserver"), (["plant.json"], "plant.json"),
                            (["/help", "/regserver"], "/regserver"), (["/"], "/"),
                            (["/regserverx"], "/regserverx")):
            code, out, err = run(HOVEX, *words)
            self.assertEqual((2, "", f"hovex: unknown argument: {told}"),
                             (code, out, err.split("\n")[0]), words)


@unittest.skipUnless(EMULATOR, "reads the registry of the build's own prefix")
class Registration(HovexTest):
    """Registered by the class; each test leaves it so."""

    def exported(self, name):
        path = self.folder / name
        code, out, err = run("reg", "export", KEY, path, "/y")
        self.assertEqual(0, code, out + err)
        return path.read_text(encoding="utf-16").splitlines()

    def test_nothing_else_is_written(self):
        registered("/unregserver")
        before = self.exported("before.reg")
        registered("/regserver")
        after = self.exported("after.reg")
        registered("/unregserver")
        self.assertEqual(before, self.exported("again.reg"))
        registered("/regserver")
        program = native(HOVEX).replace("\\", "\\\\")
        by_id = f"[{KEY}\\CLSID\\{CLASS_ID}"
        self.assertEqual(
            sorted(["[" + KEY + "\\Fixtop.Case]", '@="Fixtop case"',
                    "[" + KEY + "\\Fixtop.Case\\CLSID]", f'@="{CLASS_ID}"',
                    by_id + "]", '@="Fixtop case"', by_id + "\\ProgID]", '@="Fixtop.Case"',
                    by_id + "\\LocalServer32]", f'@="\\"{program}\\""'], key=str.lower),
            sorted((line for line in self.added(before, after) if line), key=str.lower))

    def test_what_others_have_written_stays(self):
        foreign = [(f"{KEY}\\Fixtop.Case", "/v", "Foreign"), (f"{KEY}\\Fixtop.Case\\Other", "/ve"),
                   (f"{KEY}\\CLSID\\{CLASS_ID}\\LocalServer32", "/v", "ServerExecutable")]
        for key in foreign:
            self.assertEqual(0, run("reg", "add", *key, "/d", "theirs", "/f")[0])
        before = self.exported("with.reg")
        registered("/unregserver")
        left = self.exported("left.reg")
        registered("/regserver")
        self.assertEqual(before, self.exported("again.reg"))
        registered("/unregserver")
        self.assertEqual(3, sum("theirs" in line for line in left))
        self.assertNotIn('@="Fixtop case"', left)
        for key in (f"{KEY}\\Fixtop.Case", f"{KEY}\\CLSID\\{CLASS_ID}"):
            run("reg", "delete", key, "/f")
        registered("/regserver")

    @staticmethod
    def added(before, after):
        """Lines of the longer list that the other lacks, each as often."""
        left = list(before)
        new = []
        for line in after:
            left.remove(line) if line in left else new.append(line)
        assert not left, left
        return new

    def test_without_it_nothing_can_be_created(self):
        path = self.folder / "create.vbs"
        path.write_text(NO_CREATE, encoding="utf-8")
        registered("/unregserver")
        self.addCleanup(registered, "/regserver")
        # "Can't create object."
        self.assertEqual((0, "1AD\n"), script(path))
        # What is not there is forgotten already.
        registered("/unregserver")


if __name__ == "__main__":
    main()
