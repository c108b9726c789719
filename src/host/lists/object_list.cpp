// SPDX-License-Identifier: Apache-2.0
#include "host/lists/object_list.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "framework/nodes/shield.h"
#include "host/host_access.h"
#include "host/levels/object_node.h"

namespace fixtop {

HFSOContext::HFSOContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case,
                         Kind kind, NodeAbove above)
    : life_(LifeFor(simulation_case, above.Options())),
      flowsheet_(FlowSheetOrMain(flowsheet, life_->Case()), life_),
      kind_(kind),
      above_(std::move(above)) {}

HFSOContext::~HFSOContext() {
    if (place_ && *place_ == this) *place_ = nullptr;
}

void HFSOContext::StandAt(HFSOContext*& place) {
    place_ = &place;
    place = this;
}

FICursorBase* HFSOContext::MakeCursor(int kind) {
    return kind == kKeyCursor || IsGone() ? EmptyCursor() : HandOut(NewCursor());
}

FICursorBase* HFSOContext::NewCursor() {
    switch (kind_) {
        case kStreams:
            return new Shielded<HFSOCursorBase>(this, OfFlowSheet(ObjectFilter::kStreams));
        case kUnitOps:
            return new Shielded<HFSOCursorBase>(this, OfFlowSheet(ObjectFilter::kUnitOps));
        case kUtilities:
            return new Shielded<HUtilCursorBase>(
                this, ObjectWalk(OfFlowSheet(ObjectFilter::kNeither),
                                 OfCase(&host::SimulationCase::CaseUtilities)));
        case kReactions:
            return new Shielded<HReactionCursorBase>(this);
        default:
            return new Shielded<HDataTableCursorBase>(
                this, OfCase(&host::SimulationCase::ProcessDataTables));
    }
}

ObjectPlace HFSOContext::OfFlowSheet(ObjectFilter::Shown shown) {
    host::FlowSheet* flowsheet = flowsheet_.Get();
    const host::LinkedList* list = flowsheet ? flowsheet->Objects().List() : nullptr;
    if (!list_) list_ = list;
    return ObjectPlace(list, shown);
}

ObjectPlace HFSOContext::PlaceOf(const HostPlace& object, ListSpot spot) const {
    const auto shown = kind_ == kStreams ? ObjectFilter::kStreams : ObjectFilter::kUnitOps;
    return {list_, ObjectFilter(shown), spot, object.Address(), object.Identity()};
}

bool HFSOContext::Remakes(const FICursorBase& cursor, const HostPlace& object,
                          ListSpot spot) const {
    return HFSOCursorBase::IsLike(cursor, *this, PlaceOf(object, spot));
}

Ref<FICursorBase> HFSOContext::RemakeCursor(const HostPlace& object, ListSpot spot) {
    return Ref<FICursorBase>::Share(new Shielded<HFSOCursorBase>(this, PlaceOf(object, spot)));
}

ObjectPlace HFSOContext::OfCase(const host::LinkedList* (host::SimulationCase::*list)()) const {
    host::SimulationCase* simulation_case = life_->Case();
    return ObjectPlace(simulation_case ? (simulation_case->*list)() : nullptr, ObjectFilter::kAll);
}

host::ReactionPackageManager* HFSOContext::Reactions() const {
    host::SimulationCase* simulation_case = life_->Case();
    host::BasisManager* basis = simulation_case ? simulation_case->Basis() : nullptr;
    return basis ? basis->ReactionPackages() : nullptr;
}

int HFSOContext::ReactionCount() const {
    host::ReactionPackageManager* reactions = Reactions();
    return reactions ? reactions->ReactionCount() : 0;
}

host::Reaction* HFSOContext::Reaction(int number) const {
    host::ReactionPackageManager* reactions = Reactions();
    return reactions ? reactions->RxnNumber(number) : nullptr;
}

FIEntry* HFSOContext::MakeEntry(host::Viewable& object) {
    return new Shielded<HTopEntry>(this, &object);
}

FIEntry* HFSOContext::MakeEntry(host::Viewable& object, const ObjectPlace& place) {
    return new Shielded<HTopEntry>(this, &object, place.Spot());
}

FIEntry* HFSOContext::MakeEntry(int number) {
    host::Reaction* reaction = Reaction(number);
    return reaction ? MakeEntry(*reaction) : EmptyEntry();
}

void HFSOContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.Clear();
    *rest = path;
    if (!path) return;
    const bool in_parentheses = *path == '(';
    const char* text = in_parentheses ? path + 1 : path;
    auto cursor = Ref<FICursorBase>::Adopt(MakeCursor(kChildCursor));
    FIValue key;
    for (bool found = cursor->Seek(kFromFirst, 0); found; found = cursor->Seek(kFromPresent, 1)) {
        cursor->GetKey(key);
        const std::size_t length = std::strlen(key.CStr());
        if (std::strncmp(text, key.CStr(), length) != 0) continue;
        const char* behind = text + length;
        if (in_parentheses && *behind == ')') ++behind;
        if (*behind != ':' && *behind != '/') continue;
        out = key;
        *rest = behind + 1;
        auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        if ((kind_ == kStreams || kind_ == kUnitOps) &&
            InnerFlowSheet(static_cast<HTopEntry*>(entry.Get())->Object())) {
            // What follows names the inner flowsheet, which has no level of its own.
            const char* slash = std::strchr(*rest, '/');
            if (slash) *rest = slash + 1;
        }
        return;
    }
}

bool HReactionCursorBase::Seek(int origin, int delta) {
    if (IsGone() || (origin == kFromPresent && HasLost())) return false;
    if (origin == kFromFirst) position_ = 0;
    if (origin == kFromEnd) position_ = End();
    const long long wanted = static_cast<long long>(position_) + delta;
    Stand(static_cast<int>(std::clamp<long long>(wanted, INT_MIN, INT_MAX)));
    return List().Reaction(position_) != nullptr;
}

bool HReactionCursorBase::SeekName(int origin, const char* name) {
    if (!name || IsGone() || (origin == kFromPresent && HasLost())) return false;
    const int end = End();
    int position = origin == kFromPresent && position_ > 0 ? position_ : 0;
    const auto has_name = [&] {
        host::Reaction* reaction = List().Reaction(position);
        return reaction && reaction->GetName() == name;
    };
    while (position < end && !has_name()) ++position;
    return Stand(position);
}

void HReactionCursorBase::ReadKey(int position, FIValue& out) const {
    out.Clear();
    if (host::Reaction* reaction = List().Reaction(position)) {
        out.SetText(reaction->GetName().CStr());
    }
}

}  // namespace fixtop
