#pragma once

// A document as a read-only tree of elements. Text is kept of elements without child elements only,
// trimmed of white space. Nodes are handles into the tree and live as long as it does.
//
// Sibling elements may have one name: Child answers the first.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fixtop::casehost::importer {

class Problems;
class XmlTree;

class XmlNode {
 public:
    XmlNode() = default;
    XmlNode(const XmlTree* tree, std::uint32_t index) : tree_(tree), index_(index) {}

    // False for the node that isn't there; it answers empty texts and no children.
    explicit operator bool() const { return tree_ != nullptr; }
    bool operator==(const XmlNode&) const = default;

    std::string_view Tag() const;
    std::string_view Text() const;
    std::optional<std::string_view> Attribute(std::string_view name) const;
    XmlNode Child(std::string_view tag) const;
    // The first child of that name that has child elements itself.
    XmlNode ChildWithElements(std::string_view tag) const;
    XmlNode FirstChild() const;
    XmlNode NextSibling() const;
    std::size_t Line() const;
    // Tags from the root down, separated by "/".
    std::string Path() const;

 private:
    const XmlTree* tree_ = nullptr;
    std::uint32_t index_ = 0;
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

class XmlTree {
 public:
    static constexpr std::size_t kMaxDepth = 256;
    static constexpr std::size_t kMaxNodes = 5'000'000;  // elements and attributes

    XmlNode Root() const { return records_.empty() ? XmlNode() : XmlNode(this, 0); }

 private:
    friend class XmlNode;
    friend class XmlTreeBuilder;

    static constexpr std::uint32_t kNone = 0xffffffff;

    struct Record {
        std::uint32_t tag = 0;
        std::uint32_t parent = kNone;
        std::uint32_t first_child = kNone;
        std::uint32_t next = kNone;
        std::uint32_t text_begin = 0;
        std::uint32_t text_size = 0;
        std::uint32_t attribute_begin = 0;
        std::uint32_t attribute_count = 0;
        std::uint32_t line = 0;
    };
    struct AttributeRecord {
        std::uint32_t name = 0;
        std::uint32_t value_begin = 0;
        std::uint32_t value_size = 0;
    };

    XmlNode Node(std::uint32_t index) const {
        return index == kNone ? XmlNode() : XmlNode(this, index);
    }

    std::vector<Record> records_;
    std::vector<AttributeRecord> attributes_;
    std::deque<std::string> names_;
    std::string text_;
};

// Builds a tree out of a document that comes in pieces.
class XmlTreeBuilder {
 public:
    explicit XmlTreeBuilder(Problems& problems);
    ~XmlTreeBuilder();

    // False after the first fault, which then stands in the problems.
    bool Feed(std::string_view piece, bool last);
    XmlTree Take();

 private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace fixtop::casehost::importer
