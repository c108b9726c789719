// SPDX-License-Identifier: Apache-2.0
// A member has the name of a macro of the system. Here callers have the macro, too.

#include <gtest/gtest.h>

#include "automation/objects.h"
#include "automation/script_nodes.h"

#define GetClassName GetClassNameA

namespace fixtop {

HRESULT ClassNameWithMacroFirst(IQSINode& node, char** name);

namespace {

TEST(MacroNames, class_name_is_reached_where_the_system_has_a_macro_of_the_name) {
    ScriptNode root("Root");
    root.Set("type", "Object(QSIMaterialStream)");
    const auto node = NodeAt(root);
    EXPECT_EQ("QSIMaterialStream", TakeText([&](char** out) { return node->GetClassName(out); }));
    EXPECT_EQ("QSIMaterialStream",
              TakeText([&](char** out) { return ClassNameWithMacroFirst(*node, out); }));
}

}  // namespace

}  // namespace fixtop
