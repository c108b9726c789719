// SPDX-License-Identifier: Apache-2.0
#pragma once

// The nodes that stand for a case's objects: plain ones, material streams, template operations,
// published variables, flowsheets and the basis.

#include <set>

#include "fixtop/host/simulation_case.h"
#include "live/node_list.h"

namespace fixtop::casehost {

// Moves `rest` behind `prefix` when it begins with it.
inline bool Skip(std::string_view& rest, std::string_view prefix) {
    if (rest.substr(0, prefix.size()) != prefix) return false;
    rest.remove_prefix(prefix.size());
    return true;
}

// The steps of monikers. Names follow them in parentheses; without these they are understood too.
namespace step {
inline constexpr char kFlowSheet[] = "FlowSht.1";
inline constexpr char kSolver[] = "Solver.400";
inline constexpr char kStream[] = "StreamObject.400";
inline constexpr char kUnitOp[] = "UnitOpObject.400";
inline constexpr char kUtility[] = "Utility.300";
inline constexpr char kDataTable[] = "ProcessDataTable.300";
inline constexpr char kBasis[] = "FluidPkgMgr.300";
inline constexpr char kReaction[] = "RxnPackageManager.300/Rxn.300";
inline constexpr char kManager[] = "OnlineConnectivityMgr.500";
inline constexpr char kPublished[] = "RTIVariable.500";
}  // namespace step

using PlainNode = NodeOf<host::Viewable>;

// A stream whose composition can be edited. A fraction that is stored outside of Begin and End is
// normalised with the others at once; between them once at the end. A composition whose fractions
// have no positive sum at that time goes back to what it was when the edit began.
class StreamNode final : public NodeOf<host::Viewable>, public host::ProcessStream {
 public:
    using NodeOf::NodeOf;

    host::ProcessStream* AsProcessStream() override { return this; }
    void BeginDeferCompNormalize() override { deferring_ = true; }
    void EndDeferCompNormalize() override;
    void StartCompositionEditSession() override;

 protected:
    bool StoresCompositions() const override { return true; }
    void CompositionChanged(Row& row) override;

 private:
    std::vector<double> Fractions(const Row& row);
    void Normalise(const Row& row, const std::vector<double>& before);

    bool deferring_ = false;
    std::set<const Row*> edited_;
    std::map<const Row*, std::vector<double>> saved_;
};

class FlowsheetNode final : public NodeOf<host::FlowSheet> {
 public:
    using NodeOf::NodeOf;

    host::FlowSheetObjectIterator Objects() override {
        return host::FlowSheetObjectIterator(&objects_.List());
    }
    host::FlowSheetSolver* Solver() override;
    NodeList& Nodes() { return objects_; }

 protected:
    Node* Follow(std::string_view& rest) override;

 private:
    NodeList objects_;
};

class TemplateNode final : public NodeOf<host::Viewable> {
 public:
    using NodeOf::NodeOf;

    host::FlowSheet* SubFlowSheet() override { return inner_.get(); }
    FlowsheetNode* Inner() override { return inner_.get(); }
    void SetInner(std::unique_ptr<FlowsheetNode> inner) { inner_ = std::move(inner); }

 protected:
    Node* Follow(std::string_view& rest) override {
        return Skip(rest, step::kFlowSheet) ? inner_.get() : nullptr;
    }

 private:
    std::unique_ptr<FlowsheetNode> inner_;
};

class PublishedNode final : public NodeOf<host::RTIVariable> {
 public:
    using NodeOf::NodeOf;

    double GetValue() override;
    void SetValue(double value) override {
        if (const Row* row = ValueRow()) StoreReal(row->description, value);
    }
    host::Text UnitText() override;

 private:
    const Row* ValueRow() const { return GetShape() ? GetShape()->ByName("Value") : nullptr; }
};

class ManagerNode final : public NodeOf<host::COnlineConnectivityManager> {
 public:
    using NodeOf::NodeOf;
    ~ManagerNode() override { put_ModelCallback(nullptr); }

    void put_ModelCallback(host::IModelCallback* callback) override;
    host::IModelCallback* ModelCallback() override { return callback_; }
    host::RTIVariable* AsPublished(host::Viewable* object) override {
        return dynamic_cast<PublishedNode*>(object);
    }
    void GetVariableDimensions(const host::VarDescription& variable, host::DimInfo& out) override;
    NodeList& Nodes() { return published_; }
    Node* FollowPublished(std::string_view& rest) { return Follow(rest); }

 protected:
    Node* Follow(std::string_view& rest) override;

 private:
    NodeList published_;
    host::IModelCallback* callback_ = nullptr;
};

class BasisNode final : public NodeOf<host::BasisManager>, public host::ReactionPackageManager {
 public:
    BasisNode(CaseContext& context, Node* owner, const ObjectType* type, std::string name);
    ~BasisNode() override;

    host::ReactionPackageManager* ReactionPackages() override {
        return reactions_.Size() == 0 ? nullptr : this;
    }
    int ReactionCount() override { return static_cast<int>(reactions_.Size()); }
    host::Reaction* RxnNumber(int number) override;
    host::CSpecSource* SpecSource() override;
    NodeList& Nodes() { return reactions_; }
    class BasisTree& Tree() {
        return *tree_;
    }

 protected:
    Node* Follow(std::string_view& rest) override {
        return Skip(rest, step::kReaction) ? reactions_.FollowName(rest) : nullptr;
    }

 private:
    NodeList reactions_;
    std::unique_ptr<BasisTree> tree_;
    std::unique_ptr<class BasisSpecSource> spec_source_;
};

}  // namespace fixtop::casehost
