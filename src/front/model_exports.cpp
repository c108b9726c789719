// SPDX-License-Identifier: Apache-2.0
// The exports of the neutral view.

#include <vector>

#include "automation/typed/member_table.h"
#include "automation/typed/type_id.h"
#include "diagnostics/memory_guard.h"
#include "fixtop/fixtop.h"
#include "framework/nodes/shield.h"
#include "front/own_iterator.h"
#include "mapping/check/check_model.h"
#include "mapping/check/why_missing.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/nodes/model_top.h"
#include "mapping/open/open_model.h"
#include "mapping/translators/semantic_modules.h"
#include "semantic/function_table.h"

namespace fixtop {

namespace {

ModuleHandle OwnModule() {
    return FindLoadedModule(kOwnModule);
}

// What maps may name of this module. Nothing of it is looked up among the exports, which say
// nothing about arguments.
std::vector<NamedFunction> MapFunctions() {
    const std::span<const NamedFunction> semantic = SemanticFunctionTable();
    std::vector<NamedFunction> functions(semantic.begin(), semantic.end());
    functions.push_back({"GetTopHovexEntry", GetTopHovexEntry});
    functions.push_back({"GetTopFIEntryV", GetTopFIEntryV});
    return functions;
}

void OfferOwnFunctions() {
    static const std::vector<NamedFunction> functions = MapFunctions();
    if (!FindSemanticModule(kOwnModule)) OfferSemanticModule(kOwnModule, functions);
}

void Take(const char* given, std::string& file) {
    if (given) file = given;
}

ModelFiles FilesOf(const FixtopModelFiles* given) {
    OfferOwnFunctions();
    ModelFiles files;
    files.unitResources = OwnModule();
    if (!given) return files;
    Take(given->classes, files.classes);
    Take(given->map, files.map);
    Take(given->units, files.units);
    Take(given->translateName, files.translateName);
    if (given->wholeLists) files.listLength = ListLength::kWhole;
    return files;
}

// The object is null when there was no memory to make it.
template <class Open>
FIEntry* OrNull(Open open) {
    return memory::Or(nullptr, [&]() -> FIEntry* { return open(); });
}

FIEntry* RootOf(Ref<CCDMClassContext> context) {
    if (!context) return nullptr;
    return Ref<FIEntry>::Share(new Shielded<CCDMTopEntry>(std::move(context))).Detach();
}

FIReference* NodeOf(FIEntry& entry, bool specified) {
    AppReferences nodes;
    if (const auto* attribute = dynamic_cast<CCDMClassEntry*>(&entry)) {
        nodes = attribute->Faces().ByFace();
    } else if (const auto* top = dynamic_cast<CCDMTopEntry*>(&entry)) {
        nodes = top->Context().Place().references;
    }
    return specified ? nodes.secondary.Get() : nodes.primary.Get();
}

// What stands below a node of a neutral view; null when that is no object.
Ref<CCDMClassContext> PlaceBelow(FIEntry& entry) {
    const auto context = Ref<FIContext>::Adopt(entry.GetContext());
    return Ref<CCDMClassContext>::Share(dynamic_cast<CCDMClassContext*>(context.Get()));
}

// Whether the visitor wants more.
class MemberVisits {
 public:
    MemberVisits(FixtopMemberVisitor visit, void* owner) : visit_(visit), owner_(owner) {}

    bool VisitChain(const TypedInterface& last) {
        return (!last.base || VisitChain(*last.base)) && Visit(last);
    }
    bool Visit(const TypedInterface& each) {
        FixtopMember row = Head(each);
        if (!Tell(row)) return false;
        for (const TypedMember& member : each.members) {
            Fill(row, member);
            if (!Tell(row)) return false;
            ++row.number;
        }
        return true;
    }
    int Count() const { return count_; }

 private:
    static FixtopMember Head(const TypedInterface& each) {
        FixtopMember row{};
        row.kind = FixtopMember::kInterface;
        row.number = each.first_number;
        row.className = each.class_name.c_str();
        row.interfaceName = each.name.c_str();
        row.baseName = each.base ? each.base->class_name.c_str() : nullptr;
        return row;
    }
    static void Fill(FixtopMember& row, const TypedMember& member) {
        row.kind = FixtopMember::kValue + static_cast<int>(member.kind);
        row.name = member.name.c_str();
        row.owner = member.owner.c_str();
        row.type = AttrTypeText(member.type);
        row.typeName = member.type_name.c_str();
        row.quantity = member.quantity.c_str();
        row.isArray = member.is_array;
    }
    bool Tell(const FixtopMember& row) {
        ++count_;
        return memory::Outside([&] { return visit_(owner_, &row); });
    }

    FixtopMemberVisitor visit_;
    void* owner_;
    int count_ = 0;
};

void VisitMembers(const MemberTable& table, const char* class_name, MemberVisits& visits) {
    if (class_name) {
        const TypedInterface* found = table.Find(class_name);
        if (found) visits.VisitChain(*found);
        return;
    }
    for (const TypedInterface* each : table.Interfaces()) {
        if (!visits.Visit(*each)) return;
    }
}

static_assert(static_cast<int>(TypedMember::Kind::kValue) == 0);
static_assert(FixtopMember::kValue + static_cast<int>(TypedMember::Kind::kArray) ==
              FixtopMember::kArray);
static_assert(static_cast<int>(Absence::kUnmapped) == kFixtopUnmapped);
static_assert(static_cast<int>(Absence::kRefused) == kFixtopRefused);

}  // namespace

FIEntry* FixtopOpenModel(FIEntry* top, const FixtopModelFiles* files) {
    return OrNull([=] { return RootOf(OpenModelOnTop(FilesOf(files), top)); });
}

FIEntry* FixtopOpenModelOnNode(FIIteratorBase* node, const char* className,
                               const FixtopModelFiles* files) {
    return OrNull([=]() -> FIEntry* {
        FIIterator* it = OwnIterator(node);
        if (!it || !className) return nullptr;
        const auto reference = FIReference::Unbound(Ref<FIIterator>::Adopt(it->Copy()));
        return RootOf(OpenModelOnNode(FilesOf(files), className, *reference));
    });
}

FIEntry* FixtopOpenPureModel(const char* classes, const char* className) {
    return OrNull([=] {
        return RootOf(OpenPureModel(classes ? classes : kModelClasses,
                                    className ? className : kTopClass, OwnModule()));
    });
}

FIEntry* FixtopOpenDictionary(const FixtopModelFiles* files) {
    return OrNull([=] { return OpenDictionary(FilesOf(files)).Detach(); });
}

int FixtopVisitMembers(const FixtopModelFiles* files, const char* className,
                       FixtopMemberVisitor visit, void* owner) {
    return memory::Or(0, [=] {
        MemberVisits visits(visit, owner);
        if (!visit) return 0;
        const auto definitions = ReadDefinitions(FilesOf(files));
        if (definitions) VisitMembers(MemberTable(definitions->library), className, visits);
        return visits.Count();
    });
}

void FixtopInterfaceId(const char* name, int major, int minor, InterfaceId* id) {
    if (id)
        *id = memory::Or(InterfaceId{}, [=] { return IdOfType(name ? name : "", major, minor); });
}

int FixtopCheckModel(const FixtopModelFiles* files, FixtopFindingVisitor visit, void* owner) {
    return memory::Or(0, [=] {
        int visited = 0;
        if (!visit) return visited;
        for (const Finding& each : CheckModel(FilesOf(files))) {
            const FixtopFinding finding{static_cast<int>(each.kind), each.file.c_str(), each.line,
                                        each.text.c_str()};
            ++visited;
            if (!memory::Outside([&] { return visit(owner, &finding); })) break;
        }
        return visited;
    });
}

int FixtopWhyMissing(FIIteratorBase* node, const char* attribute, FIValue& reason) {
    const auto give_up = [&]() -> int {
        reason.SetText(memory::kOutOfMemoryText);
        return kFixtopNotNeutral;
    };
    return memory::OrElse(give_up, [&]() -> int {
        reason.Clear();
        FIIterator* it = OwnIterator(node);
        const auto place = it ? PlaceBelow(*it->EntryAt(it->Depth())) : Ref<CCDMClassContext>();
        if (!place || !attribute) return kFixtopNotNeutral;
        std::string text;
        const Absence absence = WhyMissing(*place, attribute, text);
        if (!text.empty()) reason.SetText(text);
        return static_cast<int>(absence);
    });
}

unsigned long long FixtopObjectNumber(FIIteratorBase* node) {
    return memory::Or(0ULL, [=]() -> unsigned long long {
        const FIIterator* it = OwnIterator(node);
        return it ? it->ObjectNumber() : 0;
    });
}

FIIteratorBase* FixtopApplicationNode(FIIteratorBase* node, int face) {
    return memory::Or(nullptr, [=]() -> FIIteratorBase* {
        FIIterator* it = OwnIterator(node);
        if (!it || (face != 1 && face != 2)) return nullptr;
        FIReference* reference = NodeOf(*it->EntryAt(it->Depth()), face == 2);
        return reference && reference->Rebind() ? reference->Copy() : nullptr;
    });
}

}  // namespace fixtop
