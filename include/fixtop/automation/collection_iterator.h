// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSICollectionIterator: a walk over the items of a collection, in their order, which begins
// before the first. Where there is no item, or none of its nodes, reads give the text "No element
// under this node".

#include "fixtop/automation/node.h"

namespace fixtop::inline FI {

struct IQSICollectionIterator : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c56, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // The attribute "id", cut to size - 1 bytes.
    virtual HRESULT FIXTOP_MEMBER GetIdBuffer(std::int32_t size, char* buffer) = 0;
    // In task memory.
    virtual HRESULT FIXTOP_MEMBER GetId(char** id) = 0;
    // kResultFalse when the item has no node.
    virtual HRESULT FIXTOP_MEMBER GetNode(IQSINode** node) = 0;
    // Past the last item.
    virtual HRESULT FIXTOP_MEMBER AtEnd(bool* at_end) = 0;
    // On by so many items, back when below 0. kResultFalse when it came past the last, kResultFail
    // when it came before the first.
    virtual HRESULT FIXTOP_MEMBER Move(std::int32_t count) = 0;
    // To the first, kResultFail when there is none; past the last.
    virtual HRESULT FIXTOP_MEMBER Reset() = 0;
    virtual HRESULT FIXTOP_MEMBER ToEnd() = 0;
    // As those of the collection, but what is added comes before the present item; it becomes the
    // last where there is none.
    virtual HRESULT FIXTOP_MEMBER AddNode(IUnknown* node) = 0;
    virtual HRESULT FIXTOP_MEMBER AddAttribute(IUnknown* attribute) = 0;
    // An attribute of the item; kResultFalse when its value is NULL.
    virtual HRESULT FIXTOP_MEMBER GetValue(const char* name, IQSIAttribute** attribute) = 0;

 protected:
    ~IQSICollectionIterator() = default;
};

}  // namespace fixtop::inline FI
