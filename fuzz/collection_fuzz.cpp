// SPDX-License-Identifier: Apache-2.0
// The texts in which collections are kept. What was read is written, and that is read and written
// the same; the items are where they say they are.

#include <string>
#include <string_view>

#include "check.h"
#include "collection/collection.h"
#include "diagnostics/module_log.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

using Collected = Ref<FICollectionBase>;

ScriptNode& Tree() {
    static ScriptNode* const top = [] {
        auto* made = new ScriptNode("Top");
        for (const char* stream : {"Feed", "1 suction", "a.b"}) {
            ScriptNode& node = made->Add(stream);
            for (const char* variable : {"T", "P"}) node.Add(variable).Set("value", 1.5);
        }
        static ScriptNode key("Name");
        key.Set("value", "Raw Gas");
        made->Add("Stream").keys.push_back(&key);
        return made;
    }();
    return *top;
}

std::string XmlOf(FICollectionBase& items) {
    FIValue text;
    items.ToXml(text);
    return text.ToText();
}

void CheckItems(FICollectionBase& items) {
    const auto it = Ref<FICollectionIteratorBase>::Adopt(items.MakeIterator());
    FIValue value;
    for (int i = 0; i < items.Count(); ++i) {
        Check(it->Next() && it->Item() == items.ItemAt(i), "the walk misses an item");
        Check(items.IndexOf(items.ItemAt(i)) == i, "an item is somewhere else");
        it->GetAttribute(FIValue("value"), value);
        it->GetPath(value);
    }
    Check(!it->Next(), "the walk goes on");
}

// Names with a character that is written as it stands, or that is taken for an entity, come back
// otherwise; they can't be told in a text without references.
bool MayComeBackOtherwise(std::string_view text) {
    return text.find('&') != std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SetLogFile("/dev/null");
    SetLogLevel(0);
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Ref<FIIterator> top = Tree().Iterate();
    const Collected items = Collection::Make();
    const bool is_read = items->Load(text.c_str(), *top);
    Check(is_read || items->Count() == 0, "a text that is not read leaves items");
    CheckItems(*items);
    if (!is_read || MayComeBackOtherwise(text)) return 0;
    const std::string written = XmlOf(*items);
    const Collected again = Collection::Make();
    Check(again->Load(written.c_str(), *top), "what is written is not read", written);
    Check(XmlOf(*again) == written, "what is written comes back otherwise", written);
    CheckItems(*again);
    while (items->RemoveAt(items->Count() / 2)) CheckItems(*items);
    Check(items->Count() == 0, "an item can't be removed");
    return 0;
}

}  // namespace fixtop
