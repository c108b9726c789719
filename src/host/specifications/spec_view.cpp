// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/spec_view.h"

#include "fixtop/host/services.h"
#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/specifications/spec_context.h"

namespace fixtop {

namespace {

// Null when the object has no specification, or it is empty.
host::CSpecInfo* NewFilledInfo(host::HostServices& services, host::Viewable* object,
                               const HovexOptions& options) {
    host::CSpecSource* source = object->GetSpecSource();
    host::CSpecInfo* info = source ? services.NewSpecInfo() : nullptr;
    if (!info) return nullptr;
    info->SetOwner(object);
    info->SetReaderOptions(options.ReaderOptions());
    bool is_filled = false;
    try {
        is_filled = source->FillSpecInfo(info);
    } catch (...) {
        services.DeleteSpecInfo(info);
        throw;
    }
    if (is_filled) return info;
    services.DeleteSpecInfo(info);
    return nullptr;
}

}  // namespace

Ref<HSpecFill> HSpecFill::Make(const HostObject<host::Viewable>& object,
                               const HovexOptions& options) {
    host::HostServices* services = TheAdapter().Services();
    host::Viewable* there = object.Get();
    if (!there || !services) return {};
    host::CSpecInfo* info = NewFilledInfo(*services, there, options);
    if (!info) return {};
    try {
        return Ref<HSpecFill>::Share(new HSpecFill(object, info));
    } catch (...) {
        services->DeleteSpecInfo(info);
        throw;
    }
}

HSpecFill::HSpecFill(const HostObject<host::Viewable>& object, host::CSpecInfo* info)
    : object_(object), info_(info), revision_(object.Life()->Revision()) {
    object_.Life()->WatchQuietly(*this);
}

HSpecFill::~HSpecFill() {
    object_.Life()->Leave(*this);
    Drop();
}

int HSpecFill::Release() {
    const int left = --references_;
    if (left == 0) delete this;
    return left;
}

void HSpecFill::Drop() {
    host::HostServices* services = TheAdapter().Services();
    if (info_ && services) services->DeleteSpecInfo(info_);
    info_ = nullptr;
}

bool HSpecView::Fill(const HostObject<host::Viewable>& object, const HovexOptions& options) {
    if (!fill_ || fill_->IsGone() || !fill_->IsCurrent()) fill_ = HSpecFill::Make(object, options);
    return static_cast<bool>(fill_);
}

FIContext* HSpecView::MakeContext(const NodeAbove& above) const {
    return HandOut(new Shielded<HSpecContext>(fill_->Info(), fill_->Object().Get(), above, fill_));
}

}  // namespace fixtop
