// SPDX-License-Identifier: Apache-2.0
#pragma once

// The system's connection point of a collection, with the module's own types.

#include "automation/com/system_types_windows.h"
#include "automation/member.h"
#include "automation/object.h"
// The component services follow the base header.
#include <ocidl.h>
#include <olectl.h>

#include <map>

#include "automation/collection.h"

namespace fixtop {

// The same table as the system's IConnectionPointContainer.
struct ContainerMembers : IUnknown {
    static constexpr InterfaceId kId = {
        0xb196b284, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};

    virtual HRESULT FIXTOP_MEMBER EnumConnectionPoints(IEnumConnectionPoints** points) = 0;
    virtual HRESULT FIXTOP_MEMBER FindConnectionPoint(const InterfaceId& id,
                                                      IConnectionPoint** point) = 0;

 protected:
    ~ContainerMembers() = default;
};

// The same table as the system's IConnectionPoint.
struct PointMembers : IUnknown {
    static constexpr InterfaceId kId = {
        0xb196b286, 0xbab4, 0x101a, {0xb6, 0x9c, 0x00, 0xaa, 0x00, 0x34, 0x1d, 0x07}};

    virtual HRESULT FIXTOP_MEMBER GetConnectionInterface(InterfaceId* id) = 0;
    virtual HRESULT FIXTOP_MEMBER
    GetConnectionPointContainer(IConnectionPointContainer** container) = 0;
    virtual HRESULT FIXTOP_MEMBER Advise(::IUnknown* sink, DWORD* cookie) = 0;
    virtual HRESULT FIXTOP_MEMBER Unadvise(DWORD cookie) = 0;
    virtual HRESULT FIXTOP_MEMBER EnumConnections(IEnumConnections** connections) = 0;

 protected:
    ~PointMembers() = default;
};

// The sinks that came by the system's point, in the order of their coming.
class DispatchSinks {
 public:
    // kResultOk, CONNECT_E_CANNOTCONNECT for what has no dispatch interface.
    HRESULT Add(CQSICollection& collection, ::IUnknown* sink, DWORD* cookie);
    // CONNECT_E_NOCONNECTION when nobody came with this cookie.
    HRESULT Remove(CQSICollection& collection, DWORD cookie);
    const std::map<DWORD, Ref<::IDispatch>>& All() const { return sinks_; }

 private:
    std::map<DWORD, Ref<::IDispatch>> sinks_;
};

// Holds the collection.
class EventPoint final : public AutomationObject<PointMembers> {
 public:
    // The sinks are those of the collection's container.
    EventPoint(Ref<CQSICollection> collection, DispatchSinks& sinks)
        : collection_(std::move(collection)), sinks_(sinks) {}

    HRESULT FIXTOP_MEMBER GetConnectionInterface(InterfaceId* id) override;
    HRESULT FIXTOP_MEMBER
    GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT FIXTOP_MEMBER Advise(::IUnknown* sink, DWORD* cookie) override;
    HRESULT FIXTOP_MEMBER Unadvise(DWORD cookie) override;
    HRESULT FIXTOP_MEMBER EnumConnections(IEnumConnections** connections) override;

 private:
    ~EventPoint() override = default;

    const Ref<CQSICollection> collection_;
    DispatchSinks& sinks_;
};

}  // namespace fixtop
