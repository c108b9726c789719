// SPDX-License-Identifier: Apache-2.0
// CQSICollection: its sinks. It watches from the first one's coming to the last one's leaving.

#include "automation/collection.h"
#include "automation/member.h"

namespace fixtop {

namespace {

class ConnectionPoint final : public AutomationObject<IQSIConnectionPoint> {
 public:
    explicit ConnectionPoint(Ref<CQSICollection> collection) : collection_(std::move(collection)) {}

    HRESULT FIXTOP_MEMBER Advise(IQSISink* sink, std::uint32_t* cookie) override {
        return collection_->Advise(sink, cookie);
    }
    HRESULT FIXTOP_MEMBER Unadvise(std::uint32_t cookie) override {
        return collection_->Unadvise(cookie);
    }

 private:
    ~ConnectionPoint() override = default;

    const Ref<CQSICollection> collection_;
};

}  // namespace

HRESULT CQSICollection::GetConnectionPoints(IQSIConnectionPoint** point) {
    return HandOutObject(point, [&]() -> IQSIConnectionPoint* {
        return new ConnectionPoint(Ref<CQSICollection>::Share(this));
    });
}

void* CQSICollection::Find(const InterfaceId& id) {
    void* const known = AutomationObject::Find(id);
    return known ? known : events_.Find(*this, id);
}

CQSICollection::~CQSICollection() {
    memory::Contain([&] { StopWatching(); });
}

HRESULT CQSICollection::Advise(IQSISink* sink, std::uint32_t* cookie) {
    if (cookie) *cookie = 0;
    if (!cookie || !sink) return kResultPointer;
    // A sink that hears of a node that is gone may let go of the collection.
    const auto self = Ref<CQSICollection>::Share(this);
    std::uint32_t given = 0;
    const HRESULT result = RunMember([&] {
        given = sinks_.Add(sink);
        WatchForSinks();
        return kResultOk;
    });
    // Whoever got no cookie could never leave.
    if (result == kResultOk) *cookie = given;
    if (result != kResultOk && given != 0) Unadvise(given);
    return result;
}

HRESULT CQSICollection::Unadvise(std::uint32_t cookie) {
    Ref<IQSISink> leaving;
    return RunMember([&] {
        leaving = sinks_.Take(cookie);
        if (sinks_.IsEmpty()) StopWatching();
        return leaving ? kResultOk : kResultFalse;
    });
}

// A collection without items takes no subscriber, so that the first item is waited for.
void CQSICollection::WatchForSinks() {
    if (watches_ || sinks_.IsEmpty()) return;
    watches_ = items_->Subscribe(this, nullptr, OnChange);
    if (watches_) items_->StartWatching();
}

void CQSICollection::StopWatching() {
    if (!watches_) return;
    watches_ = false;
    items_->StopWatching();
    items_->Unsubscribe(this, nullptr);
}

void CQSICollection::OnChange(void* owner, void*, FICollectionElement* item, int) {
    memory::Contain([&] {
        // A sink may let go of it.
        const auto self = Ref<CQSICollection>::Share(static_cast<CQSICollection*>(owner));
        const int place = item ? self->items_->IndexOf(item) : -1;
        Variant detail;
        detail.type = place < 0 ? Variant::kNull : Variant::kInt;
        detail.number = place;
        self->sinks_.Tell(detail);
    });
}

}  // namespace fixtop
