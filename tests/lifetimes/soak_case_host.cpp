// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_case_host.h"

#include <cstdlib>
#include <utility>

#include "casehost/case_builder.h"
#include "fixtop/fixtop.h"

namespace fixtop::lifetimes {

namespace {

namespace build = casehost::test;

constexpr std::size_t kCases = 3;
constexpr int kStreamsAtFirst = 4;
constexpr int kInnerStreams = 2;
constexpr int kTooManyTurns = 20000;

// Computes nothing in no time.
class IdleEngine final : public casehost::SolveEngine {
 public:
    Outcome Prepare(const casehost::CaseData& problem) override {
        results_ = problem;
        return {Progress::running, ""};
    }
    Outcome Step(int) override { return {Progress::done, ""}; }
    const casehost::CaseData& Results() const override { return results_; }

 private:
    casehost::CaseData results_;
};

}  // namespace

CaseHostWorld::CaseHostWorld(Dice& dice, Fail fail) : World(dice, std::move(fail)) {
    Start();
}

CaseHostWorld::~CaseHostWorld() {
    FixtopInstallHost(nullptr);
}

void CaseHostWorld::MakeHost() {
    host_.reset();
    host_ = std::make_unique<casehost::CaseHost>(false);
    host_->SetEngineMaker([] { return std::make_unique<IdleEngine>(); });
    script_ = HostScript::Over(*host_);
    WatchTurns();
}

void CaseHostWorld::WatchTurns() {
    script_->AtTurn(1, [this] {
        if (++turns_ > kTooManyTurns) {
            fail_("a store waits for ever");
            std::_Exit(1);
        }
        WatchTurns();
    });
}

void CaseHostWorld::RunLoop() {
    host_->RunHostLoop();
    turns_ = 0;
}

void CaseHostWorld::Refill() {
    if (cases_.empty() || (cases_.size() < kCases && dice_.OneIn(4))) OpenCase();
}

void CaseHostWorld::Order(Event event) {
    if (dice_.OneIn(2)) {
        script_->InStore(1, std::move(event));
    } else {
        script_->AtTurn(1 + dice_.Roll(4), std::move(event));
    }
}

std::vector<int> CaseHostWorld::Cases() const {
    std::vector<int> numbers;
    for (const OpenedCase& each : cases_) numbers.push_back(each.number);
    return numbers;
}

const CaseHostWorld::OpenedCase* CaseHostWorld::Find(int case_number) const {
    for (const OpenedCase& each : cases_) {
        if (each.number == case_number) return &each;
    }
    return nullptr;
}

host::SimulationCase* CaseHostWorld::Live(int case_number) const {
    const OpenedCase* found = Find(case_number);
    return found ? found->live : nullptr;
}

void CaseHostWorld::Activate(int case_number) {
    if (const OpenedCase* found = Find(case_number)) host_->Activate(*found->live);
}

casehost::ObjectData CaseHostWorld::StreamOf(int number) const {
    const std::string note = "note " + std::to_string(number) + ".";
    return build::Object(At(number).name, casehost::words::kMaterialStream,
                         {build::Real("Temperature", "Temperature", number + 0.5),
                          build::TextVariable("Notes", note),
                          build::Array("Profile", "", {{0, 3, casehost::ElementNaming::number, {}}},
                                       {number + 0.125, number + 0.25, number + 0.375}),
                          build::Composition({"Methane", "Ethane"}, {0.75, 0.25})});
}

casehost::ObjectData CaseHostWorld::OperationOf(int number) {
    casehost::ObjectData operation =
        build::Object(At(number).name, casehost::words::kTemplate,
                      {build::Real("Pressure Drop", "PressureDifference", number + 0.5)});
    operation.sub_flowsheet = std::make_shared<casehost::FlowsheetData>();
    const int case_number = At(number).case_number;
    for (int i = 0; i < kInnerStreams; ++i) {
        const std::string name(1, static_cast<char>('A' + i));
        operation.sub_flowsheet->objects.push_back(
            StreamOf(NewThing(case_number, name, number, false)));
    }
    return operation;
}

void CaseHostWorld::OpenCase() {
    casehost::CaseData data;
    const int number = next_case_++;
    data.name = "case" + std::to_string(number);
    data.online = !dice_.OneIn(3);
    data.solve_turns = 1 + dice_.Roll(3);
    for (int i = 0; i < kStreamsAtFirst; ++i) {
        const std::string name(1, static_cast<char>('A' + i));
        data.main.objects.push_back(StreamOf(NewThing(number, name, -1, false)));
    }
    data.main.objects.push_back(OperationOf(NewThing(number, "L", -1, true)));
    casehost::BasisElement package = build::Element("Package", casehost::BasisElement::Kind::group);
    package.elements = {
        build::Element("Remark", casehost::BasisElement::Kind::text, casehost::kEmpty, "made")};
    data.basis = {package};
    cases_.push_back({number, host_->Open(data).opened});
    Match(cases_.back().live->MainFlowSheet(), number, -1);
}

void CaseHostWorld::Close(std::size_t index) {
    const OpenedCase closed = cases_[index];
    const Change change(*this, closed.number);
    cases_.erase(cases_.begin() + static_cast<std::ptrdiff_t>(index));
    BuryAll([&](const Thing& each) { return each.case_number == closed.number; });
    host_->Close(*closed.live);
}

void CaseHostWorld::Delete(OpenedCase& of) {
    const int number = Any(of.number, dice_.OneIn(6));
    if (number < 0) return;
    const Change change(*this, of.number);
    BuryThing(number);
    of.live->Delete(At(number).object);
}

void CaseHostWorld::Rename(OpenedCase& of) {
    const int number = Any(of.number, dice_.OneIn(6));
    if (number < 0) return;
    const std::string former = At(number).name;
    const std::string name = RandomName();
    // Who is told of it looks here, and may add things.
    Change change(*this, of.number);
    Name(number, name);
    if (!of.live->Rename(At(number).object, name)) {
        change.Cancel();
        Name(number, former);
    }
}

void CaseHostWorld::AddNamed(OpenedCase& of, const std::string& name, int holder) {
    const bool operation = holder < 0 && dice_.OneIn(5);
    host::FlowSheet* sheet =
        holder < 0 ? of.live->MainFlowSheet() : At(holder).object->SubFlowSheet();
    casehost::Case* live = of.live;
    const int case_number = of.number;
    const std::size_t before = ThingCount();
    const int number = NewThing(case_number, name, holder, operation);
    const casehost::ObjectData data = operation ? OperationOf(number) : StreamOf(number);
    Change change(*this, case_number);
    if (!live->Add(sheet, data)) {
        change.Cancel();
        Unmake(before);
        return;
    }
    if (At(number).lives) Match(sheet, case_number, holder);
}

void CaseHostWorld::Add(OpenedCase& of) {
    const int holder = dice_.OneIn(3) ? Any(of.number, true) : -1;
    AddNamed(of, RandomName(), holder);
}

// Another comes under the name at once, which may well get the address too.
void CaseHostWorld::Replace(OpenedCase& of) {
    const int number = Any(of.number, false);
    if (number < 0) return;
    const std::string name = At(number).name;
    const int holder = At(number).holder;
    const int case_number = of.number;
    {
        const Change change(*this, case_number);
        BuryThing(number);
        of.live->Delete(At(number).object);
    }
    for (OpenedCase& each : cases_) {
        if (each.number != case_number) continue;
        if (holder < 0 || Lives(holder)) AddNamed(each, name, holder);
        return;
    }
}

void CaseHostWorld::Move(OpenedCase& of) {
    const int number = Any(of.number, false);
    if (number < 0) return;
    Change change(*this, of.number);
    if (!of.live->Move(At(number).object, static_cast<std::size_t>(dice_.Roll(3)))) change.Cancel();
}

void CaseHostWorld::Disturb() {
    if (cases_.empty()) return;
    const auto index = static_cast<std::size_t>(dice_.Roll(static_cast<int>(cases_.size())));
    OpenedCase of = cases_[index];
    switch (dice_.Roll(30)) {
        case 0:
            return dice_.OneIn(5) ? TakeOut() : Close(index);
        case 1:
        case 2:
        case 3:
            return Delete(of);
        case 4:
        case 5:
        case 6:
            return Replace(of);
        case 7:
        case 8:
            return Move(of);
        case 9:
        case 10:
        case 11:
        case 12:
        case 13:
            return Rename(of);
        default:
            return Add(of);
    }
}

}  // namespace fixtop::lifetimes
