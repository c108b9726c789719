// SPDX-License-Identifier: Apache-2.0
#include "host/variables/variable_context.h"

#include "framework/nodes/shield.h"
#include "host/host_access.h"
#include "host/variables/moniker_match.h"
#include "host/variables/variable_node.h"

namespace fixtop {

HVarsContext::HVarsContext(const host::LinkedList* list, HostObject<host::Viewable> owner,
                           NodeAbove above, const HAttachment* attachment)
    : list_(list), owner_(std::move(owner)), above_(std::move(above)) {
    beside_ = {attachment != nullptr, IsA(owner_.Get(), CorrelationType())};
}

HVarsContext::HVarsContext(const host::LinkedList* list, host::Viewable* owner,
                           const NodeAbove& above, const HAttachment* attachment)
    : HVarsContext(list, {owner, LifeFor(nullptr, above.Options())}, above, attachment) {}

HVarsContext::HVarsContext(const host::LinkedList* list, const HostPlace& owner,
                           const Ref<CaseLife>& life, NodeAbove above)
    : list_(list), owner_(owner, life), above_(std::move(above)) {
    beside_.correlation = IsA(owner_.Get(), CorrelationType());
}

const HAttachment* HVarsContext::Attachment() const {
    return beside_.attached ? dynamic_cast<const HAttachment*>(above_.Entry()) : nullptr;
}

FICursorBase* HVarsContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HVarsCursorBase>(this, VariableWalk(list_)));
}

FIEntry* HVarsContext::MakeEntry(host::VariableNameInfo& row) {
    return new Shielded<HVarsEntry>(this, &row);
}

FIEntry* HVarsContext::MakeEntry(host::VariableNameInfo& row, const VariableWalk& walk) {
    return new Shielded<HVarsEntry>(this, &row, walk.Spot());
}

VariableWalk HVarsContext::WalkAt(const host::VariableNameInfo& row, ListSpot spot) const {
    auto* element = const_cast<host::VariableNameInfo*>(&row);
    return {list_, VariableView(), spot, element, VariableView::Number(row)};
}

bool HVarsContext::Remakes(const FICursorBase& cursor, const host::VariableNameInfo& row,
                           ListSpot spot) const {
    return HVarsCursorBase::IsLike(cursor, *this, WalkAt(row, spot));
}

Ref<FICursorBase> HVarsContext::RemakeCursor(const host::VariableNameInfo& row, ListSpot spot) {
    return Ref<FICursorBase>::Share(new Shielded<HVarsCursorBase>(this, WalkAt(row, spot)));
}

void HVarsContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.Clear();
    *rest = path;
    if (!path || IsGone()) return;
    VariableWalk walk(list_);
    for (host::VariableNameInfo* row = walk.First(); row; row = walk.Next()) {
        const auto match = MatchMoniker(row->TextDescription().Str(), path);
        if (!match) continue;
        out.SetText(VariableView::Name(*row) + match->suffix);
        *rest = match->rest;
        return;
    }
}

}  // namespace fixtop
