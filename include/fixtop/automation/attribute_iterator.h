// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSIAttributeIterator: a walk over the attributes of a node, which begins on the first. One that
// found none when it was made stands on nothing and never moves.

#include "fixtop/automation/attribute.h"

namespace fixtop::inline FI {

struct IQSIAttributeIterator : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c53, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // The name, cut to size - 1 bytes. Where there is no attribute nothing is written, and the
    // result is kResultOk all the same; so it is for GetName.
    virtual HRESULT FIXTOP_MEMBER GetNameBuffer(std::int32_t size, char* buffer) = 0;
    // In task memory.
    virtual HRESULT FIXTOP_MEMBER GetName(char** name) = 0;
    // The value of this moment; one that is NULL at the end. kResultFail without attributes, with
    // `attribute` as it was.
    virtual HRESULT FIXTOP_MEMBER GetAttribute(IQSIAttribute** attribute) = 0;
    // kResultOk when it stands on an attribute afterwards, kResultFalse when not, kResultFail
    // without any. `moved` says past how many it went to another, below 0 when backwards; from the
    // end there is no way back.
    virtual HRESULT FIXTOP_MEMBER Next(std::int32_t count, std::int32_t* moved) = 0;
    // To the first; kResultFail when there is none any more.
    virtual HRESULT FIXTOP_MEMBER Reset() = 0;
    // Past the last.
    virtual HRESULT FIXTOP_MEMBER ToEnd() = 0;
    // True without attributes.
    virtual HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) = 0;

 protected:
    ~IQSIAttributeIterator() = default;
};

}  // namespace fixtop::inline FI
