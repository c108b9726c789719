// SPDX-License-Identifier: Apache-2.0
#pragma once

// Shape: the variable list of all objects that have the same variables and ports. A hundred
// thousand streams of one kind share one shape, with its rows, descriptions and enumerations; an
// object keeps its values only.
//
// A row's description carries in its host word the shape and the place of the row, so that the
// value of a variable is found without a search. Numbers of shapes are never used twice in a
// process: a description that outlives its case is recognised as a stranger.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "casehost/case_data.h"
#include "fixtop/host/variables.h"
#include "live/holder_list.h"

namespace fixtop::casehost {

// Names of an enumeration by ordinal, the first of which is `low`.
class EnumNames final : public host::VarEnumInfo {
 public:
    EnumNames(const std::vector<std::string>& names, int low);

    const host::VarEnumEntry* Reset() override;
    const host::VarEnumEntry* Next() override;
    const host::VarEnumEntry* FindEntry(long ordinal) override;
    const host::VarEnumEntry* FindEntry(const host::Text& name, int& ordinal) override;

 private:
    std::vector<host::VarEnumEntry> entries_;
    long low_;
    std::size_t at_ = 0;
};

struct Row final : host::VariableNameInfo {
    std::shared_ptr<const VariableSpec> spec;
    int first_cell = 0;
    int cell_count = 1;
    // Set for the rows that show a port, -1 otherwise.
    int port = -1;
    // Set for the hidden rows that name the elements of a dimension.
    const DimensionData* labels = nullptr;
    std::unique_ptr<EnumNames> names;
    std::array<host::VarDescription, 3> offset_storage;

    host::VarEnumInfo* GetEnumInfo(host::Viewable*) const override { return names.get(); }
    bool IsComposition() const;
    // Place of an element among the row's cells, -1 out of bounds. `offsets` one per dimension.
    int CellOf(const std::array<int, 3>& offsets) const;
};

// Gives variables their numbers: well-known ones by name, others in the order of their appearance,
// the same name and kind the same number throughout a case.
class NumberRegistry {
 public:
    int NumberOf(const VariableSpec& spec);
    int LabelNumber() { return next_label_++; }

 private:
    std::unordered_map<std::string, int> given_;
    int next_ = 10001;
    int next_label_ = 1000001;
};

// The rows by which a stream shows the unit operation that makes it and the one that takes it. Each
// is an array, of one element, for in a host a stream may have several.
enum class Link : std::size_t { upstream, downstream };
inline constexpr std::array<const char*, 2> kLinkNames = {"Upstream Unit Operations",
                                                          "Downstream Unit Operations"};

class Shape {
 public:
    // A stream has rows for its links, unless it has variables of their names.
    Shape(std::vector<std::shared_ptr<const VariableSpec>> specs, std::vector<PortData> ports,
          bool is_stream, NumberRegistry& numbers);
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;

    const HolderList& Rows() const { return list_; }
    const std::vector<std::unique_ptr<Row>>& AllRows() const { return rows_; }
    // Number of the rows that hold variables; those of ports and links follow them.
    std::size_t VariableCount() const { return variable_count_; }
    const std::vector<PortData>& Ports() const { return ports_; }
    int CellCount() const { return cell_count_; }

    // The row whose description this is or was copied from; null for any other description.
    Row* ByWord(std::uintptr_t word) const {
        if (word >> kIndexBits != id_) return nullptr;
        const std::size_t index = word & kIndexMask;
        return index < rows_.size() ? rows_[index].get() : nullptr;
    }
    // The cell of a scalar number by the same word, -1 for anything else: the road of most reads.
    int ScalarCell(std::uintptr_t word) const {
        if (word >> kIndexBits != id_) return -1;
        const std::size_t index = word & kIndexMask;
        return index < scalar_cells_.size() ? scalar_cells_[index] : -1;
    }
    // By "Class.number" such as "Double.501", without a leading ':'.
    Row* ByStem(std::string_view stem) const;
    Row* ByName(std::string_view name) const;
    // Null when there is none.
    const Row* LinkRow(Link link) const { return links_[static_cast<std::size_t>(link)]; }

 private:
    static constexpr int kIndexBits = 20;
    static constexpr std::uintptr_t kIndexMask = (std::uintptr_t{1} << kIndexBits) - 1;

    Row& AddRow(std::shared_ptr<const VariableSpec> spec, int number);
    void AddLinks(NumberRegistry& numbers);
    void AddLabels(Row& row, NumberRegistry& numbers);
    host::VarDescription OffsetDescription(const DimensionData& dimension, NumberRegistry& numbers);

    std::uintptr_t id_;
    std::vector<std::unique_ptr<Row>> rows_;
    std::vector<int> scalar_cells_;
    std::vector<PortData> ports_;
    std::unordered_map<std::string, Row*> by_stem_;
    HolderList list_;
    std::array<const Row*, kLinkNames.size()> links_{};
    std::size_t variable_count_ = 0;
    int cell_count_ = 0;
};

// Shapes and variable specs of a case, each kept once.
class ShapePool {
 public:
    const Shape* Get(const std::vector<VariableData>& variables, const std::vector<PortData>& ports,
                     bool is_stream);
    const std::vector<std::unique_ptr<Shape>>& All() const { return shapes_; }

 private:
    std::shared_ptr<const VariableSpec> Intern(const std::shared_ptr<const VariableSpec>& spec);

    NumberRegistry numbers_;
    std::unordered_map<const VariableSpec*, std::shared_ptr<const VariableSpec>> seen_;
    std::unordered_multimap<std::string, std::shared_ptr<const VariableSpec>> by_name_;
    std::unordered_map<std::string, const Shape*> by_key_;
    std::vector<std::unique_ptr<Shape>> shapes_;
};

// The host's variable type of a spec, and the unit type of a variable type (65 when it has none).
host::VariableType VariableTypeOf(const VariableSpec& spec);
host::VarType UnitTypeOfVariableType(host::VariableType type);
host::VariableType VariableTypeOfUnitType(host::VarType type);

}  // namespace fixtop::casehost
