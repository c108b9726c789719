// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_world.h"

#include <algorithm>
#include <cstdlib>

#include "casehost/case_builder.h"
#include "fixtop/fixtop.h"

namespace fixtop {

namespace lifetimes {

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

World::World(Dice& dice, Fail fail) : dice_(dice), fail_(std::move(fail)) {
    NewHost();
}

World::~World() {
    FixtopInstallHost(nullptr);
}

void World::NewHost() {
    host_.reset();
    host_ = std::make_unique<casehost::CaseHost>(false);
    host_->SetEngineMaker([] { return std::make_unique<IdleEngine>(); });
    script_ = HostScript::Over(*host_);
    FixtopInstallHost(&host_->Services());
    installed_ = true;
    WatchTurns();
    OpenCase();
}

void World::WatchTurns() {
    Script().AtTurn(1, [this] {
        if (++turns_ > kTooManyTurns) {
            fail_("a store waits for ever");
            std::_Exit(1);
        }
        WatchTurns();
    });
}

void World::TakeOut() {
    if (!installed_) return;
    // Who is told of it looks here.
    installed_ = false;
    ++removals_;
    is_going_ = true;
    FixtopInstallHost(nullptr);
    is_going_ = false;
}

std::vector<int> World::Cases() const {
    std::vector<int> numbers;
    for (const OpenedCase& each : cases_) numbers.push_back(each.number);
    return numbers;
}

casehost::Case* World::Live(int case_number) const {
    for (const OpenedCase& each : cases_) {
        if (each.number == case_number) return each.live;
    }
    return nullptr;
}

bool World::IsOnline(int case_number) const {
    return Live(case_number) && Live(case_number)->OnlineManager();
}

void World::Activate(int case_number) {
    if (casehost::Case* live = Live(case_number)) host_->Activate(*live);
}

int World::Any(int case_number, bool operation) {
    int found = -1;
    int seen = 0;
    for (int number : living_) {
        const Thing& each = At(number);
        const bool fits = each.case_number == case_number && each.is_operation == operation;
        // One that is just being added has no object yet.
        if (fits && each.object && dice_.OneIn(++seen)) found = number;
    }
    return found;
}

bool World::HasName(int case_number, const std::string& name) const {
    return std::any_of(living_.begin(), living_.end(), [&](int number) {
        return At(number).case_number == case_number && At(number).name == name;
    });
}

int World::IndexOf(int number) const {
    const Thing& thing = At(number);
    host::FlowSheet* sheet = thing.holder < 0 ? Live(thing.case_number)->MainFlowSheet()
                                              : At(thing.holder).object->SubFlowSheet();
    int index = 0;
    host::FlowSheetObjectIterator it = sheet->Objects();
    for (host::Viewable* each = it.Reset(); each && each != thing.object; each = it.Next()) {
        if (each->Type() == thing.object->Type()) ++index;
    }
    return index;
}

std::string World::RandomName() {
    return std::string(1, static_cast<char>('A' + dice_.Roll(12)));
}

int World::NewThing(int case_number, const std::string& name, int holder, bool operation) {
    things_.push_back({name, case_number, holder, operation, true, nullptr});
    living_.push_back(static_cast<int>(things_.size()) - 1);
    return living_.back();
}

casehost::ObjectData World::StreamOf(int number) const {
    const std::string note = "note " + std::to_string(number) + ".";
    return build::Object(At(number).name, casehost::words::kMaterialStream,
                         {build::Real("Temperature", "Temperature", number + 0.5),
                          build::TextVariable("Notes", note),
                          build::Array("Profile", "", {{0, 3, casehost::ElementNaming::number, {}}},
                                       {number + 0.125, number + 0.25, number + 0.375}),
                          build::Composition({"Methane", "Ethane"}, {0.75, 0.25})});
}

casehost::ObjectData World::OperationOf(int number) {
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

// Finds the objects of what was just opened or added, and what stands in it.
void World::Match(host::FlowSheet* sheet, int case_number, int holder) {
    host::FlowSheetObjectIterator it = sheet->Objects();
    for (host::Viewable* each = it.Reset(); each; each = it.Next()) {
        for (int number : living_) {
            Thing& thing = things_[static_cast<std::size_t>(number)];
            const bool here = thing.case_number == case_number && thing.holder == holder;
            if (!here || thing.object || thing.name != each->GetName().Str()) continue;
            thing.object = each;
            if (thing.is_operation) Match(each->SubFlowSheet(), case_number, number);
        }
    }
}

void World::OpenCase() {
    if (cases_.size() >= kCases) return;
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
    cases_.push_back({number, host_->Open(data).opened, data.online});
    Match(cases_.back().live->MainFlowSheet(), number, -1);
}

void World::BuryAll(const std::function<bool(const Thing&)>& of) {
    std::vector<int> left;
    for (int number : living_) {
        Thing& thing = things_[static_cast<std::size_t>(number)];
        thing.lives = !of(thing);
        if (thing.lives) left.push_back(number);
    }
    living_.swap(left);
}

void World::BuryThing(int number) {
    const host::Viewable* object = At(number).object;
    BuryAll([=](const Thing& each) { return each.object == object || each.holder == number; });
}

void World::Close(std::size_t index) {
    const OpenedCase closed = cases_[index];
    cases_.erase(cases_.begin() + static_cast<std::ptrdiff_t>(index));
    BuryAll([&](const Thing& each) { return each.case_number == closed.number; });
    host_->Close(*closed.live);
}

void World::Delete(OpenedCase& of) {
    const int number = Any(of.number, dice_.OneIn(6));
    if (number < 0) return;
    BuryThing(number);
    of.live->Delete(At(number).object);
}

void World::Rename(OpenedCase& of) {
    const int number = Any(of.number, dice_.OneIn(6));
    if (number < 0) return;
    const std::string former = At(number).name;
    const std::string name = RandomName();
    // Who is told of it looks here, and may add things.
    things_[static_cast<std::size_t>(number)].name = name;
    if (!of.live->Rename(At(number).object, name)) {
        things_[static_cast<std::size_t>(number)].name = former;
    }
}

void World::AddNamed(OpenedCase& of, const std::string& name, int holder) {
    const bool operation = holder < 0 && dice_.OneIn(5);
    host::FlowSheet* sheet =
        holder < 0 ? of.live->MainFlowSheet() : At(holder).object->SubFlowSheet();
    casehost::Case* live = of.live;
    const int case_number = of.number;
    const std::size_t before = things_.size();
    const int number = NewThing(case_number, name, holder, operation);
    const casehost::ObjectData data = operation ? OperationOf(number) : StreamOf(number);
    if (!live->Add(sheet, data)) {
        things_.resize(before);
        std::erase_if(living_, [=](int each) { return each >= static_cast<int>(before); });
        return;
    }
    if (At(number).lives) Match(sheet, case_number, holder);
}

void World::Add(OpenedCase& of) {
    const int holder = dice_.OneIn(3) ? Any(of.number, true) : -1;
    AddNamed(of, RandomName(), holder);
}

// Another comes under the name at once, which may well get the address too.
void World::Replace(OpenedCase& of) {
    const int number = Any(of.number, false);
    if (number < 0) return;
    const std::string name = At(number).name;
    const int holder = At(number).holder;
    const int case_number = of.number;
    BuryThing(number);
    of.live->Delete(At(number).object);
    for (OpenedCase& each : cases_) {
        if (each.number != case_number) continue;
        if (holder < 0 || Lives(holder)) AddNamed(each, name, holder);
        return;
    }
}

void World::Move(OpenedCase& of) {
    const int number = Any(of.number, false);
    if (number >= 0) of.live->Move(At(number).object, static_cast<std::size_t>(dice_.Roll(3)));
}

void World::Disturb() {
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

void World::Rest() {
    host_->RunHostLoop();
    turns_ = 0;
    if (!installed_) {
        if (dice_.OneIn(2)) {
            FixtopInstallHost(&host_->Services());
            installed_ = true;
        } else {
            BuryAll([](const Thing&) { return true; });
            cases_.clear();
            NewHost();
        }
    }
    if (cases_.size() < kCases && dice_.OneIn(4)) OpenCase();
    if (cases_.empty()) OpenCase();
}

}  // namespace lifetimes

}  // namespace fixtop
