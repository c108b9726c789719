// SPDX-License-Identifier: Apache-2.0
#include "xml_tree.h"

#include <new>

#include "reading.h"

namespace fixtop::casehost::importer {

namespace {

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kWhite = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhite);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

// Comments and CDATA sections part a text; where it is read it is whole.
struct TextJoiner : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override {
        const bool is_text = node.type() != pugi::node_element;
        if (!is_text || !node.next_sibling() || node.previous_sibling()) return true;
        std::string whole;
        for (pugi::xml_node part = node; part; part = part.next_sibling()) {
            if (part.type() == pugi::node_element) return true;
            whole += part.value();
        }
        if (!node.set_value(whole.c_str())) throw std::bad_alloc();
        return true;
    }
};

}  // namespace

std::string_view XmlNode::Text() const {
    return FirstChild() ? std::string_view() : Trim(node_.child_value());
}

std::optional<std::string_view> XmlNode::Attribute(const char* name) const {
    const pugi::xml_attribute attribute = node_.attribute(name);
    if (!attribute) return std::nullopt;
    return attribute.value();
}

XmlNode XmlNode::Child(std::string_view tag) const {
    for (XmlNode child : Children(*this)) {
        if (child.Tag() == tag) return child;
    }
    return {};
}

XmlNode XmlNode::ChildWithElements(std::string_view tag) const {
    for (XmlNode child : Children(*this)) {
        if (child.Tag() == tag && child.FirstChild()) return child;
    }
    return {};
}

XmlNode XmlNode::ElementFrom(pugi::xml_node node) const {
    while (node && node.type() != pugi::node_element) node = node.next_sibling();
    return {tree_, node};
}

std::size_t XmlNode::Line() const {
    return node_ ? tree_->lines_.At(static_cast<std::size_t>(node_.offset_debug())) : 0;
}

std::string XmlNode::Path() const {
    return node_ ? node_.path().substr(1) : std::string();
}

XmlTree::XmlTree(std::string document, Problems& problems) : text_(std::move(document)) {
    if (!CheckXml(text_, problems, lines_)) return;
    const pugi::xml_parse_result result = document_.load_buffer_inplace(
        text_.data(), text_.size(), pugi::parse_default, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    if (!result) {
        const std::size_t line = lines_.At(static_cast<std::size_t>(result.offset));
        problems.ErrorAtLine(line, {}, std::string("malformed XML: ") + result.description());
        document_.reset();
        return;
    }
    TextJoiner joiner;
    document_.traverse(joiner);
}

}  // namespace fixtop::casehost::importer
