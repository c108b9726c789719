// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/plant.h"

#include "fixtop/fixtop.h"

#include "lifetimes/plant_data.h"

namespace fixtop::lifetimes {

namespace {

constexpr int kNewGeneration = 1;
// Attempts to get an address again.
constexpr int kAttempts = 4;

// Computes nothing, and counts how often it was asked to.
class CountingEngine final : public casehost::SolveEngine {
 public:
    explicit CountingEngine(std::shared_ptr<int> solves) : solves_(std::move(solves)) {}
    Outcome Prepare(const casehost::CaseData& problem) override {
        ++*solves_;
        results_ = problem;
        return {Progress::running, ""};
    }
    Outcome Step(int) override { return {Progress::done, ""}; }
    const casehost::CaseData& Results() const override { return results_; }

 private:
    std::shared_ptr<int> solves_;
    casehost::CaseData results_;
};

// The object that events happen to, and those before and behind it in its list.
struct Names {
    const char* before;
    const char* target;
    const char* after;
};

Names NamesOf(Place place) {
    switch (place) {
        case Place::operation:
            return {"T-0", "T-1", "T-2"};
        case Place::inner_object:
        case Place::inner_variable:
        case Place::inner_fixed:
            return {"I1", "I2", "I3"};
        case Place::published:
            return {"P1", "P2", "P3"};
        default:
            return {"S1", "S2", "S3"};
    }
}

struct Cases {
    casehost::CaseData first, renewed, other;
};

const Cases& Data(bool online) {
    static const Cases cases[2] = {
        {PlantData(0, false), PlantData(kNewGeneration, false), OtherData(false)},
        {PlantData(0, true), PlantData(kNewGeneration, true), OtherData(true)}};
    return cases[online];
}

std::string Shown(double number) {
    return FIValue::OfReal(number).ToText();
}

}  // namespace

Plant::Plant(Place place, bool online)
    : place_(place), online_(online), host_(std::make_unique<casehost::CaseHost>(false)) {
    FixtopInstallHost(&host_->Services());
    host_->SetEngineMaker([solves = solves_] { return std::make_unique<CountingEngine>(solves); });
    other_case_ = host_->Open(Data(online_).other).opened;
    case_ = host_->Open(Data(online_).first).opened;
    Adopt();
}

Plant::~Plant() {
    FixtopInstallHost(nullptr);
}

void Plant::Adopt() {
    const Names names = NamesOf(place_);
    bystander_ = Find(case_->MainFlowSheet(), "S4");
    operation_ = Find(case_->MainFlowSheet(), "T-1");
    const auto by_name = [this](const std::string& name) {
        if (name[0] == 'P') return Published(name[1] - '1');
        return Find(name[0] == 'I' ? operation_->SubFlowSheet() : case_->MainFlowSheet(), name);
    };
    before_ = by_name(names.before);
    target_ = by_name(names.target);
    after_ = by_name(names.after);
    first_name_ = names.target;
}

host::FlowSheet* Plant::Sheet() {
    return first_name_[0] == 'I' ? operation_->SubFlowSheet() : case_->MainFlowSheet();
}

host::Viewable* Plant::Find(host::FlowSheet* sheet, const std::string& name) {
    host::FlowSheetObjectIterator it = sheet->Objects();
    host::Viewable* each = it.Reset();
    while (each && each->GetName().Str() != name) each = it.Next();
    return each;
}

host::Viewable* Plant::Published(int index) {
    const std::string moniker = "RTIVariable.500." + std::to_string(index);
    auto* manager = case_->OnlineManager();
    return manager ? manager->ResolveVariableOwner(host::VarDescription(moniker.c_str(), 0))
                   : nullptr;
}

int Plant::IndexOf(host::Viewable& object) {
    int index = 0;
    if (&object == target_ && first_name_[0] == 'P') {
        while (Published(index) != &object) ++index;
        return index;
    }
    host::FlowSheetObjectIterator it =
        (&object == operation_ ? case_->MainFlowSheet() : Sheet())->Objects();
    for (host::Viewable* each = it.Reset(); each != &object; each = it.Next()) {
        if (each->Type() == object.Type()) ++index;
    }
    return index;
}

std::string Plant::Known() const {
    const double number = NumberOf(first_name_);
    switch (place_) {
        case Place::variable:
        case Place::inner_variable:
        case Place::published:
            return Shown(TemperatureOf(number));
        case Place::element:
            return Shown(ProfileOf(number));
        case Place::component:
            return Shown(FractionOf(number));
        case Place::basis:
            return Shown(kTuned);
        default:
            return "";
    }
}

void Plant::AddTarget() {
    target_ = case_->Add(Sheet(), NewObjectData(first_name_, kNewGeneration));
    if (place_ == Place::operation) operation_ = target_;
}

// The allocator may give the freed memory to the first that asks, or to a later one.
void Plant::AddAtAddress() {
    const host::Viewable* dead = target_;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (attempt > 0) case_->Rename(target_, first_name_ + "-" + std::to_string(attempt));
        AddTarget();
        address_taken_again_ = target_ == dead;
        if (address_taken_again_) return;
    }
}

void Plant::Reopen() {
    const casehost::Case* former = case_;
    case_ = host_->Open(Data(online_).renewed).opened;
    address_taken_again_ = case_ == former;
    Adopt();
}

void Plant::Happen(Event event) {
    const std::string other_name = first_name_ + " renamed";
    switch (event) {
        case Event::deleted:
        case Event::replaced_at_its_address:
            case_->Delete(target_);
            return;
        case Event::sibling_deleted:
            case_->Delete(before_);
            return;
        case Event::holder_deleted:
            case_->Delete(operation_);
            return;
        case Event::renamed:
            case_->Rename(target_, other_name);
            return;
        case Event::holder_renamed:
            case_->Rename(operation_, "T renamed");
            return;
        case Event::renamed_and_name_taken:
            case_->Rename(target_, other_name);
            case_->Rename(after_, first_name_);
            return;
        case Event::replaced:
            case_->Delete(target_);
            AddTarget();
            return;
        case Event::replaced_by_renamed:
            case_->Delete(target_);
            case_->Rename(after_, first_name_);
            return;
        case Event::reordered:
            case_->Move(target_, 0);
            return;
        case Event::closed:
        case Event::closed_and_reopened:
            host_->Close(*case_);
            return;
        case Event::other_case_closed:
            host_->Close(*other_case_);
            return;
        case Event::host_out:
        case Event::host_out_and_gone:
        case Event::host_out_and_back:
            FixtopInstallHost(nullptr);
            return;
        case Event::none:
        case Event::client_leaves:
        case Event::client_leaves_twice:
        case Event::client_leaves_late:
        case Event::client_leaves_silently:
            return;
    }
}

void Plant::Settle(Event event, bool purge) {
    const bool needs_memory =
        event == Event::replaced_at_its_address || event == Event::closed_and_reopened;
    if (purge || needs_memory) host_->RunHostLoop();
    if (event == Event::replaced_at_its_address) AddAtAddress();
    if (event == Event::closed_and_reopened) Reopen();
    if (event == Event::host_out_and_back) FixtopInstallHost(&host_->Services());
    if (event == Event::host_out_and_gone) host_.reset();
}

void Plant::ChangeElsewhere() {
    case_->Rename(bystander_, "S4 renamed");
    case_->Rename(bystander_, "S4");
}

}  // namespace fixtop::lifetimes
