// SPDX-License-Identifier: Apache-2.0
#include "automation/com/system_events.h"

#include "automation/com/event_point_windows.h"
#include "automation/com/system_list_windows.h"

namespace fixtop {

namespace {

// What every sink is called with, whatever the client's own language.
constexpr LCID kEventLocale = 0x400;

struct Points {
    using Row = IConnectionPoint*;
    using Held = Ref<EventPoint>;
    static constexpr InterfaceId kWalkId = {
        0xb196b285, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};
    static Row HandOut(const Held& held) { return reinterpret_cast<Row>(held.Counted()); }
};

struct Connections {
    using Row = CONNECTDATA;
    struct Held {
        Ref<::IDispatch> sink;
        DWORD cookie;
    };
    static constexpr InterfaceId kWalkId = {
        0xb196b287, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};
    static Row HandOut(const Held& held) { return {held.sink.Counted(), held.cookie}; }
};

// A client's sink among those of the collection.
class DispatchSink final : public AutomationObject<IQSISink> {
 public:
    explicit DispatchSink(Ref<::IDispatch> sink) : sink_(std::move(sink)) {}

    HRESULT FIXTOP_MEMBER Invoke(std::int32_t event, const Variant& detail) override {
        VARIANT argument = reinterpret_cast<const VARIANT&>(detail);
        DISPPARAMS arguments = {&argument, nullptr, 1, 0};
        return sink_->Invoke(event, kNoId, kEventLocale, DISPATCH_METHOD, &arguments, nullptr,
                             nullptr, nullptr);
    }

 private:
    ~DispatchSink() override = default;

    const Ref<::IDispatch> sink_;
};

}  // namespace

HRESULT DispatchSinks::Add(CQSICollection& collection, ::IUnknown* sink, DWORD* cookie) {
    const auto dispatch = TakeFromSystem<::IDispatch>([&](::IDispatch** out) {
        return sink->QueryInterface(kDispatchId, reinterpret_cast<void**>(out));
    });
    if (!dispatch) return CONNECT_E_CANNOTCONNECT;
    std::uint32_t given = 0;
    const HRESULT result = RunMember([&] {
        const auto made = Ref<DispatchSink>::Adopt(new DispatchSink(dispatch));
        const HRESULT advised = collection.Advise(made.Get(), &given);
        if (advised == kResultOk) sinks_.emplace(given, dispatch);
        return advised;
    });
    // Whoever got no cookie could never leave.
    if (result == kResultOk) *cookie = given;
    if (result != kResultOk && given != 0) collection.Unadvise(given);
    return result;
}

HRESULT DispatchSinks::Remove(CQSICollection& collection, DWORD cookie) {
    // The sink may come back while it leaves.
    const auto leaving = sinks_.extract(cookie);
    if (leaving.empty()) return CONNECT_E_NOCONNECTION;
    return collection.Unadvise(cookie);
}

HRESULT EventPoint::GetConnectionInterface(InterfaceId* id) {
    return HandOutNumber(id, [] { return IQSISink::kId; });
}

HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return kResultPointer;
    return collection_->QueryInterface(ContainerMembers::kId, reinterpret_cast<void**>(container));
}

HRESULT EventPoint::Advise(::IUnknown* sink, DWORD* cookie) {
    if (cookie) *cookie = 0;
    if (!sink || !cookie) return kResultPointer;
    // Whoever is asked may let go of the point.
    const auto self = Ref<EventPoint>::Share(this);
    const HRESULT entered = EnterMember();
    return entered == kResultOk ? sinks_.Add(*collection_, sink, cookie) : entered;
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
    const auto self = Ref<EventPoint>::Share(this);
    const HRESULT entered = EnterMember();
    return entered == kResultOk ? sinks_.Remove(*collection_, cookie) : entered;
}

HRESULT EventPoint::EnumConnections(IEnumConnections** connections) {
    return HandOutObject(reinterpret_cast<SystemListWalk<Connections>**>(connections), [&] {
        std::vector<Connections::Held> rows;
        for (const auto& [cookie, sink] : sinks_.All()) rows.push_back({sink, cookie});
        return new SystemListWalk<Connections>(std::move(rows));
    });
}

// Is the collection for whoever asks.
class EventContainer final : public ContainerMembers {
 public:
    explicit EventContainer(CQSICollection& collection) : collection_(collection) {}

    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId& id, void** out) override {
        return collection_.QueryInterface(id, out);
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return collection_.AddRef(); }
    std::uint32_t FIXTOP_MEMBER Release() override { return collection_.Release(); }
    HRESULT FIXTOP_MEMBER EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return HandOutObject(reinterpret_cast<SystemListWalk<Points>**>(points), [&] {
            return new SystemListWalk<Points>({Ref<EventPoint>::Adopt(MakePoint())});
        });
    }
    HRESULT FIXTOP_MEMBER FindConnectionPoint(const InterfaceId& id,
                                              IConnectionPoint** point) override {
        const HRESULT result = HandOutObject(reinterpret_cast<EventPoint**>(point), [&] {
            return id == IQSISink::kId ? MakePoint() : nullptr;
        });
        return result == kResultFalse ? HRESULT{CONNECT_E_NOCONNECTION} : result;
    }

 private:
    EventPoint* MakePoint() {
        return new EventPoint(Ref<CQSICollection>::Share(&collection_), sinks_);
    }

    CQSICollection& collection_;
    DispatchSinks sinks_;
};

SystemEvents::SystemEvents() = default;
SystemEvents::~SystemEvents() = default;

void* SystemEvents::Find(CQSICollection& collection, const InterfaceId& id) {
    if (id != ContainerMembers::kId) return nullptr;
    return memory::Or(nullptr, [&]() -> void* {
        if (!container_) container_ = std::make_unique<EventContainer>(collection);
        return static_cast<ContainerMembers*>(container_.get());
    });
}

}  // namespace fixtop
