#include "host/h_spec_context.h"

#include "host/h_spec_entry.h"

HSpecContext::HSpecContext(const host::CSpecInfo* info, host::Viewable* owner,
                           const HovexOptions* options, bool attachments, FIEntry* parent,
                           Ref<HSpecFill> fill)
    : info_(info),
      owner_(owner, LifeFor(nullptr, options)),
      options_(options),
      attachments_(attachments),
      parent_(Ref<FIEntry>::Share(parent)),
      fill_(std::move(fill)) {}

FICursorBase* HSpecContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new HSpecCursorBase(this, Elements()));
}

FIEntry* HSpecContext::MakeEntry(host::CSpecElement& element) {
    return new HSpecEntry(this, element);
}

bool HSpecCursorBase::SeekValue(int origin, FIEntry& entry) {
    const auto* wanted = dynamic_cast<HSpecEntry*>(&entry);
    return wanted && walk_.FindIf(origin == kFromPresent, [wanted](const auto& element) {
        return &element == &wanted->Element();
    });
}
