// SPDX-License-Identifier: Apache-2.0
#pragma once

// The texts of class files that mean more than they say.

#include <string>
#include <vector>

namespace fixtop {

// The roots of all classes stand for no superclass.
bool IsRootClass(const std::string& name);

// Libraries in other formats come with an XML file of their own: an include of one is passed over.
bool IsOtherLibrary(const std::string& file);

// The names in a text such as "Ordered~Key~A,B~": those behind each part that is "Key".
std::vector<std::string> KeysInMetaData(const std::string& text);

}  // namespace fixtop
