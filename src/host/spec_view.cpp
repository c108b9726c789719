#include "host/spec_view.h"

#include "host/h_spec_context.h"
#include "host/interface/services.h"

HSpecView::~HSpecView() {
    host::HostServices* services = host::InstalledServices();
    if (info_ && services) services->DeleteSpecInfo(info_);
}

bool HSpecView::Fill(host::Viewable* object, const HovexOptions& options) {
    if (info_) return true;
    host::HostServices* services = host::InstalledServices();
    host::CSpecSource* source = object && services ? object->GetSpecSource() : nullptr;
    host::CSpecInfo* info = source ? services->NewSpecInfo() : nullptr;
    if (!info) return false;
    info->SetOwner(object);
    info->SetReaderOptions(options.ReaderOptions());
    if (source->FillSpecInfo(info)) {
        info_ = info;
        object_ = object;
    } else {
        services->DeleteSpecInfo(info);
    }
    return info_ != nullptr;
}

FIContext* HSpecView::MakeContext(const HovexOptions* options, bool attachments,
                                  FIEntry* parent) const {
    return HandOut(new HSpecContext(info_, object_, options, attachments, parent));
}
