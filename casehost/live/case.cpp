// SPDX-License-Identifier: Apache-2.0

#include "live/case.h"
#include "live/basis_tree.h"
#include "live/dependents.h"
#include "naming/references.h"

namespace fixtop::casehost {

Case::Case(const CaseData& data, std::shared_ptr<StoreWatch> watch)
    : NodeOf(context_, nullptr, &types::kCase, data.name),
      watch_(std::move(watch)),
      context_{this, watch_.get(), data.recorded},
      basics_(data),
      document_(host::Text(data.name), host::Text()) {
    main_ = std::make_unique<FlowsheetNode>(context_, this, &types::kFlowSheet, "Main");
    solver_ = std::make_unique<SolverNode>(context_, main_.get(), &types::kSolver, "Solver");
    basis_ = std::make_unique<BasisNode>(context_, this, &types::kBasis, "Basis");
    sections_ = {{&utilities_, this, TypeFamily::utility, &CaseData::utilities},
                 {&data_tables_, this, TypeFamily::data_table, &CaseData::data_tables},
                 {&basis_->Nodes(), basis_.get(), TypeFamily::reaction, &CaseData::reactions}};
    if (data.online) {
        manager_ = std::make_unique<ManagerNode>(context_, this, &types::kOnlineManager, "Online");
        sections_.push_back(
            {&manager_->Nodes(), manager_.get(), TypeFamily::published, &CaseData::published});
    }
    FillFlowsheet(*main_, data.main);
    for (const Section& each : sections_) {
        FillList(*each.list, each.owner, data.*each.data, each.family);
    }
    ResolveList(main_->Nodes(), data.main.objects);
    for (const Section& each : sections_) ResolveList(*each.list, data.*each.data);
    basis_->Tree().Build(data.basis, problems_);
    ForEach([this](Node& node) {
        if (node.Condition() == ObjectStatus::not_solved) solver_->SetNeedsToRun(true);
    });
    Identities::Changed();
}

Case::~Case() = default;

std::unique_ptr<Node> Case::MakeObject(Node* owner, const ObjectData& data, TypeFamily family) {
    const ObjectType* type = types::FindOrMake(data.type, family);
    std::unique_ptr<Node> node;
    if (family == TypeFamily::published) {
        node = std::make_unique<PublishedNode>(context_, owner, type, data.name);
    } else if (type->IsA(&types::kMaterialStream)) {
        node = std::make_unique<StreamNode>(context_, owner, type, data.name);
    } else if (type->IsA(&types::kTemplateOp)) {
        auto operation = std::make_unique<TemplateNode>(context_, owner, type, data.name);
        if (data.sub_flowsheet) {
            auto inner = std::make_unique<FlowsheetNode>(context_, operation.get(),
                                                         &types::kFlowSheet, data.name);
            FillFlowsheet(*inner, *data.sub_flowsheet);
            operation->SetInner(std::move(inner));
        }
        node = std::move(operation);
    } else {
        node = std::make_unique<PlainNode>(context_, owner, type, data.name);
    }
    const bool is_stream = type->IsA(&types::kStream);
    node->SetVariables(shapes_.Get(data.variables, data.ports, is_stream), data.variables);
    node->SetCondition(data.status, data.status_text);
    node->SetStale(data.stale);
    return node;
}

void Case::FillList(NodeList& list, Node* owner, const std::vector<ObjectData>& data,
                    TypeFamily family) {
    list.Reserve(data.size());
    for (const ObjectData& object : data) list.Append(MakeObject(owner, object, family));
}

void Case::ResolveList(NodeList& list, const std::vector<ObjectData>& data) {
    for (std::size_t i = 0; i < data.size(); ++i) ResolveReferences(list.At(i), data[i]);
}

void Case::ResolveReferences(Node& node, const ObjectData& data) {
    const auto& rows = node.GetShape()->AllRows();
    const auto resolve = [&](const Row& row, Cell& cell, Node* target, const char* what,
                             const std::string& path) {
        cell.target = target;
        if (target) return;
        problems_.push_back({PathOf(node, nullptr) + ": " + row.name,
                             std::string(what) + " \"" + path + "\" names no object"});
    };
    for (std::size_t i = 0; i < data.variables.size(); ++i) {
        if (rows[i]->value_kind != host::kAttachment) continue;
        const std::vector<ValueData>& values = data.variables[i].values;
        const std::span<Cell> cells = node.CellsOf(*rows[i]);
        for (std::size_t c = 0; c < std::min(cells.size(), values.size()); ++c) {
            const std::string& path = values[c].text;
            if (path.empty()) continue;
            resolve(*rows[i], cells[c], FindByPath(path, &node), "attachment", path);
            const auto role = PortRoleOf(rows[i]->name);
            if (role && cells[c].target) ShowLink(*cells[c].target, *role, node);
        }
    }
    for (std::size_t p = 0; p < data.ports.size(); ++p) {
        const Row& row = *rows[data.variables.size() + p];
        auto* flowsheet = dynamic_cast<FlowsheetNode*>(node.Owner());
        const std::string& stream = data.ports[p].stream;
        Cell& cell = node.CellAt(row.first_cell);
        cell.state = static_cast<std::uint8_t>(VariableState::specified);
        resolve(row, cell, flowsheet ? flowsheet->Nodes().Find(stream) : nullptr, "port stream",
                stream);
        if (cell.target) ShowLink(*cell.target, data.ports[p].role, node);
    }
    if (node.Inner()) ResolveList(node.Inner()->Nodes(), data.sub_flowsheet->objects);
}

void Case::ShowLink(Node& stream, PortData::Role role, Node& unit) {
    const bool makes = role == PortData::Role::product || role == PortData::Role::energy_out;
    const Row* row = stream.GetShape()->LinkRow(makes ? Link::upstream : Link::downstream);
    if (!row) return;
    Cell& cell = stream.CellAt(row->first_cell);
    cell.target = &unit;
    cell.state = static_cast<std::uint8_t>(VariableState::specified);
}

void Case::ForEachIn(NodeList& list, const ObjectVisitor& visit) {
    for (std::size_t i = 0; i < list.Size(); ++i) {
        visit(list.At(i));
        if (FlowsheetNode* inner = list.At(i).Inner()) ForEachIn(inner->Nodes(), visit);
    }
}

void Case::ForEach(const ObjectVisitor& visit) {
    ForEachIn(main_->Nodes(), visit);
    for (const Section& each : sections_) ForEachIn(*each.list, visit);
}

Node* Case::FirstInError() {
    Node* first = nullptr;
    ForEach([&](Node& node) {
        if (!first && node.Condition() == ObjectStatus::error) first = &node;
    });
    return first;
}

bool Case::HasOldResults() {
    bool found = false;
    ForEach([&](Node& node) { found = found || node.HasOldResults(); });
    return found;
}

void Case::ValueStored(Node& node) {
    change_to_tell_ = true;
    if (node.Class()->IsA(&types::kPublished)) return;
    MarkStale(node);
    solver_->CaseChanged();
}

void Case::MarkStale(Node& start) {
    if (start.Class()->IsA(&types::kReaction) || &start == basis_.get()) {
        ForEach([](Node& node) {
            if (!node.Class()->IsA(&types::kPublished)) node.SetStale(true);
        });
        return;
    }
    if (!dependencies_) {
        dependencies_ = std::make_unique<DependencyMap>();
        ForEach([this](Node& node) { dependencies_->AddNode(node); });
    }
    for (Node* node : dependencies_->Closure(start)) node->SetStale(true);
}

void Case::Notify(void (host::IModelCallback::*event)()) {
    host::IModelCallback* callback = manager_ ? manager_->ModelCallback() : nullptr;
    if (!callback) return;
    // The callback may take itself out while it runs.
    callback->AddRef();
    (callback->*event)();
    callback->Release();
}

void Case::Turn() {
    if (change_to_tell_) {
        change_to_tell_ = false;
        Notify(&host::IModelCallback::SimulationStep);
    }
    solver_->Turn();
}

void Case::Close() {
    ForEach([](Node& node) { node.EndIdentity(); });
    for (Node* node : std::initializer_list<Node*>{main_.get(), solver_.get(), basis_.get(),
                                                   manager_.get(), this}) {
        if (node) node->EndIdentity();
    }
    Notify(&host::IModelCallback::SimulationEvent);
    if (manager_) manager_->put_ModelCallback(nullptr);
}

void Case::Changed() {
    Identities::Changed();
    Notify(&host::IModelCallback::SimulationStep);
}

void Case::StructureChanged() {
    dependencies_.reset();
    solver_->CaseChanged();
    Changed();
}

void Case::SetUnitSet(unsigned set) {
    basics_.unit_set = set;
    Changed();
}

bool Case::Delete(host::Viewable* object) {
    Node* node = Node::Of(object);
    NodeList* list = ListOf(node);
    if (!list) return false;
    MarkStale(*node);
    graveyard_.push_back(list->Remove(*node));
    node->SetDeleted();
    StructureChanged();
    return true;
}

bool Case::Rename(host::Viewable* object, const std::string& name) {
    Node* node = Node::Of(object);
    NodeList* list = ListOf(node);
    if (!list || name.empty() || list->Find(name)) return false;
    node->SetName(name);
    if (FlowsheetNode* inner = node->Inner()) inner->SetName(name);
    list->Renamed();
    Changed();
    return true;
}

bool Case::Move(host::Viewable* object, std::size_t index) {
    Node* node = Node::Of(object);
    NodeList* list = ListOf(node);
    if (!list || !list->Move(*node, index)) return false;
    Changed();
    return true;
}

host::Viewable* Case::Add(host::FlowSheet* flowsheet, const ObjectData& object) {
    Node* owner = flowsheet ? Node::Of(flowsheet) : main_.get();
    auto* place = dynamic_cast<FlowsheetNode*>(owner);
    if (!place || place->IsDeleted() || place->Nodes().Find(object.name)) return nullptr;
    place->Nodes().Append(MakeObject(place, object, TypeFamily::unit_op));
    Node& added = place->Nodes().At(place->Nodes().Size() - 1);
    ResolveReferences(added, object);
    StructureChanged();
    return added.View();
}

// Deleted objects may still be attached to others; after this nothing points at them.
void Case::PurgeDeleted() {
    if (graveyard_.empty()) return;
    ForEach([](Node& node) {
        for (const auto& row : node.GetShape()->AllRows()) {
            if (row->value_kind != host::kAttachment) continue;
            for (Cell& cell : node.CellsOf(*row)) cell.target = node.Target(cell);
        }
    });
    basis_->Tree().ForgetDeleted();
    graveyard_.clear();
}

NodeList* Case::ListOf(Node* node) {
    if (!node || node->IsDeleted()) return nullptr;
    if (auto* flowsheet = dynamic_cast<FlowsheetNode*>(node->Owner())) {
        return node == solver_.get() ? nullptr : &flowsheet->Nodes();
    }
    for (const Section& each : sections_) {
        if (each.list->Holds(*node)) return each.list;
    }
    return nullptr;
}

}  // namespace fixtop::casehost
