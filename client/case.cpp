// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/case.h"

#include "case_state.h"
#include "fixtop/client/near_names.h"

namespace fixtop::client {

namespace {

class RunningHost final : public HostOfCase {
 public:
    explicit RunningHost(void* session) : session_(session) {}
    void* Session() override { return session_; }

 private:
    void* session_;
};

}  // namespace

Case Case::OfSession(void* session) {
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(session));
    if (!top) throw CaseError({"no host is installed in this process"});
    return Case(std::make_shared<CaseState>(std::make_unique<RunningHost>(session)));
}

const std::vector<std::string>& Case::Remarks() const {
    return case_->Host().Remarks();
}

Node Case::Top() const {
    return case_->Top();
}

Node Case::Neutral() const {
    return case_->Neutral();
}

std::string Case::OpenNeutral(const ModelFiles& files) const {
    return case_->OpenNeutral(files);
}

std::optional<Node> Case::AsListed(const Node& neutral) const {
    auto found = case_->Listed().Find(neutral.Path());
    if (!found) return std::nullopt;
    return std::move(found->node);
}

bool Case::HasOldResults() const {
    return case_->Host().HasOldResults();
}

std::vector<std::string> Case::UnitSets() const {
    return case_->Host().UnitSets();
}

std::string Case::UnitSet() const {
    return case_->Host().UnitSet();
}

void Case::UseUnitSet(const std::string& name) const {
    std::string known;
    for (const std::string& set : UnitSets()) {
        if (EditDistance(set, name) == 0) return case_->Host().UseUnitSet(set);
        known += (known.empty() ? "" : ", ") + set;
    }
    throw CaseError({"no such set of units: " + name + "; expected " +
                     (known.empty() ? "none, for the host offers no choice" : known)});
}

std::string Case::PublishedFile() const {
    return case_->Host().PublishedFile();
}

void Case::Close() const {
    case_->Host().Close();
}

void Case::Save(const std::string& file) const {
    const std::string problem = case_->Host().Save(file);
    if (!problem.empty()) throw CaseError({problem});
}

}  // namespace fixtop::client
