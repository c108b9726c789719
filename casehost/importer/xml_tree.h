// SPDX-License-Identifier: Apache-2.0
#pragma once

// A document as a read-only tree of elements. Text is kept of elements without child elements only,
// trimmed of white space. Nodes are handles into the tree and live as long as it does.
//
// Sibling elements may have one name: Child answers the first.

#include <cstddef>
#include <functional>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "xml_check.h"

namespace fixtop::casehost::importer {

class Problems;
class XmlTree;

class XmlNode {
 public:
    XmlNode() = default;
    XmlNode(const XmlTree* tree, pugi::xml_node node) : tree_(tree), node_(node) {}

    // False for the node that isn't there; it answers empty texts and no children.
    explicit operator bool() const { return !node_.empty(); }
    bool operator==(const XmlNode& other) const { return node_ == other.node_; }

    std::string_view Tag() const { return node_.name(); }
    std::string_view Text() const;
    std::optional<std::string_view> Attribute(const char* name) const;
    XmlNode Child(std::string_view tag) const;
    // The first child of that name that has child elements itself.
    XmlNode ChildWithElements(std::string_view tag) const;
    XmlNode FirstChild() const { return ElementFrom(node_.first_child()); }
    XmlNode NextSibling() const { return ElementFrom(node_.next_sibling()); }
    std::size_t Line() const;
    // Tags from the root down, separated by "/".
    std::string Path() const;

 private:
    XmlNode ElementFrom(pugi::xml_node node) const;

    const XmlTree* tree_ = nullptr;
    pugi::xml_node node_;
};

// for (XmlNode child : Children(node))
class Children {
 public:
    explicit Children(XmlNode parent) : first_(parent.FirstChild()) {}

    struct Iterator {
        XmlNode node;
        XmlNode operator*() const { return node; }
        Iterator& operator++() {
            node = node.NextSibling();
            return *this;
        }
        bool operator!=(const Iterator& other) const { return !(node == other.node); }
    };
    Iterator begin() const { return {first_}; }
    Iterator end() const { return {}; }

 private:
    XmlNode first_;
};

// What `make` makes of each child, in their order.
template <class Item, class Make>
std::vector<Item> OfChildren(XmlNode parent, Make make) {
    std::vector<Item> items;
    for (XmlNode child : Children(parent)) items.emplace_back(std::invoke(make, child));
    return items;
}

class XmlTree {
 public:
    // No root after a fault, which then stands in the problems.
    XmlTree(std::string document, Problems& problems);
    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;

    XmlNode Root() const { return {this, document_.document_element()}; }

 private:
    friend class XmlNode;

    std::string text_;  // that the nodes refer to
    TagLines lines_;
    pugi::xml_document document_;
};

}  // namespace fixtop::casehost::importer
