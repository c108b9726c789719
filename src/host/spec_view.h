#pragma once

// HSpecView: the specification of one host object, filled by the host when it is first wanted.

#include "framework/entry.h"
#include "host/hovex_options.h"
#include "host/interface/specification.h"

class HSpecView {
 public:
    HSpecView() = default;
    HSpecView(const HSpecView&) = delete;
    HSpecView& operator=(const HSpecView&) = delete;
    ~HSpecView();

    // False when there is no object, or it has nothing to show; asked again at the next call then.
    bool Fill(host::Viewable* object, const HovexOptions& options);
    // The counted context over the elements of a filled view, which `parent` holds.
    FIContext* MakeContext(const HovexOptions* options, bool attachments, FIEntry* parent) const;

 private:
    host::Viewable* object_ = nullptr;
    host::CSpecInfo* info_ = nullptr;
};
