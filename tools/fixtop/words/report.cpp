// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <system_error>

#include "case_session.h"
#include "flowsheets.h"
#include "report_rows.h"
#include "terminal.h"
#include "unit_choice.h"
#include "words/makers.h"

namespace fixtop {

namespace {

// Shown without the words around it.
constexpr char kClass[] = "Class";

constexpr ReportColumn kEnergyStream[] = {
    {"Heat flow", "HeatFlow"},
    {"From", "UpstreamUnitOperation"},
    {"To", "DownstreamUnitOperation"},
};
// A duty is a list where there are several.
constexpr ReportColumn kUnitOperation[] = {
    {kClass, "(type)"},
    {"Duty", "Duty[(type)=Real]"},
    {"Condenser duty", "CondenserDuty"},
    {"Reboiler duty", "ReboilerDuty"},
    {"Power", "Power"},
    {"Pressure drop", "PressureDrop"},
    {"Inlet temperature", "InletTemperature"},
    {"Outlet temperature", "OutletTemperature"},
    {"Outlet pressure", "OutletPressure"},
    {"Outlet vapor fraction", "OutletVaporFraction"},
    {"Hot outlet temperature", "Hot.OutletTemperature"},
    {"Cold outlet temperature", "Cold.OutletTemperature"},
    {"Vessel temperature", "Flash.Temperature"},
    {"Vessel pressure", "Flash.Pressure"},
    {"Adiabatic efficiency", "AdiabaticEfficiency"},
};
constexpr ReportColumn kStage[] = {
    {"Temperature", "Temperature"},
    {"Pressure", "Pressure"},
    {"Vapor flow", "VaporMolarFlow"},
    {"Liquid flow", "LiquidMolarFlow"},
};
constexpr ReportColumn kLocalReaction[] = {
    {"Base component", "BaseComponent"},
    {"Extent", "Extent"},
    {"Conversion", "Conversion"},
    {"Heat", "ReactionHeat"},
};
constexpr ReportColumn kReactantBalance[] = {
    {"In", "TotalInflow"},
    {"By reaction", "TotalReaction"},
    {"Out", "TotalOutflow"},
};
constexpr ReportColumn kReaction[] = {
    {kClass, "(type)"},           {"Heat", "ReactionHeat"},          {"Phase", "ReactionPhase"},
    {"Basis", "ExpressionBasis"}, {"Balance error", "BalanceError"},
};

constexpr char kUnitOperations[] = "UnitOperation";

// A list of every flowsheet.
struct FlowsheetTable {
    const char* name;  // of its file, and in JSON
    const char* title;
    const char* list;
    ReportColumns columns;
    const char* fractions = nullptr;  // a list of components, from the object
};
const FlowsheetTable kFlowsheetTables[] = {
    {"streams", "Streams", "Stream", StreamColumns()},
    {"compositions", "Mole fractions of the streams", "Stream", {}, "Composition.Component"},
    {"energy-streams", "Energy streams", "HeatStream", kEnergyStream},
    {"unit-operations", "Unit operations", kUnitOperations, kUnitOperation},
};

// A table of each object that has such a list: its name stands behind those of the table.
struct PartTable {
    const char* name;
    const char* title;
    const char* list;  // from the unit operation
    ReportColumns columns;
    const char* fractions = nullptr;  // a list of components, from the part
};
constexpr PartTable kPartTables[] = {
    {"stages", "Stages of ", "Stage", kStage},
    {"vapor-fractions", "Mole fractions of the vapor of ", "Stage", {}, "VaporFrom.Composition"},
    {"liquid-fractions", "Mole fractions of the liquid of ", "Stage", {}, "LiquidFrom.Composition"},
    {"extents", "Extents of ", "ReactionSet.Reaction", kLocalReaction},
    {"components", "Components of ", "ReactionSet.ReactantBalance", kReactantBalance},
};

constexpr char kReactions[] = "ReactionPackage.Reaction";

// Ends with 0 when there is a package.
constexpr char kHasPackage[] =
    "import importlib.util, sys; sys.exit(importlib.util.find_spec('fixtop') is None)";
constexpr char kNoPackage[] =
    "a page of HTML is made by the Python package fixtop (Debian: python3-fixtop), which is not "
    "there; FIXTOP_PYTHON names a Python that has it";

struct Title {
    std::string text;
    std::string name;  // of its file, and in JSON
};

// Writes each table to a place of its own, or all to one behind each other.
class TableWriter {
 public:
    virtual ~TableWriter() = default;
    virtual void Write(const Table& table, const std::string& name) = 0;
};

class PlainWriter final : public TableWriter {
 public:
    explicit PlainWriter(Output& out) : out_(out) {}
    void Write(const Table& table, const std::string&) override {
        if (!is_first_) out_.Line("");
        is_first_ = false;
        out_.Line(OneLine(table.title));
        WritePlain(table, out_);
    }

 private:
    Output& out_;
    bool is_first_ = true;
};

class JsonWriter final : public TableWriter {
 public:
    explicit JsonWriter(Output& out) : out_(out) {}
    void Write(const Table& table, const std::string& name) override {
        Table named = table;
        named.title = name;
        WriteJson(named, out_);
    }

 private:
    Output& out_;
};

std::filesystem::path PathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

// What names of objects hold beside letters and digits of any script, some file systems refuse.
std::string FileName(std::string name) {
    for (char& c : name) {
        const bool plain = (c & 0x80) != 0 || std::isalnum(static_cast<unsigned char>(c)) != 0;
        if (!plain && std::string_view("-_ ").find(c) == std::string_view::npos) c = '_';
    }
    return name + ".csv";
}

class FolderWriter final : public TableWriter {
 public:
    FolderWriter(const std::string& folder, Output& out) : folder_(folder), out_(out) {
        std::error_code error;
        std::filesystem::create_directories(PathOf(folder_), error);
        if (error) throw client::CaseError({folder_ + " can't be made: " + error.message()});
    }
    void Write(const Table& table, const std::string& name) override {
        const std::string file = folder_ + '/' + NameAlone(FileName(name));
        TextOutput text(out_);
        WriteCsv(table, text);
        std::ofstream stream(PathOf(file), std::ios::binary);
        stream << text.Text();
        stream.close();
        if (!stream) {
            const std::string why = std::generic_category().message(errno);
            throw client::CaseError({file + " can't be written: " + why});
        }
        out_.Line(OneLine(file));
    }

 private:
    // Names that differ may make one of a file, also where letters of both cases are one.
    std::string NameAlone(const std::string& name) {
        const std::string stem = name.substr(0, name.rfind('.'));
        std::string alone = name;
        for (int number = 2; !taken_.insert(Small(alone)).second; ++number) {
            alone = stem + '~' + std::to_string(number) + ".csv";
        }
        return alone;
    }
    static std::string Small(std::string name) {
        for (char& c : name) {
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        }
        return name;
    }

    std::string folder_;
    Output& out_;
    std::set<std::string> taken_;
};

class Report final : public Word {
 public:
    void Declare(CLI::App& app) override {
        units_.Declare(app);
        CLI::Option* csv =
            AddFile(app, "--csv", folder_, "Write a file for each table to this folder");
        CLI::Option* html = AddFile(app, "--html", page_, "Write a page of HTML to this file");
        AddJson(app, json_);
        csv->excludes("--json")->type_name("FOLDER");
        html->excludes(csv)->excludes("--json");
    }

    ExitCode Run(CommandContext& around) override {
        const client::Case& open_case = around.session->OpenCase();
        try {
            if (!page_.empty()) return WritePage(around);
            units_.Use(open_case);
            WriteAll(around.session->Top(), *MakeWriter(around.out));
            if (tables_ == 0) around.out.Note("the case has nothing to report");
            TellUnitsWithoutClass(around.session->Top(), around.out);
            return ExitCode::kOk;
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
    }

 private:
    std::unique_ptr<TableWriter> MakeWriter(Output& out) const {
        if (!folder_.empty()) return std::make_unique<FolderWriter>(folder_, out);
        if (json_) return std::make_unique<JsonWriter>(out);
        return std::make_unique<PlainWriter>(out);
    }
    // The page is drawn by libraries of Python.
    ExitCode WritePage(CommandContext& around) const {
        if (terminal::RunPython({"-c", kHasPackage}) != 0) {
            around.out.Note(kNoPackage);
            return ExitCode::kFailed;
        }
        const int status = terminal::RunPython(
            {"-m", "fixtop.report", "--units", units_.Name(), "--", around.session->Name(), page_});
        if (status == 0) return ExitCode::kOk;
        return status == static_cast<int>(ExitCode::kUnreadable) ? ExitCode::kUnreadable
                                                                 : ExitCode::kFailed;
    }
    void WriteAll(const Node& top, TableWriter& writer) {
        for (const FlowsheetTable& each : kFlowsheetTables) {
            Write(ObjectsOf(top, each.list), each.columns, each.fractions, {each.title, each.name},
                  writer);
        }
        for (const PartTable& each : kPartTables) WriteParts(top, each, writer);
        Write(RowsOf(top, client::Pattern(kReactions)), kReaction, nullptr,
              {"Reactions", "reactions"}, writer);
    }
    void WriteParts(const Node& top, const PartTable& parts, TableWriter& writer) {
        const client::Pattern list(parts.list);
        for (const ReportRow& unit : ObjectsOf(top, kUnitOperations)) {
            Write(RowsOf(unit.node, list), parts.columns, parts.fractions,
                  {parts.title + unit.name, std::string(parts.name) + '-' + unit.name}, writer);
        }
    }
    // The objects of a list, of all flowsheets.
    const ReportRows& ObjectsOf(const Node& top, const std::string& list) {
        const auto [row, is_new] = objects_.try_emplace(list);
        if (is_new) row->second = ObjectRows(top, list);
        return row->second;
    }
    static ReportRows RowsOf(const Node& node, const client::Pattern& list) {
        ReportRows rows;
        list.ForEach(node, [&](const client::Place& place) {
            rows.push_back({place.node, place.path, place.node.Key()});
            return true;
        });
        return rows;
    }
    static void ShortenClasses(Table& table) {
        const auto column = std::ranges::find(table.headings, kClass) - table.headings.begin();
        for (TableRow& row : table.rows) {
            if (column == std::ssize(row.cells)) return;
            if (auto& cell = row.cells[column]) {
                cell->value = FIValue(ClassOf(cell->value.ToText()).c_str());
            }
        }
    }
    // A table without rows or columns is left out.
    void Write(const ReportRows& rows, ReportColumns columns, const char* fractions,
               const Title& title, TableWriter& writer) {
        TableMaker maker;
        for (const ReportColumn& column : columns) {
            maker.AddColumn({column.path, "value", column.heading});
        }
        if (fractions) AddFractions(rows, fractions, maker);
        if (rows.empty() || maker.Columns().empty()) return;
        for (ColumnGroup& column : maker.Columns()) {
            column.ShowIn([this](const Node& node) { return units_.UnitOf(node); });
        }
        for (const ReportRow& row : rows) maker.AddRow(row.node, row.path, row.name);
        Table table = maker.Whole();
        table.title = title.text;
        ShortenClasses(table);
        writer.Write(table, title.name);
        ++tables_;
    }

    std::map<std::string, ReportRows> objects_;
    UnitChoice units_;
    std::string folder_;
    std::string page_;
    bool json_ = false;
    int tables_ = 0;  // that were written
};

}  // namespace

std::unique_ptr<Word> MakeReport() {
    return std::make_unique<Report>();
}

}  // namespace fixtop
