#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Each rule of check_rooms.py, over small invented trees: it must speak when the rule is broken."""

import unittest

from check_rooms import Tree, complaints

HEADERS = {
    "include/fixtop/value.h": [],
    "src/platform/modules.h": [],
    "src/platform/posix/handle.h": [],
    "src/path/path_step.h": [],
    "include/fixtop/iterator.h": [],
    "include/fixtop/entry.h": [],
    "include/fixtop/host/viewable.h": [],
    "include/fixtop/client/case.h": [],
    "src/host/h_entry.h": [],
    "src/framework/nodes/attr_map.h": [],
    "src/collection/element.h": [],
    "src/xml/xml_file.h": [],
    "src/model/ccdm_class.h": [],
    "src/mapping/translators/translator.h": [],
    "src/automation/node.h": [],
    "include/fixtop/fixtop.h": ['#include "fixtop/entry.h"', "#if defined(_WIN32)"],
    "casehost/include/casehost/case_data.h": [],
    "casehost/files/draft.h": [],
    "casehost/importer/problems.h": [],
    "casehost/json/fields.h": [],
    "casehost/live/node.h": [],
    "casehost/live/path/step.h": [],
    "casehost/naming/object_type.h": [],
    "casehost/process/thermo.h": [],
    "casehost/standard/demo_text.h": [],
}


def told(name, *lines):
    """The complaints about one more file in that tree."""
    return complaints(Tree({**HEADERS, name: list(lines)}))


def include(header):
    return f'#include "{header}"'


ALLOWED = [
    ("src/value/a.cpp", "fixtop/value.h"),
    ("src/platform/a.cpp", "fixtop/value.h"),
    ("src/path/a.cpp", "platform/modules.h"),
    ("src/framework/path/path_walk.cpp", "fixtop/iterator.h"),
    ("src/framework/a.cpp", "path/path_step.h"),
    ("src/framework/a.cpp", "platform/modules.h"),
    ("src/host/a.cpp", "fixtop/host/viewable.h"),
    ("src/host/a.cpp", "fixtop/entry.h"),
    ("src/host_base/a.cpp", "fixtop/host/viewable.h"),
    ("include/fixtop/host/a.h", "fixtop/host/viewable.h"),
    ("src/collection/a.cpp", "framework/nodes/attr_map.h"),
    ("src/model/a.cpp", "xml/xml_file.h"),
    ("src/mapping/a.cpp", "model/ccdm_class.h"),
    ("src/semantic/a.cpp", "fixtop/iterator.h"),
    ("src/automation/a.cpp", "mapping/translators/translator.h"),
    ("src/front/a.cpp", "fixtop/host/viewable.h"),
    ("src/front/a.cpp", "automation/node.h"),
    ("casehost/live/a.cpp", "fixtop/host/viewable.h"),
    ("casehost/live/a.cpp", "node.h"),
    ("casehost/live/a.cpp", "path/step.h"),
    ("casehost/live/a.cpp", "live/node.h"),
    ("casehost/live/a.cpp", "naming/object_type.h"),
    ("casehost/live/a.cpp", "casehost/case_data.h"),
    ("casehost/include/casehost/a.h", "casehost/case_data.h"),
    ("casehost/include/casehost/a.h", "fixtop/host/viewable.h"),
    ("casehost/units/a.cpp", "casehost/case_data.h"),
    ("casehost/naming/a.cpp", "casehost/case_data.h"),
    ("casehost/json/a.cpp", "naming/object_type.h"),
    ("casehost/files/a.cpp", "casehost/case_data.h"),
    ("client/saved_text.cpp", "casehost/case_data.h"),
    ("casehost/process/a.cpp", "casehost/case_data.h"),
    ("casehost/importer/a.cpp", "casehost/case_data.h"),
    ("casehost/importer/a.cpp", "problems.h"),
    ("casehost/standard/a.cpp", "live/node.h"),
    ("casehost/standard/a.cpp", "process/thermo.h"),
    ("casehost/standard/a.cpp", "json/fields.h"),
    ("casehost/standard/a.cpp", "importer/problems.h"),
    ("tools/fixtop/a.cpp", "fixtop/fixtop.h"),
    ("tools/fixtop/a.cpp", "fixtop/value.h"),
    ("tools/fixtop/a.cpp", "fixtop/iterator.h"),
    ("tools/fixtop/a.cpp", "fixtop/client/case.h"),
    ("python/binding/a.cpp", "fixtop/client/case.h"),
    ("bench/a.cpp", "fixtop/cursor.h"),
    ("bench/a.cpp", "fixtop/host/services.h"),
    ("bench/a.cpp", "casehost/case_data.h"),
    ("examples/value/a.cpp", "fixtop/client.h"),
    ("tests/client/a.cpp", "support/case_files.h"),
    ("client/a.cpp", "fixtop/fixtop.h"),
    ("client/a.cpp", "fixtop/client/case.h"),
    ("client/built_in_host.cpp", "casehost/case_data.h"),
    ("include/fixtop/client/a.h", "fixtop/iterator.h"),
]

FORBIDDEN = [
    ("src/value/a.cpp", "platform/modules.h"),
    ("src/value/a.cpp", "../platform/modules.h"),
    ("src/platform/a.cpp", "fixtop/entry.h"),
    ("src/path/parser.cpp", "fixtop/iterator.h"),
    ("src/framework/a.cpp", "host/h_entry.h"),
    ("src/framework/a.cpp", "platform/posix/handle.h"),
    ("src/framework/a.cpp", "fixtop/host/viewable.h"),
    ("src/host_base/a.cpp", "host/h_entry.h"),
    ("include/fixtop/a.h", "framework/nodes/attr_map.h"),
    ("include/fixtop/a.h", "fixtop/host/viewable.h"),
    ("include/fixtop/host/a.h", "fixtop/entry.h"),
    ("src/framework/a.cpp", "collection/element.h"),
    ("src/xml/a.cpp", "model/ccdm_class.h"),
    ("src/host/a.cpp", "mapping/translators/translator.h"),
    ("src/host/a.cpp", "casehost/case_data.h"),
    ("src/model/a.cpp", "fixtop/entry.h"),
    ("src/mapping/a.cpp", "fixtop/host/viewable.h"),
    ("src/semantic/a.cpp", "fixtop/entry.h"),
    ("src/semantic/a.cpp", "fixtop/host/viewable.h"),
    ("src/automation/a.cpp", "host/h_entry.h"),
    ("casehost/live/a.cpp", "fixtop/value.h"),
    ("casehost/live/a.cpp", "fixtop/entry.h"),
    ("casehost/live/a.cpp", "json/fields.h"),
    ("casehost/live/a.cpp", "../json/fields.h"),
    ("casehost/live/a.cpp", "process/thermo.h"),
    ("casehost/live/a.cpp", "files/draft.h"),
    ("casehost/include/casehost/a.h", "live/node.h"),
    ("casehost/json/a.cpp", "files/draft.h"),
    ("client/selection.cpp", "casehost/case_data.h"),
    ("casehost/files/a.cpp", "fixtop/host/viewable.h"),
    ("casehost/units/a.cpp", "naming/object_type.h"),
    ("casehost/naming/a.cpp", "live/node.h"),
    ("casehost/naming/a.cpp", "json/fields.h"),
    ("casehost/json/a.cpp", "live/node.h"),
    ("casehost/json/a.cpp", "importer/problems.h"),
    ("casehost/process/a.cpp", "live/node.h"),
    ("casehost/process/a.cpp", "naming/object_type.h"),
    ("casehost/importer/a.cpp", "live/node.h"),
    ("casehost/importer/a.cpp", "json/fields.h"),
    ("casehost/standard/a.cpp", "files/draft.h"),
    ("casehost/live/a.cpp", "standard/demo_text.h"),
    ("tools/fixtop/a.cpp", "framework/nodes/attr_map.h"),
    ("tools/fixtop/a.cpp", "casehost/case_data.h"),
    ("python/binding/a.cpp", "casehost/case_data.h"),
    ("python/binding/a.cpp", "framework/nodes/attr_map.h"),
    ("bench/a.cpp", "path/path_step.h"),
    ("bench/a.cpp", "casehost/node.h"),
    ("examples/value/a.cpp", "platform/modules.h"),
    ("tests/client/a.cpp", "mapping/translators/translator.h"),
    ("client/a.cpp", "framework/nodes/attr_map.h"),
    ("client/a.cpp", "fixtop/host/viewable.h"),
    ("client/a.cpp", "casehost/case_data.h"),
    ("include/fixtop/a.h", "fixtop/client/case.h"),
    ("src/framework/a.cpp", "fixtop/client/case.h"),
    ("tools/fixtop/a.cpp", "fixtop/host/viewable.h"),
    ("tools/fixtop/a.cpp", "casehost/node.h"),
    ("tools/fixtop/a.cpp", "../../casehost/live/node.h"),
]


class CheckRooms(unittest.TestCase):
    def test_plan_allows(self):
        for name, header in ALLOWED:
            with self.subTest(file=name, header=header):
                self.assertEqual(told(name, include(header)), [])

    def test_plan_forbids(self):
        for name, header in FORBIDDEN:
            with self.subTest(file=name, header=header):
                self.assertEqual(len(told(name, include(header))), 1)

    def test_place_is_told_as_file_and_line(self):
        lines = ["// a comment", "", include("platform/modules.h")]
        self.assertEqual(told("src/value/a.cpp", *lines),
                         ["src/value/a.cpp:3: value/ must not include platform/modules.h"])

    def test_operating_system_stays_in_platform(self):
        for line in ("#include <windows.h>", "#include <unistd.h>", "#include <sys/stat.h>",
                     "#include <expat.h>", "#ifdef _WIN32", "#if defined(_WIN32)"):
            with self.subTest(line=line):
                self.assertEqual(told("src/platform/posix/a.cpp", line), [])
                self.assertEqual(told("tools/fixtop/a.cpp", line), [])
                self.assertEqual(len(told("src/framework/a.cpp", line)), 1)

    def test_objects_of_the_system_are_seen_in_one_folder_of_automation(self):
        own = "src/automation/com/layout_windows"
        for line in ("#include <unknwn.h>", include("platform/windows/wide_text.h")):
            for suffix in (".cpp", ".h"):
                self.assertEqual(told(own + suffix, line), [], line)
            for name in ("src/automation/node.cpp", "src/automation/com/layout.h",
                         "src/automation/com/layout_posix.cpp", "src/front/com/a_windows.cpp"):
                self.assertEqual(len(told(name, line)), 1, name)
        self.assertEqual(len(told(own + ".cpp", "#ifdef _WIN32")), 1)

    def test_operating_system_has_one_place_in_the_case_host(self):
        for line in ("#include <windows.h>", "#include <unistd.h>", "#ifdef _WIN32"):
            with self.subTest(line=line):
                for platform in ("posix", "windows"):
                    self.assertEqual(told(f"casehost/files/{platform}/a.cpp", line), [])
                for name in ("casehost/files/a.cpp", "casehost/files/posix/a.h",
                             "casehost/files/linux/a.cpp", "casehost/json/posix/a.cpp"):
                    self.assertEqual(len(told(name, line)), 1, name)
        self.assertEqual(told("casehost/live/a.cpp", include("object_sheet.h")), [])

    def test_each_library_has_one_place_in_the_case_host(self):
        for header, room in (("unzip.h", "importer"), ("zlib.h", "importer"), ("expat.h", "importer"),
                             ("pugixml.hpp", "importer"), ("nlohmann/json.hpp", "json")):
            with self.subTest(header=header):
                self.assertEqual(told(f"casehost/{room}/a.cpp", f"#include <{header}>"), [])
                self.assertEqual(told("casehost/live/a.cpp", f"#include <{header}>"),
                                 [f"casehost/live/a.cpp:1: {header}: is for {room}"])

    def test_standard_headers_are_free(self):
        for header in ("string", "cstdint", "filesystem", "system_error"):
            with self.subTest(header=header):
                self.assertEqual(told("src/value/a.cpp", f"#include <{header}>"), [])

    def test_full_folder_is_told(self):
        files = {f"src/value/s{i}.cpp": [] for i in range(26)}
        self.assertEqual(complaints(Tree(files)), ["src/value:1: 26 sources, more than 25"])
        del files["src/value/s0.cpp"]
        self.assertEqual(complaints(Tree(files)), [])

    def test_circle_is_told(self):
        files = {"src/value/a.h": [include("value/b.h")], "src/value/b.h": [include("c.h")],
                 "src/value/c.h": [include("value/a.h")]}
        self.assertEqual(complaints(Tree(files)),
                         ["src/value/a.h:1: includes itself by src/value/b.h, src/value/c.h, "
                          "src/value/a.h"])

    def test_folder_outside_the_plan_is_told(self):
        self.assertEqual(told("src/cellar/a.cpp", ""),
                         ["src/cellar/a.cpp:1: src/cellar is no room of the plan"])
        self.assertEqual(told("casehost/cellar/a.cpp", ""),
                         ["casehost/cellar/a.cpp:1: casehost/cellar is no room of the plan"])


if __name__ == "__main__":
    unittest.main()
