// SPDX-License-Identifier: Apache-2.0
// The streams between a column and its side columns.

#include <string>

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"
#include "semantic/links.h"

namespace fixtop {

namespace {

using semantic::Exported;

// A stream between column and side column: in which variable of either kind of side column the host
// has its name, and the iterator's variable that receives it.
struct SideStream {
    const char* variable;
    const char* of_stripper;
    const char* of_rectifier;
};

constexpr SideStream kSideDraw = {"Draw", "top liquid feed", "bottom vapour feed"};
constexpr SideStream kSideReturn = {"Return", "overhead vapour product", "bottom liquid product"};

// Null for a section that is no side column.
const char* NameOf(const SideStream& stream, FIIteratorBase& section) {
    const std::string type = semantic::ReadChildValue(section, "Type of Tray Section").ToText();
    if (type == "Side Stripper") return stream.of_stripper;
    return type == "Side Rectifier" ? stream.of_rectifier : nullptr;
}

bool FindSideStream(FIIteratorBase& it, const SideStream& stream) {
    const Ref<FIIteratorBase> walker = semantic::CopyOf(it);
    const char* name = NameOf(stream, *walker);
    if (!name) return false;
    const FIValue linked = semantic::ReadChildValue(*walker, name);
    if (linked.IsNull()) return false;
    it.SetVarText(stream.variable, linked);
    return true;
}

// Asking finds the stream and keeps its name, moving takes the name; so it fails when nothing was
// asked before, and does not when the name leads nowhere.
bool SideStreamStep(FIIteratorBase& it, int move, const SideStream& stream) {
    if (!move) return FindSideStream(it, stream);
    FIValue linked;
    if (!it.GetVarText(stream.variable, linked)) return false;
    semantic::SeekLinked(it, linked, 1);
    return true;
}

}  // namespace

bool CTSideColumnDraw(FIIteratorBase* it, int move) {
    return Exported([=] { return SideStreamStep(*it, move, kSideDraw); });
}

bool CTSideColumnReturn(FIIteratorBase* it, int move) {
    return Exported([=] { return SideStreamStep(*it, move, kSideReturn); });
}

}  // namespace fixtop
