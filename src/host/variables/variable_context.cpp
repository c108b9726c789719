// SPDX-License-Identifier: Apache-2.0
#include "host/variables/variable_context.h"

#include "framework/nodes/shield.h"
#include "host/host_access.h"
#include "host/variables/moniker_match.h"
#include "host/variables/variable_node.h"

namespace fixtop {

HVarsContext::HVarsContext(const host::LinkedList* list, const HostObject<host::Viewable>& owner,
                           NodeAbove above, const HAttachment* attachment)
    : is_attached_(attachment != nullptr),
      is_of_correlation_(IsA(owner.Get(), CorrelationType())),
      list_(list),
      owner_(owner),
      above_(std::move(above)) {}

HVarsContext::HVarsContext(const host::LinkedList* list, host::Viewable* owner,
                           const NodeAbove& above, const HAttachment* attachment)
    : HVarsContext(list, {owner, LifeFor(nullptr, above.Options())}, above, attachment) {}

const HAttachment* HVarsContext::Attachment() const {
    return is_attached_ ? dynamic_cast<const HAttachment*>(above_.Entry()) : nullptr;
}

FICursorBase* HVarsContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HVarsCursorBase>(this, VariableWalk(list_)));
}

FIEntry* HVarsContext::MakeEntry(host::VariableNameInfo& row) {
    return new Shielded<HVarsEntry>(this, &row);
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
