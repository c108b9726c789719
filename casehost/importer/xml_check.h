// SPDX-License-Identifier: Apache-2.0
#pragma once

// What is asked of a document before it is parsed into a tree: UTF-8 text of characters that XML
// allows, no document type declaration, one root, tags that match, attributes that stand once, no
// references to entities of its own, and not more levels and nodes than a tree may hold.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop::casehost::importer {

class Problems;

inline constexpr std::size_t kMaxXmlDepth = 256;
inline constexpr std::size_t kMaxXmlNodes = 5'000'000;  // elements and attributes

// Where lines with tags begin, by the place of the first tag.
class TagLines {
 public:
    void Add(std::size_t place, std::size_t line);
    // The line of the tag at this place.
    std::size_t At(std::size_t place) const;

 private:
    struct Begin {
        std::size_t place;
        std::size_t line;
    };
    std::vector<Begin> begins_;
};

// False after a fault, which then stands in the problems with its line and the path of the element.
bool CheckXml(std::string_view document, Problems& problems, TagLines& lines);

}  // namespace fixtop::casehost::importer
