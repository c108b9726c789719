// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSISink: what a client implements to hear of the changes of a collection. IQSIConnectionPoint:
// where it says so.

#include "fixtop/automation/unknown.h"
#include "fixtop/automation/variant.h"

namespace fixtop::inline FI {

struct IQSISink : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c57, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // The one event: an item may have changed. The host tells of its cases as wholes, so that each
    // item hears of each of its events once, also where its own value stayed.
    static constexpr std::int32_t kChanged = 1;

    // `detail`, lent for the call, is the place of the item among all of the collection, or of the
    // type kNull when there is none. It is held while it is called and may leave, or let the
    // collection go. The result is not looked at.
    virtual HRESULT FIXTOP_MEMBER Invoke(std::int32_t event, const Variant& detail) = 0;

 protected:
    ~IQSISink() = default;
};

struct IQSIConnectionPoint : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c58, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // Holds the sink until it leaves or the collection goes. `cookie`, never 0, is for leaving; one
    // sink may stand there several times.
    virtual HRESULT FIXTOP_MEMBER Advise(IQSISink* sink, std::uint32_t* cookie) = 0;
    // kResultFalse when nobody has this cookie.
    virtual HRESULT FIXTOP_MEMBER Unadvise(std::uint32_t cookie) = 0;

 protected:
    ~IQSIConnectionPoint() = default;
};

}  // namespace fixtop::inline FI
