// SPDX-License-Identifier: Apache-2.0
#include "case_session.h"
#include "report_rows.h"
#include "unit_choice.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Streams final : public Word {
 public:
    void Declare(CLI::App& app) override {
        units_.Declare(app);
        app.add_flag("--composition", composition_, "Mole fractions too, a column each component");
        CLI::Option* csv = app.add_flag("--csv", csv_, "Write comma-separated values");
        AddJson(app, json_);
        csv->excludes("--json");
    }

    ExitCode Run(CommandContext& around) override {
        try {
            units_.Use(around.session->OpenCase());
        } catch (const client::CaseError& error) {
            around.out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
        const Table whole = Whole(around.session->Top());
        (json_ ? WriteJson : csv_ ? WriteCsv : WritePlain)(whole, around.out);
        if (whole.rows.empty()) around.out.Note("the case has no material streams");
        return ExitCode::kOk;
    }

 private:
    Table Whole(const Node& top) const {
        const ReportRows rows = ObjectRows(top, "Stream");
        TableMaker maker;
        for (const ReportColumn& column : StreamColumns()) {
            maker.AddColumn({column.path, "value", column.heading});
        }
        if (composition_) AddFractions(rows, "Composition.Component", maker);
        for (ColumnGroup& column : maker.Columns()) {
            column.ShowIn([this](const Node& node) { return units_.UnitOf(node); });
        }
        for (const ReportRow& row : rows) maker.AddRow(row.node, row.path, row.name);
        return maker.Whole();
    }

    UnitChoice units_;
    bool composition_ = false;
    bool csv_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeStreams() {
    return std::make_unique<Streams>();
}

}  // namespace fixtop
