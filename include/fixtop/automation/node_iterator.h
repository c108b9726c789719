// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSINodeIterator: a walk over the children of a node, which begins on the first.

#include "fixtop/automation/node.h"

namespace fixtop::inline FI {

struct IQSINodeIterator : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c54, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // The name of the present child, cut to size - 1 bytes; kResultFalse and an empty text past the
    // last.
    virtual HRESULT FIXTOP_MEMBER GetNameBuffer(std::int32_t size, char* buffer) = 0;
    // In task memory; kResultFalse past the last, for GetNode as well.
    virtual HRESULT FIXTOP_MEMBER GetName(char** name) = 0;
    virtual HRESULT FIXTOP_MEMBER GetNode(IQSINode** node) = 0;
    // On by so many children, back when below 0; `moved` says by how many it went, with the same
    // sign. kResultFalse when there were fewer: it stands past the last, or on the first.
    virtual HRESULT FIXTOP_MEMBER Move(std::int32_t count, std::int32_t* moved) = 0;
    // To the first, past the last; kResultFail when there are no children any more.
    virtual HRESULT FIXTOP_MEMBER Reset() = 0;
    virtual HRESULT FIXTOP_MEMBER ToEnd() = 0;
    // Past the last.
    virtual HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) = 0;
    // Does nothing; kept for its place in the table.
    virtual HRESULT FIXTOP_MEMBER Close() = 0;

 protected:
    ~IQSINodeIterator() = default;
};

}  // namespace fixtop::inline FI
