// SPDX-License-Identifier: Apache-2.0
// FIIterator: nodes as XML text.
//
// A node is written as <Node name="..." a="..."/>, with its children nested and indented by two
// blanks a level when they are wanted. Its attributes are those that the node shows, in its order,
// whose value is not NULL; "name" is the node's own, and names that are no identifiers are left
// out. A node that repeats an ancestor is written without children.

#include <limits>
#include <set>
#include <string>

#include "framework/iterator/iterator.h"
#include "framework/iterator/xml_text.h"

namespace fixtop {

namespace {

constexpr int kIndent = 2;
constexpr int kDefaultLevels = 1;

void AppendAttribute(const std::string& name, const FIValue& value, std::string& out) {
    out += ' ';
    out += name;
    out += "=\"";
    AppendXmlText(value.ToText(), out);
    out += '"';
}

void AppendAttributes(FIIterator& it, std::string& out) {
    const Ref<FIAttributeSource> source = Ref<FIAttributeSource>::Adopt(it.GetAttributeSource());
    if (!source) return;
    const Ref<FIAttributeCursorBase> cursor =
        Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    FIVarSet* const saved = cursor->GetVarSet();
    cursor->SetVarSet(it.GetVarSet());
    std::set<std::string> written = {"name"};
    FIValue value;
    for (bool stands = cursor->Seek(kFromFirst, 0); stands;
         stands = cursor->Seek(kFromPresent, 1)) {
        cursor->GetKey(value);
        const std::string name = value.ToText();
        cursor->GetValue(value);
        if (value.IsNull() || !IsXmlIdentifier(name) || !written.insert(name).second) continue;
        AppendAttribute(name, value, out);
    }
    cursor->SetVarSet(saved);
}

// Up to, but without, the end of the tag.
void AppendOpenTag(FIIterator& it, int level, std::string& out) {
    FIValue name;
    it.GetName(name);
    out.append(static_cast<std::size_t>(level) * kIndent, ' ');
    out += "<Node";
    AppendAttribute("name", name, out);
    AppendAttributes(it, out);
}

// Closes the nodes that have no further children, up to the next sibling; false at the end.
bool GoOn(FIIterator& it, int& level, std::string& out) {
    while (level > 0) {
        if (it.Next()) return true;
        it.Up();
        --level;
        out.append(static_cast<std::size_t>(level) * kIndent, ' ');
        out += "</Node>\n";
    }
    return false;
}

void Dump(FIIterator& start, int levels, FIValue& out) {
    const Ref<FIIterator> it = Ref<FIIterator>::Adopt(start.Copy());
    std::string text;
    int level = 0;
    bool enters = false;
    do {
        AppendOpenTag(*it, level, text);
        enters = level < levels && it->CanDescend() && it->DownFirst();
        text += enters ? ">\n" : "/>\n";
        if (enters) ++level;
    } while (enters || GoOn(*it, level, text));
    out.SetText(text);
}

}  // namespace

void FIIterator::DumpXml(FIValue& out, int levels) {
    Dump(*this, levels, out);
}
void FIIterator::DumpXmlDefault(FIValue& out) {
    Dump(*this, kDefaultLevels, out);
}
void FIIterator::DumpNodeFlat(FIValue& out) {
    Dump(*this, 0, out);
}
void FIIterator::DumpNode(FIValue& out) {
    Dump(*this, kDefaultLevels, out);
}
void FIIterator::DumpNodeDeep(FIValue& out) {
    Dump(*this, std::numeric_limits<int>::max(), out);
}

void FIIterator::DumpAttributes(FIValue& out) {
    std::string text;
    AppendAttributes(*this, text);
    out.SetText(text.empty() ? text : text.substr(1));
}

}  // namespace fixtop
