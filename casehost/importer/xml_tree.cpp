#include "xml_tree.h"

#include <expat.h>

#include <new>
#include <unordered_map>

#include "problems.h"

namespace fixtop::casehost::importer {

namespace {

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kWhite = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhite);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

}  // namespace

std::string_view XmlNode::Tag() const {
    return tree_ ? std::string_view(tree_->names_[tree_->records_[index_].tag])
                 : std::string_view();
}

std::string_view XmlNode::Text() const {
    if (!tree_) return {};
    const XmlTree::Record& record = tree_->records_[index_];
    return std::string_view(tree_->text_).substr(record.text_begin, record.text_size);
}

std::optional<std::string_view> XmlNode::Attribute(std::string_view name) const {
    if (!tree_) return std::nullopt;
    const XmlTree::Record& record = tree_->records_[index_];
    for (std::uint32_t i = 0; i < record.attribute_count; ++i) {
        const XmlTree::AttributeRecord& row = tree_->attributes_[record.attribute_begin + i];
        if (tree_->names_[row.name] == name) {
            return std::string_view(tree_->text_).substr(row.value_begin, row.value_size);
        }
    }
    return std::nullopt;
}

XmlNode XmlNode::FirstChild() const {
    return tree_ ? tree_->Node(tree_->records_[index_].first_child) : XmlNode();
}

XmlNode XmlNode::NextSibling() const {
    return tree_ ? tree_->Node(tree_->records_[index_].next) : XmlNode();
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

std::size_t XmlNode::Line() const {
    return tree_ ? tree_->records_[index_].line : 0;
}

std::string XmlNode::Path() const {
    if (!tree_) return {};
    std::vector<std::string_view> tags;
    for (std::uint32_t i = index_; i != XmlTree::kNone; i = tree_->records_[i].parent) {
        tags.push_back(tree_->names_[tree_->records_[i].tag]);
    }
    std::string path;
    for (auto tag = tags.rbegin(); tag != tags.rend(); ++tag) {
        if (!path.empty()) path += '/';
        path += *tag;
    }
    return path;
}

class XmlTreeBuilder::Impl {
 public:
    explicit Impl(Problems& problems) : problems_(problems), parser_(XML_ParserCreate(nullptr)) {
        if (!parser_) throw std::bad_alloc();
        XML_SetUserData(parser_, this);
        XML_SetElementHandler(parser_, &Impl::OnStart, &Impl::OnEnd);
        XML_SetCharacterDataHandler(parser_, &Impl::OnText);
        XML_SetStartDoctypeDeclHandler(parser_, &Impl::OnDoctype);
    }
    ~Impl() { XML_ParserFree(parser_); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    bool Feed(std::string_view piece, bool last) {
        const XML_Status status = XML_Parse(parser_, piece.data(), static_cast<int>(piece.size()),
                                            last ? XML_TRUE : XML_FALSE);
        if (out_of_memory_) throw std::bad_alloc();
        if (failed_) return false;
        if (status == XML_STATUS_OK) return true;
        Fail(std::string("malformed XML: ") + XML_ErrorString(XML_GetErrorCode(parser_)) +
             "; expected a well-formed document with every element closed");
        return false;
    }

    XmlTree Take() { return std::move(tree_); }

 private:
    struct OpenElement {
        std::uint32_t index = 0;
        std::uint32_t last_child = XmlTree::kNone;
        std::string text;
    };

    // The parser is C: nothing may be thrown through it.
    template <typename Body>
    static void Guard(void* self, Body body) {
        Impl& impl = *static_cast<Impl*>(self);
        try {
            if (!impl.failed_ && !impl.out_of_memory_) body(impl);
        } catch (const std::exception&) {
            impl.out_of_memory_ = true;
            XML_StopParser(impl.parser_, XML_FALSE);
        }
    }
    static void XMLCALL OnStart(void* self, const XML_Char* tag, const XML_Char** attributes) {
        Guard(self, [&](Impl& impl) { impl.Start(tag, attributes); });
    }
    static void XMLCALL OnEnd(void* self, const XML_Char*) {
        Guard(self, [](Impl& impl) { impl.End(); });
    }
    static void XMLCALL OnText(void* self, const XML_Char* text, int size) {
        Guard(self, [&](Impl& impl) { impl.Text({text, static_cast<std::size_t>(size)}); });
    }
    static void XMLCALL OnDoctype(void* self, const XML_Char*, const XML_Char*, const XML_Char*,
                                  int) {
        Guard(self, [](Impl& impl) {
            impl.Fail("a document type declaration is not allowed; expected plain elements only");
        });
    }

    void Fail(const std::string& message) {
        failed_ = true;
        const std::string path =
            open_.empty() ? std::string() : XmlNode(&tree_, open_.back().index).Path();
        problems_.ErrorAtLine(XML_GetCurrentLineNumber(parser_), path, message);
        XML_StopParser(parser_, XML_FALSE);
    }

    std::uint32_t Intern(const char* name) {
        const auto found = name_index_.find(name);
        if (found != name_index_.end()) return found->second;
        const auto index = static_cast<std::uint32_t>(tree_.names_.size());
        tree_.names_.emplace_back(name);
        name_index_.emplace(tree_.names_.back(), index);
        return index;
    }

    std::uint32_t Store(std::string_view text) {
        const std::size_t begin = tree_.text_.size();
        tree_.text_ += text;
        return static_cast<std::uint32_t>(begin);
    }

    void Start(const char* tag, const char** attributes) {
        if (open_.size() >= XmlTree::kMaxDepth) {
            return Fail("elements are nested more than " + std::to_string(XmlTree::kMaxDepth) +
                        " deep; a flowsheet needs less than 20 levels");
        }
        std::size_t attribute_count = 0;
        while (attributes[2 * attribute_count]) ++attribute_count;
        node_count_ += 1 + attribute_count;
        if (node_count_ > XmlTree::kMaxNodes) {
            return Fail("more than " + std::to_string(XmlTree::kMaxNodes) +
                        " elements and attributes; expected a smaller flowsheet");
        }
        const auto index = static_cast<std::uint32_t>(tree_.records_.size());
        XmlTree::Record record;
        record.tag = Intern(tag);
        record.line = static_cast<std::uint32_t>(XML_GetCurrentLineNumber(parser_));
        record.attribute_begin = static_cast<std::uint32_t>(tree_.attributes_.size());
        record.attribute_count = static_cast<std::uint32_t>(attribute_count);
        for (std::size_t i = 0; i < attribute_count; ++i) {
            const std::string_view value = attributes[2 * i + 1];
            tree_.attributes_.push_back({Intern(attributes[2 * i]), Store(value),
                                         static_cast<std::uint32_t>(value.size())});
        }
        if (!open_.empty()) LinkToParent(record, index);
        tree_.records_.push_back(record);
        open_.push_back({index, XmlTree::kNone, {}});
    }

    void LinkToParent(XmlTree::Record& record, std::uint32_t index) {
        OpenElement& parent = open_.back();
        record.parent = parent.index;
        if (parent.last_child == XmlTree::kNone) {
            tree_.records_[parent.index].first_child = index;
        } else {
            tree_.records_[parent.last_child].next = index;
        }
        parent.last_child = index;
        parent.text.clear();
    }

    void Text(std::string_view text) {
        if (!open_.empty() && open_.back().last_child == XmlTree::kNone) open_.back().text += text;
    }

    void End() {
        const OpenElement& element = open_.back();
        if (element.last_child == XmlTree::kNone) {
            const std::string_view text = Trim(element.text);
            tree_.records_[element.index].text_begin = Store(text);
            tree_.records_[element.index].text_size = static_cast<std::uint32_t>(text.size());
        }
        open_.pop_back();
    }

    Problems& problems_;
    XML_Parser parser_;
    XmlTree tree_;
    std::unordered_map<std::string_view, std::uint32_t> name_index_;
    std::vector<OpenElement> open_;
    std::size_t node_count_ = 0;
    bool failed_ = false;
    bool out_of_memory_ = false;
};

XmlTreeBuilder::XmlTreeBuilder(Problems& problems) : impl_(std::make_unique<Impl>(problems)) {}
XmlTreeBuilder::~XmlTreeBuilder() = default;
bool XmlTreeBuilder::Feed(std::string_view piece, bool last) {
    return impl_->Feed(piece, last);
}
XmlTree XmlTreeBuilder::Take() {
    return impl_->Take();
}

}  // namespace fixtop::casehost::importer
