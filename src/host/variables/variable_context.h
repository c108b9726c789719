// SPDX-License-Identifier: Apache-2.0
#pragma once

// HVarsContext and HVarsCursorBase: the variables of a host object, as the host lists them.

#include "fixtop/ref.h"
#include "framework/nodes/counted.h"
#include "host/host_object.h"
#include "host/lists/list_cursor.h"
#include "host/lists/list_position.h"
#include "host/node_above.h"
#include "host/variables/attachment.h"

namespace fixtop {

// Every row of a variable list.
struct VariableView {
    using Element = host::VariableNameInfo;
    bool Shows(host::VariableNameInfo&) const { return true; }
    static const char* Name(const host::VariableNameInfo& row) { return row.name ? row.name : ""; }
    int Id() const { return 0; }
    // Rows live as long as the object that lists them.
    static std::uint64_t Number(const host::VariableNameInfo&) { return 0; }
};

// The walk over a variable list, named for the cursor.
class VariableWalk : public ListPosition<VariableView> {
 public:
    using ListPosition::ListPosition;
    static const char* Name(host::VariableNameInfo& row) { return VariableView::Name(row); }
};

// What an HVarsContext keeps of its owner and the node above.
struct VariablesOf {
    // The node above points at the owner.
    bool attached = false;
    bool correlation = false;
};

class HVarsContext : public CountedFromZero<FIContext, VariablesOf>, public LivingNode {
 public:
    // The variables in `list`, of `owner`, which is there. `attachment` is the node above when it
    // is one that points at `owner`, else null.
    HVarsContext(const host::LinkedList* list, HostObject<host::Viewable> owner, NodeAbove above,
                 const HAttachment* attachment);
    HVarsContext(const host::LinkedList* list, host::Viewable* owner, const NodeAbove& above,
                 const HAttachment* attachment);
    // Of an object whose own node is the one above.
    HVarsContext(const host::LinkedList* list, const HostPlace& owner, const Ref<CaseLife>& life,
                 NodeAbove above);

    FICursorBase* MakeCursor(int kind) override;
    // Matches the beginning of a path with the monikers of the rows; the key is the name of the row
    // and ".#index" for each array index that the path gave.
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    FIEntry* MakeEntry(host::VariableNameInfo& row);
    FIEntry* MakeEntry(host::VariableNameInfo& row, const VariableWalk& walk);
    // As those of HFSOContext, of a row.
    bool Remakes(const FICursorBase& cursor, const host::VariableNameInfo& row,
                 ListSpot spot) const;
    Ref<FICursorBase> RemakeCursor(const host::VariableNameInfo& row, ListSpot spot);
    bool IsSameList(const HVarsContext& other) const {
        return owner_.Number() == other.owner_.Number();
    }
    bool IsGone() const final { return owner_.IsGone(); }
    Liveness* Life() const final { return owner_.Life().Get(); }

    const HostObject<host::Viewable>& Owner() const { return owner_; }
    const HovexOptions* Options() const { return above_.Options(); }
    bool FollowsAttachments() const { return above_.FollowsAttachments(); }
    const HAttachment* Attachment() const;
    // The owner is a correlation, whose variables describe the object that it is attached to.
    bool IsOfCorrelation() const { return beside_.correlation; }

 private:
    VariableWalk WalkAt(const host::VariableNameInfo& row, ListSpot spot) const;

    const host::LinkedList* list_;
    HostObject<host::Viewable> owner_;
    NodeAbove above_;
};

class HVarsCursorBase : public ListCursor<HVarsCursorBase, VariableWalk, HVarsContext> {
 public:
    using ListCursor::ListCursor;
};

}  // namespace fixtop
