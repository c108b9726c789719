#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The readers and the comparison of check_exports.py, over recorded tool output."""

import unittest

import check_exports

NM = """\
0000000000001139 T GetQSINode
0000000000001140 T CTFind@@V1
0000000000000000 A V1
"""

OBJDUMP = """\
Export Address Table -- Ordinal Base 1
	[   0] +base[   1] 1440 Export RVA
	[   1] +base[   2] 1450 Export RVA

[Ordinal/Name Pointer] Table
	[   0] CTFind
	[   1] GetQSINode

The Function Table (interpreted .pdata section contents)
"""

OBJDUMP_WITH_RVA = """\
[Ordinal/Name Pointer] Table -- Ordinal Base 1
	[   0] +base[   1]  0000 CTFind
	[   1] +base[   2]  0001 GetQSINode
"""


class CheckExports(unittest.TestCase):
    def test_list_ignores_comments_and_empty_lines(self):
        text = "# head\n\nGetQSINode  # the node\n CTFind\n"
        self.assertEqual(check_exports.listed_names(text), ["GetQSINode", "CTFind"])

    def test_both_readers_find_the_same_names(self):
        expected = {"GetQSINode", "CTFind"}
        self.assertEqual(check_exports.names_from_nm(NM), expected)
        self.assertEqual(check_exports.names_from_objdump(OBJDUMP), expected)
        self.assertEqual(check_exports.names_from_objdump(OBJDUMP_WITH_RVA), expected)

    def test_differences_are_told_both_ways(self):
        self.assertEqual(check_exports.differences(["A", "B"], {"A", "B"}), [])
        self.assertEqual(check_exports.differences(["A", "B"], {"A"}), ["listed but not exported: B"])
        self.assertEqual(check_exports.differences(["A"], {"A", "B"}), ["exported but not listed: B"])
        self.assertEqual(check_exports.differences(["A", "A"], {"A"}), ["listed twice: A"])


if __name__ == "__main__":
    unittest.main()
