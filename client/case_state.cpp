// SPDX-License-Identifier: Apache-2.0
#include "case_state.h"

#include <utility>

namespace fixtop::client {

namespace {

constexpr char kNeutralView[] = "the neutral view";

}  // namespace

std::string HostOfCase::Save(const std::string&) {
    return "the host of the case saves it itself";
}

const std::vector<std::string>& HostOfCase::Remarks() const {
    static const std::vector<std::string> none;
    return none;
}

CaseState::CaseState(std::unique_ptr<HostOfCase> host) : host_(std::move(host)) {
    if (!host_) return;
    entry_ = Ref<FIEntry>::Adopt(Given(GetCombinedEntry(host_->Session())));
    top_ = Ref<FIIteratorBase>::Adopt(Given(FixtopMakeIterator(entry_.Get(), false)));
}

// What stands on the case goes before the case.
CaseState::~CaseState() {
    listed_.Reset();
    found_.Reset();
    neutral_.Reset();
    top_.Reset();
    entry_.Reset();
    // The combined top entry had itself told of changes.
    if (host_ && host_->Session()) UnsetTopNotify(host_->Session());
}

Node CaseState::Top() {
    return Node(shared_from_this(), Ref<FIIteratorBase>::Adopt(Given(top_->Copy())));
}

Node CaseState::Neutral() {
    if (!neutral_) OpenNeutral({});
    return Node(shared_from_this(), Ref<FIIteratorBase>::Adopt(Given(neutral_->Copy())));
}

std::string CaseState::OpenNeutral(const ModelFiles& files) {
    Ref<FIEntry> root;
    std::string warning = OpenModel(kNeutralView, files, true, FixtopOpenModel, entry_.Get(), root);
    neutral_ = Ref<FIIteratorBase>::Adopt(Given(FixtopMakeIterator(root.Get(), false)));
    listed_.Reset();
    found_.Reset();
    classes_.reset();
    files_ = files;
    return warning;
}

std::shared_ptr<const ClassTable> CaseState::Classes() {
    if (!classes_) classes_ = ClassTable::ReadAgain(files_);
    // To be told why.
    if (classes_->Classes().empty()) classes_ = ClassTable::Read(files_);
    return classes_;
}

std::optional<Node> CaseState::NeutralOf(const Node& raw) {
    const auto stands_here = [&](const Node& object) {
        const auto its_raw = object.Raw();
        return its_raw && *its_raw == raw;
    };
    const auto found = [&](const Node& object) {
        found_ = Ref<FIIteratorBase>::Adopt(Given(object.Iterator().Copy()));
        return object;
    };
    if (found_) {
        const Node next(shared_from_this(), Ref<FIIteratorBase>::Adopt(Given(found_->Copy())));
        if (stands_here(next)) return next;
        if (next.Iterator().Next() && stands_here(next)) return found(next);
    }
    // Objects of the neutral view stand in the lists of its flowsheets.
    for (const Node& object : Neutral().Matches("Flowsheet")) {
        bool more = object.Iterator().DownFirst();
        for (; more; more = object.Iterator().Next()) {
            if (stands_here(object)) return found(object);
        }
    }
    return std::nullopt;
}

Node CaseState::Listed() {
    if (!listed_) {
        Ref<FIEntry> root;
        OpenModel(kNeutralView, files_, false, FixtopOpenModel, entry_.Get(), root);
        listed_ = Ref<FIIteratorBase>::Adopt(Given(FixtopMakeIterator(root.Get(), false)));
    }
    return Node(shared_from_this(), Ref<FIIteratorBase>::Adopt(Given(listed_->Copy())));
}

Node CaseState::RootOf(FIEntry& entry) {
    return Node(shared_from_this(),
                Ref<FIIteratorBase>::Adopt(Given(FixtopMakeIterator(&entry, false))));
}

FISolver* CaseState::GetSolver() const {
    void* solver = nullptr;
    entry_->QueryService(1, &solver);
    return static_cast<FISolver*>(solver);
}

}  // namespace fixtop::client
