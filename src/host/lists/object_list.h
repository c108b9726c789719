// SPDX-License-Identifier: Apache-2.0
#pragma once

// HFSOContext and its cursors: the objects of a flowsheet, of the basis or of the case, one list a
// kind. HFSOCursorBase lists streams or unit operations, HUtilCursorBase the other objects of the
// flowsheet and then the utilities of the case, HDataTableCursorBase the process data tables,
// HReactionCursorBase the reactions by number.

#include "fixtop/ref.h"
#include "framework/nodes/counted.h"
#include "host/host_object.h"
#include "host/lists/list_cursor.h"
#include "host/lists/numbered_cursor.h"
#include "host/lists/object_walk.h"
#include "host/node_above.h"

namespace fixtop {

class HFSOContext : public CountedFromZero<FIContext>, public LivingNode {
 public:
    enum Kind : int { kStreams = 0, kUnitOps = 1, kUtilities = 2, kDataTables = 3, kReactions = 4 };

    // A null flowsheet is the main one of the case.
    HFSOContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case, Kind kind,
                NodeAbove above);
    ~HFSOContext() override;

    FICursorBase* MakeCursor(int kind) override;
    // The name of an object, ended by ":" or "/"; plain, in parentheses, or behind a "(" alone.
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    // The node above finds it at `place`, which lies within it, until it goes.
    void StandAt(HFSOContext*& place);
    // A new one for this flowsheet, not null, would show the same.
    bool Serves(const host::FlowSheet* flowsheet, bool attachments) const {
        return flowsheet && flowsheet_.Get() == flowsheet && FollowsAttachments() == attachments;
    }

    FIEntry* MakeEntry(host::Viewable& object);
    FIEntry* MakeEntry(host::Viewable& object, const ObjectPlace& place);
    FIEntry* MakeEntry(host::Viewable& object, const ObjectWalk&) { return MakeEntry(object); }
    // Of a reaction; the shared empty entry when there is none of this number.
    FIEntry* MakeEntry(int number);
    // The walks tell the lists of one case apart.
    bool IsSameList(const HFSOContext& other) const { return life_.Get() == other.life_.Get(); }
    // The flowsheet, or the case, whose objects are listed is gone.
    bool IsGone() const final { return !life_->IsLive() || flowsheet_.IsGone(); }
    std::uint64_t NumberAt(int number) const { return HostObjectBase::NumberOf(Reaction(number)); }
    Liveness* Life() const final { return life_.Get(); }

    const Ref<CaseLife>& CaseRecord() const { return life_; }
    const HovexOptions* Options() const { return above_.Options(); }
    bool FollowsAttachments() const { return above_.FollowsAttachments(); }
    int ReactionCount() const;
    // Null when there is none of this number.
    host::Reaction* Reaction(int number) const;
    // Of a stream or unit operation that stood at the spot: whether its cursor can be made again,
    // and such a cursor.
    bool Remakes(const FICursorBase& cursor, const HostPlace& object, ListSpot spot) const;
    Ref<FICursorBase> RemakeCursor(const HostPlace& object, ListSpot spot);

 private:
    // Null when the case has no reactions.
    host::ReactionPackageManager* Reactions() const;
    FICursorBase* NewCursor();
    // Those of the flowsheet, and the lists of the case; no place in a list that there is not.
    ObjectPlace OfFlowSheet(ObjectFilter::Shown shown);
    ObjectPlace PlaceOf(const HostPlace& object, ListSpot spot) const;
    ObjectPlace OfCase(const host::LinkedList* (host::SimulationCase::*list)()) const;

    const Ref<CaseLife> life_;
    HostObject<host::FlowSheet> flowsheet_;
    Kind kind_;
    NodeAbove above_;
    HFSOContext** place_ = nullptr;
    // Of the flowsheet, as the first cursor had it.
    const host::LinkedList* list_ = nullptr;
};

class HFSOCursorBase : public ListCursor<HFSOCursorBase, ObjectPlace, HFSOContext> {
 public:
    using ListCursor::ListCursor;
};

class HUtilCursorBase : public ListCursor<HUtilCursorBase, ObjectWalk, HFSOContext> {
 public:
    using ListCursor::ListCursor;
};

class HDataTableCursorBase : public ListCursor<HDataTableCursorBase, ObjectPlace, HFSOContext> {
 public:
    using ListCursor::ListCursor;
};

// The position is the number of the reaction. It may stand anywhere outside of them too.
class HReactionCursorBase : public NumberedCursor<HReactionCursorBase, HFSOContext> {
 public:
    using NumberedCursor::NumberedCursor;

    bool Seek(int origin, int delta) override;
    bool SeekName(int origin, const char* name) override;

 protected:
    int End() const override { return List().ReactionCount(); }
    void ReadKey(int position, FIValue& out) const override;
};

}  // namespace fixtop
