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

bool CanBeSought(const FICollectionElement& step) {
    const FICollectionElement* each = &step;
    while (each && !each->Id().empty()) each = each->Parent();
    return each == nullptr;
}

// Marks the steps that lead to items, and numbers these.
void MarkSteps(ItemList& items) {
    int rank = 0;
    for (ItemPosition at(items); at.Next();) {
        FICollectionElement* step = at.Item();
        if (!CanBeSought(*step)) continue;
        step->written_rank = rank++;
        for (; step && !step->is_written; step = step->Parent()) step->is_written = true;
    }
}

void Unmark(ItemList& items) {
    for (ItemPosition at(items); at.Next();) {
        for (auto* step = at.Item(); step; step = step->Parent()) step->is_written = false;
    }
}

class BackupWriter {
 public:
    explicit BackupWriter(FIValue& out) : out_(out) {}

    // A marked step; the marks are gone afterwards.
    void Write(FICollectionElement& step, int depth) {
        step.is_written = false;
        Begin(step, depth);
        bool is_open = false;
        for (const auto& child : step.Steps()) {
            if (!child->is_written) continue;
            if (!is_open) out_.AppendText(">\n");
            is_open = true;
            Write(*child, depth + 1);
        }
        if (!is_open) return out_.AppendText("/>\n");
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

void WriteBackup(FICollectionElement* root, ItemList& items, FIValue& out) {
    MarkSteps(items);
    try {
        out.SetText("<?xml version=\"1.0\" ?>\n<CollectionBackup>\n");
        if (root && root->is_written) BackupWriter(out).Write(*root, 0);
        out.AppendText("</CollectionBackup>\n");
    } catch (...) {
        Unmark(items);
        throw;
    }
}

}  // namespace fixtop
