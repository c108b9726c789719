// SPDX-License-Identifier: Apache-2.0
#include <unordered_map>

#include "case_session.h"
#include "comparison.h"
#include "terminal.h"
#include "unit_choice.h"
#include "words/makers.h"

namespace fixtop {

namespace {

class Diff final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "A", names_[0], "Case, or demo")->required();
        AddText(app, "B", names_[1], "Case that is compared with it")->required();
        AddName(app, "PATH", path_, "Node below which is compared; all when it is left out");
        comparison_.Declare(app);
        units_.Declare(app);
        AddNeutral(app, view_);
        AddModel(app, view_, false);
    }

    ExitCode Run(CommandContext& around) override {
        for (std::size_t side = 0; side < names_.size(); ++side) {
            const ExitCode code = Gather(side, around.out);
            if (code != ExitCode::kOk) return code;
        }
        is_compared_ = true;
        TellMissing(around.out);
        const bool differs = comparison_.Write(items_, names_, around.out);
        return differs ? ExitCode::kFailed : ExitCode::kOk;
    }

    bool TellsFailures() const override { return is_compared_; }

 private:
    // One case is open at a time.
    ExitCode Gather(std::size_t side, Output& out) {
        const auto session = CaseSession::Open(names_[side], view_, out);
        if (!session) return ExitCode::kUnreadable;
        try {
            units_.Use(session->OpenCase());
        } catch (const client::CaseError& error) {
            out.Note(MessageOf(error));
            return ExitCode::kUnreadable;
        }
        std::string problem;
        const Node top = session->Top();
        const auto start =
            path_.empty() ? client::Place{top, "", ""} : Locate(*session, path_, problem);
        if (!start) {
            out.Note(OneLine(names_[side]) + ": " + problem);
            return ExitCode::kFailed;
        }
        client::Search("**").ForEach(start->node, [&](const client::Place& place) {
            if (terminal::IsInterrupted()) throw Interrupted();
            if (place.node.IsVariable()) Take(side, place);
            return true;
        });
        return ExitCode::kOk;
    }
    // Values are told apart in the unit that the first case shows.
    void Take(std::size_t side, const client::Place& place) {
        const auto [row, is_new] = places_.try_emplace(place.path, items_.size());
        if (is_new) items_.push_back({place.path, {}});
        ComparedItem& item = items_[row->second];
        const auto& first = item.sides[0];
        const std::string unit = side == 1 && first ? first->unit : units_.UnitOf(place.node);
        item.sides[side] = CellOf(place.node, unit);
    }
    static TableCell CellOf(const Node& node, const std::string& unit) {
        client::Reading reading;
        try {
            reading = node.Read(node.UnitOf("value") == unit ? "" : unit);
        } catch (const client::Refused&) {
            // It is no such quantity there, and so another value.
            reading = node.Read();
        }
        return {std::move(reading.value), std::move(reading.unit), reading.stale};
    }
    void TellMissing(Output& out) const {
        for (std::size_t side = 0; side < names_.size(); ++side) {
            const auto missing = std::ranges::count_if(
                items_, [side](const ComparedItem& item) { return !item.sides[side]; });
            if (missing == 0) continue;
            out.Note(OneLine(names_[side]) +
                     ": has no such node as the other case: " + std::to_string(missing));
        }
    }

    std::array<std::string, 2> names_;
    std::string path_;
    Comparison comparison_;
    UnitChoice units_;
    ViewOptions view_;
    std::vector<ComparedItem> items_;
    std::unordered_map<std::string, std::size_t> places_;
    bool is_compared_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeDiff() {
    return std::make_unique<Diff>();
}

}  // namespace fixtop
