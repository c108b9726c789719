// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the items of a selection show on one case, and how it is written.

#include <string>
#include <vector>

#include "exit_code.h"
#include "fixtop/client.h"
#include "output.h"
#include "table.h"

namespace CLI {
class App;
}

namespace fixtop {

struct SelectedItems {
    explicit SelectedItems(const client::Selection& selection);

    std::size_t Size() const { return states.size(); }
    bool IsThere(std::size_t item) const { return client::IsThere(states[item]); }
    bool IsStale(std::size_t item) const { return ages[item] == client::Freshness::kOld; }

    std::vector<client::ItemState> states;
    // One each state; those of an item that is not there say so.
    std::vector<FIValue> values;
    std::vector<FIValue> units;
    std::vector<FIValue> statuses;
    std::vector<client::Freshness> ages;
};

// Notes which items the case `name` does not have, and how many were found by their places.
// Failed when one is missing.
ExitCode TellMissing(const SelectedItems& items, const std::string& name, Output& out);

// The options --csv and --json.
class ItemFormat {
 public:
    void Declare(CLI::App& app);
    bool AsJson() const { return json_; }
    // Plain or as CSV.
    void Write(const Table& table, Output& out) const {
        (csv_ ? WriteCsv : WritePlain)(table, out);
    }

 private:
    bool csv_ = false;
    bool json_ = false;
};

// What is known of an item without a case: path, uom; null for the node's own unit.
std::string RecordOfChoice(const std::string& path, const std::string& unit);

// A line each item.
void Write(const SelectedItems& items, const ItemFormat& format, Output& out);

TableCell TextCell(const std::string& text);

}  // namespace fixtop
