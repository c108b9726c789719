#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The header with the classes of the neutral view against the class files.

classes_header_test.py HEADER RESOURCES: the header, and the folder of the class files.
"""

import pathlib
import re
import sys
import unittest
import xml.etree.ElementTree as ElementTree

ROOT_CLASSES = {"GenericClass", "DataSet"}
CLASS = re.compile(r"^class (\w+) : public (\w+) \{\n(.*?)^\};\n", re.M | re.S)
MEMBER = re.compile(r"    // (.*); declared by (\w+), member (\d+)\.\n    ([\w<>]+) (\w+)\(\) const(.*)\n")
BODY = re.compile(r"^inline ([\w<>]+) (\w+)::(\w+)\(\) const \{\n    return ([\w<>]+)\((\w+)\(\"(.*)\"\)\);\n\}\n",
                  re.M)


class ClassesHeader(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.text = HEADER.read_text(encoding="utf-8")
        cls.bases, cls.attributes = {}, {}
        for file in RESOURCES.glob("QSI*.xml"):
            root = ElementTree.parse(file).getroot()
            for element in root.findall("Class"):
                names = {each.text for each in element.findall("Superclass")} - ROOT_CLASSES
                cls.bases[element.get("Name")] = min(names) if names else "TypedObject"
                cls.attributes.setdefault(element.get("Name"), [])
            for element in root.findall("ClassAttributes"):
                cls.attributes.setdefault(element.get("Name"), []).extend(element.findall("Attribute"))
        cls.classes = {name: (base, body) for name, base, body in CLASS.findall(cls.text)}

    def first_number(self, name):
        base = self.bases[name]
        return 0 if base == "TypedObject" else self.first_number(base) + len(self.attributes[base])

    @staticmethod
    def result(attribute):
        if attribute.get("Type") != "Object":
            return "ValueNode"
        name = attribute.findtext("ClassName")
        return name if attribute.get("Multiplicity", "1") == "1" else f"TypedList<{name}>"

    def test_each_class_has_one_with_its_base(self):
        self.assertEqual(186, len(self.classes))
        self.assertEqual(self.bases, {name: base for name, (base, _) in self.classes.items()})

    def test_class_stands_behind_its_base(self):
        order = list(self.classes)
        for name, base in self.bases.items():
            if base != "TypedObject":
                self.assertLess(order.index(base), order.index(name))

    def test_each_attribute_has_a_function(self):
        count = 0
        for name, (_, body) in self.classes.items():
            shown = MEMBER.findall(body)
            wanted = []
            for number, each in enumerate(self.attributes[name], self.first_number(name)):
                type_name = each.findtext("ClassName") or each.findtext("EnumName")
                described = each.get("Type") + (f"({type_name})" if type_name else "")
                quantity = each.findtext("QuantityType")
                described += f", quantity {quantity}" if quantity else ""
                result, attribute = self.result(each), each.get("Name")
                rest = f' {{ return ValueOf("{attribute}"); }}' if result == "ValueNode" else ";"
                wanted.append((described, name, str(number), result, attribute, rest))
            self.assertEqual(wanted, shown, name)
            count += len(shown)
        self.assertEqual(1624, count)

    def test_each_object_and_list_has_a_body(self):
        wanted = {}
        for name, attributes in self.attributes.items():
            for each in attributes:
                result = self.result(each)
                if result != "ValueNode":
                    road = "ArrayOf" if result.startswith("TypedList") else "ObjectOf"
                    wanted[name, each.get("Name")] = (result, result, road, each.get("Name"))
        shown = {(of, name): (result, made, road, sought)
                 for result, of, name, made, road, sought in BODY.findall(self.text)}
        self.assertEqual(wanted, shown)


if __name__ == "__main__":
    RESOURCES = pathlib.Path(sys.argv.pop())
    HEADER = pathlib.Path(sys.argv.pop())
    unittest.main()
