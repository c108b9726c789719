// SPDX-License-Identifier: Apache-2.0
#pragma once

// Case: a live case, built from CaseData and turned back into it. It is the host's SimulationCase
// and owns every object below it.
//
// Deleted objects stay readable in a graveyard until PurgeDeleted, which the host's own loop calls
// when no client is on the stack, or until the case is closed. Changes of the structure are told to
// the model callback as SimulationStep.
//
// A store makes calculated values stale: those of the stored object, of the unit operation that
// makes it when it is a stream, and of everything downstream of these, down into and up out of
// template operations, and of utilities attached to any of them. Stale values are shown missing and
// their objects as not solved until a solve has filled them. A recording can't be solved again: its
// values stay, and are told to be outdated. A store into a reaction or the basis makes all stale;
// one of a value that stands already changes nothing.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "casehost/case_data.h"
#include "casehost/solve_engine.h"
#include "fixtop/host/simulation_case.h"
#include "live/objects.h"
#include "live/solver_node.h"

namespace fixtop::casehost {

class Case final : public NodeOf<host::SimulationCase> {
 public:
    Case(const CaseData& data, std::shared_ptr<StoreWatch> watch);
    ~Case() override;

    // The case as data, stale values without numbers; those of a recording with their mark.
    CaseData ToData();
    // Takes calculated values and status over from a case of the same structure; false when the
    // structure differs, and nothing is taken.
    bool ApplyResults(const CaseData& results);

    // Structure. Objects are named as clients hold them; false when one is not of this case.
    bool Delete(host::Viewable* object);
    bool Rename(host::Viewable* object, const std::string& name);
    // Into the main flowsheet or that of a template operation; a null `flowsheet` means the main
    // one. Null when the name is taken.
    host::Viewable* Add(host::FlowSheet* flowsheet, const ObjectData& object);
    bool Move(host::Viewable* object, std::size_t index);
    void PurgeDeleted();
    std::size_t DeletedCount() const { return graveyard_.size(); }

    // Paths of objects, as attachments name them (naming/object_path.h), seen from the flowsheet of
    // `from`, or from the main one when it is null.
    Node* FindByPath(std::string_view path, const Node* from);
    std::string PathOf(const Node& node, const Node* from);
    // Moniker seen from the case, with a leading '/' and the name of each object in parentheses.
    std::string MonikerOf(const Node& node) const;
    bool DescribeMoniker(const std::string& moniker, host::VarDescription::Facts& out) const;

    // Solving.
    SolverNode& Solver() { return *solver_; }
    void SetEngine(std::unique_ptr<SolveEngine> engine) { solver_->SetEngine(std::move(engine)); }
    bool IsRecorded() const { return basics_.recorded; }
    // Values are shown that are older than a change of the case.
    bool HasOldResults();
    int SolveTurns() const { return basics_.solve_turns; }
    void ValueStored(Node& node);
    void Notify(void (host::IModelCallback::*event)());
    Node* FirstInError();
    // One turn of the host's loop: pending notifications, then the solver.
    void Turn();
    // Tells the callback that the case goes away and takes it out.
    void Close();

    const CaseBasics& Basics() const { return basics_; }
    unsigned UnitSet() const { return basics_.unit_set; }
    // What is told in default units is told anew.
    void SetUnitSet(unsigned set);
    void SetVisible(bool visible) { visible_ = visible; }
    void SetSaver(std::function<bool(Case&)> saver) { saver_ = std::move(saver); }
    // References that named nothing when the case was built.
    const std::vector<CaseProblem>& Problems() const { return problems_; }

    // host::SimulationCase
    host::FlowSheet* MainFlowSheet() override { return main_.get(); }
    host::BasisManager* Basis() override { return basis_.get(); }
    const host::LinkedList* ProcessDataTables() override { return data_tables_.ListOrNull(); }
    const host::LinkedList* CaseUtilities() override { return utilities_.ListOrNull(); }
    bool Dynamic() override { return basics_.dynamic; }
    bool SimCaseDynamic() override { return basics_.dynamic; }
    host::FlowSheetSolver* MainSolver() override { return solver_.get(); }
    // One solver computes all flowsheets of a case.
    host::FlowSheetSolver* ActiveSolver() override { return solver_.get(); }
    host::COnlineConnectivityManager* OnlineManager() override { return manager_.get(); }

    // host::Document
    const host::FileName& GetDocumentName() override { return document_; }
    void SetDocumentName(const host::FileName& name) override { document_ = name; }
    bool Save() override { return saver_ && saver_(*this); }
    bool IsVisible() override { return visible_; }

 protected:
    Node* Follow(std::string_view& rest) override;

 private:
    using ObjectVisitor = std::function<void(Node&)>;
    // A list of objects outside of the flowsheets.
    struct Section {
        NodeList* list;
        Node* owner;
        TypeFamily family;
        std::vector<ObjectData> CaseData::*data;
    };
    struct PathWorld;

    std::unique_ptr<Node> MakeObject(Node* owner, const ObjectData& data, TypeFamily family);
    void FillFlowsheet(FlowsheetNode& flowsheet, const FlowsheetData& data) {
        FillList(flowsheet.Nodes(), &flowsheet, data.objects, TypeFamily::unit_op);
    }
    void FillList(NodeList& list, Node* owner, const std::vector<ObjectData>& data,
                  TypeFamily family);
    void ResolveReferences(Node& node, const ObjectData& data);
    // At the stream, the unit operation on whose port it is. A variable named like the row of a
    // port is one: so are those of units without a model, which the solver leaves alone.
    void ShowLink(Node& stream, PortData::Role role, Node& unit);
    void ResolveList(NodeList& list, const std::vector<ObjectData>& data);
    ObjectData ObjectToData(Node& node);
    FlowsheetData FlowsheetToData(FlowsheetNode& of) { return {ListToData(of.Nodes())}; }
    std::vector<ObjectData> ListToData(NodeList& list);
    void ApplyList(NodeList& list, const std::vector<ObjectData>& results);
    bool SameStructure(NodeList& list, const std::vector<ObjectData>& other);
    // Null for an object that is deleted or stands in no list of the case.
    NodeList* ListOf(Node* node);
    // Tells clients to look again.
    void Changed();
    void StructureChanged();
    void ForEach(const ObjectVisitor& visit);
    void ForEachIn(NodeList& list, const ObjectVisitor& visit);
    void MarkStale(Node& start);

    std::shared_ptr<StoreWatch> watch_;
    CaseContext context_;
    CaseBasics basics_;
    ShapePool shapes_;
    std::unique_ptr<FlowsheetNode> main_;
    std::unique_ptr<SolverNode> solver_;
    std::unique_ptr<BasisNode> basis_;
    std::unique_ptr<ManagerNode> manager_;
    NodeList utilities_;
    NodeList data_tables_;
    std::vector<Section> sections_;
    std::vector<std::unique_ptr<Node>> graveyard_;
    std::unique_ptr<class DependencyMap> dependencies_;
    std::vector<CaseProblem> problems_;
    std::function<bool(Case&)> saver_;
    host::FileName document_;
    bool visible_ = true;
    bool change_to_tell_ = false;
};

}  // namespace fixtop::casehost
