#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The typed interfaces of the shipped class library: what the module tells against the XML.

shipped_members_test.py PROGRAM RESOURCES: the program that prints what the module tells, behind
what runs it ("emulator|program") where the system itself can't, and the folder of the class files.
"""

import collections
import pathlib
import sys
import unittest
import xml.etree.ElementTree as ElementTree

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "resources"))
from captured import captured
import content_tables as tables

ROOT_CLASSES = {"GenericClass", "DataSet"}
INTERFACE, VALUE, OBJECT, ARRAY = range(4)
MOST_MEMBERS = 100

Row = collections.namedtuple(
    "Row", "kind number class_name interface base name owner type type_name quantity array")


def text_of(element, name):
    return (element.findtext(name) or "").strip()


class Library:
    """The class files, read apart from the module."""

    def __init__(self, folder):
        self.bases, self.attributes = {}, collections.defaultdict(list)
        for name in tables.LIBRARY_FILES:
            root = ElementTree.parse(folder / f"{name}.xml").getroot()
            for element in root.findall("Class"):
                names = [each.text.strip() for each in element.findall("Superclass")]
                self.bases[element.get("Name")] = [name for name in names if name not in ROOT_CLASSES]
            for element in root.findall("ClassAttributes"):
                self.attributes[element.get("Name")] += element.findall("Attribute")

    def base(self, name):
        return self.bases[name][0] if self.bases[name] else None

    def chain(self, name):
        """Bases first."""
        return (self.chain(self.base(name)) if self.base(name) else []) + [name]

    def count(self, name):
        return sum(len(self.attributes[each]) for each in self.chain(name))

    def rows(self, name):
        """Of the interface alone."""
        first = self.count(name) - len(self.attributes[name])
        head = (name, f"I{name}", self.base(name) or "(null)")
        yield Row(INTERFACE, first, *head, *["(null)"] * 5, 0)
        for number, each in enumerate(self.attributes[name], first):
            kind, array = each.get("Type"), each.get("Multiplicity", "1") != "1"
            yield Row((ARRAY if array else OBJECT) if kind == "Object" else VALUE, number, *head,
                      each.get("Name"), name, kind,
                      text_of(each, "ClassName") or text_of(each, "EnumName"),
                      text_of(each, "QuantityType"), int(array))


class ShippedMembers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.library = Library(RESOURCES)
        cls.told, cls.visited = cls.ask()

    @staticmethod
    def ask(*arguments):
        """Rows that are told, and how many the module says it visited."""
        run = captured([*PROGRAM, *arguments], text=True, timeout=120, check=True)
        *lines, last = run.stdout.splitlines()
        rows = [Row(*[int(cell) if cell.isdigit() else cell for cell in line.split("|")])
                for line in lines]
        found = last.replace(",", "").split()
        assert found[-1] == "0", last
        return rows, int(found[1])

    def test_every_class_has_an_interface(self):
        heads = [row.class_name for row in self.told if row.kind == INTERFACE]
        self.assertEqual(186, len(heads))
        self.assertEqual(sorted(tables.CLASSES), sorted(heads))

    def test_every_attribute_is_a_member(self):
        self.assertEqual(1624, sum(row.kind != INTERFACE for row in self.told))
        self.assertEqual(186 + 1624, self.visited)

    def test_own_members_are_as_many_as_the_class_declares(self):
        own = collections.Counter(row.class_name for row in self.told if row.kind != INTERFACE)
        self.assertEqual({name: row[1] for name, row in tables.CLASSES.items()},
                         {name: own[name] for name in tables.CLASSES})

    def test_rows_are_those_of_the_files(self):
        order = [row.class_name for row in self.told if row.kind == INTERFACE]
        expected = [row for name in order for row in self.library.rows(name)]
        for told, wanted in zip(self.told, expected):
            self.assertEqual(wanted, told)
        self.assertEqual(len(expected), len(self.told))

    def test_interface_stands_behind_its_base_else_by_name(self):
        order = [row.class_name for row in self.told if row.kind == INTERFACE]
        expected = []
        for name in sorted(self.library.bases):
            expected += [each for each in self.library.chain(name) if each not in expected]
        self.assertEqual(expected, order)

    def test_no_interface_is_larger_than_is_allowed(self):
        sizes = {name: self.library.count(name) for name in self.library.bases}
        self.assertLess(max(sizes.values()), MOST_MEMBERS)
        self.assertEqual(89, sizes["QSICompressor"])

    def test_class_alone_is_told_from_its_farthest_base_on(self):
        for name in ("QSIMaterialStream", "QSITieRodSpacer", "OtherPhaseAnalysisCurve",
                     "QSICatalyticRateReaction"):
            told, visited = self.ask("-", name)
            chain = self.library.chain(name)
            self.assertEqual([row for each in chain for row in self.library.rows(each)], told)
            self.assertEqual(len(told), visited)
            numbers = [row.number for row in told if row.kind != INTERFACE]
            self.assertEqual(list(range(self.library.count(name))), numbers)

    def test_visits_end_when_the_visitor_has_enough(self):
        stream, _ = self.ask("-", "QSIMaterialStream")
        # In the base, between two interfaces and in the class itself.
        for most in (1, 3, 24, 30):
            self.assertEqual((stream[:most], most), self.ask("-", "QSIMaterialStream", str(most)))

    def test_nothing_is_told_of_what_there_is_not(self):
        self.assertEqual(([], 0), self.ask("-", "QSINothing"))
        self.assertEqual(([], 0), self.ask("no_such_file.xml"))


if __name__ == "__main__":
    RESOURCES = pathlib.Path(sys.argv.pop())
    PROGRAM = sys.argv.pop().split("|")
    unittest.main()
