// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSICollection: a selection of nodes that outlives changes of the case (fixtop/collection.h tells
// how). While a sink is there, it watches.

#include "fixtop/automation/sink.h"

namespace fixtop::inline FI {

struct IQSICollectionIterator;

struct IQSICollection : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c55, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // Before the first item.
    virtual HRESULT FIXTOP_MEMBER GetIterator(IQSICollectionIterator** iterator) = 0;
    // Adds the node of a node object of this module, of the node that an attribute object was read
    // from, as the last item. What another object answers when it is asked for its node is
    // answered; kResultFalse where there is no node any more.
    virtual HRESULT FIXTOP_MEMBER AddNode(IUnknown* node) = 0;
    virtual HRESULT FIXTOP_MEMBER AddAttribute(IUnknown* attribute) = 0;
    // Store into the first `count` items, at most all, in one batch. A null text and NaN leave an
    // item as it is. A unit that is not null is that of the values, else each item's own.
    // kResultFalse when a value was refused, kResultFail for a count below 0.
    virtual HRESULT FIXTOP_MEMBER SetValueTexts(std::int32_t count, const char* const* values,
                                                const char* unit) = 0;
    virtual HRESULT FIXTOP_MEMBER SetValueInts(std::int32_t count, const std::int32_t* values,
                                               const char* unit) = 0;
    virtual HRESULT FIXTOP_MEMBER SetValueReals(std::int32_t count, const double* values,
                                                const char* unit) = 0;
    // The values of all items as reals, in task memory; 0 and null when there are no items. NaN
    // stands for one that is no number: NULL, a text that begins with none, no node to read from.
    virtual HRESULT FIXTOP_MEMBER GetValues(std::int32_t* count, double** values) = 0;
    // The same as one value of the type kRealArray.
    virtual HRESULT FIXTOP_MEMBER GetValueVariant(Variant* values) = 0;
    // The backup form, in task memory.
    virtual HRESULT FIXTOP_MEMBER GetAsXml(char** text) = 0;
    virtual HRESULT FIXTOP_MEMBER GetConnectionPoints(IQSIConnectionPoint** point) = 0;

 protected:
    ~IQSICollection() = default;
};

}  // namespace fixtop::inline FI
