// SPDX-License-Identifier: Apache-2.0
#include "collection/backup_writer.h"

#include <algorithm>
#include <string>

namespace fixtop {

namespace {

// Beyond this depth the indentation does not grow.
constexpr char kBlanks[] = "                                 ";
constexpr int kMostBlanks = sizeof kBlanks - 1;
static_assert(kMostBlanks == 33);

bool IsWritten(const FICollectionElement& step) {
    const FICollectionElement* each = &step;
    while (each && !each->Id().empty()) each = each->Parent();
    return each == nullptr;
}

class BackupWriter {
 public:
    explicit BackupWriter(FIValue& out) : out_(out) {}

    void Write(const FICollectionElement& step, int depth) {
        if (step.Id().empty()) return;
        Begin(step, depth);
        if (!step.HasChildren()) return out_.AppendText("/>\n");
        out_.AppendText(">\n");
        for (const auto& child : step.Steps()) Write(*child, depth + 1);
        Indent(depth);
        out_.AppendText("</Pathnode>\n");
    }

 private:
    void Indent(int depth) {
        out_.AppendText(kBlanks + kMostBlanks - std::min(depth + 1, kMostBlanks));
    }
    void Begin(const FICollectionElement& step, int depth) {
        Indent(depth);
        out_.AppendText("<Pathnode id=\"");
        out_.AppendText(step.Id().data(), false, true);
        out_.AppendText("\"");
        if (step.IsItem()) {
            out_.AppendText(" loc=\"");
            out_.AppendInt(step.written_rank);
            out_.AppendText("\"");
        }
        const ItemUnits units = step.Units();
        WriteUnit("uom", units.unit);
        WriteUnit("specuom", units.spec_unit);
    }
    void WriteUnit(const char* name, const FIValue& unit) {
        if (unit.IsNull()) return;
        out_.AppendText(" ");
        out_.AppendText(name);
        out_.AppendText("=\"");
        out_.AppendValue(unit, false, true);
        out_.AppendText("\"");
    }

    FIValue& out_;
};

}  // namespace

void WriteBackup(const FICollectionElement* root, ItemList& items, FIValue& out) {
    int rank = 0;
    for (ItemPosition at(items); at.Next();) {
        if (IsWritten(*at.Item())) at.Item()->written_rank = rank++;
    }
    out.SetText("<?xml version=\"1.0\" ?>\n<CollectionBackup>\n");
    if (root) BackupWriter(out).Write(*root, 0);
    out.AppendText("</CollectionBackup>\n");
}

}  // namespace fixtop
