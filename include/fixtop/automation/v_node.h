// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSVNode: a node for callers in the host's own process, with reads and stores by attribute name.
// Its first members are those of IQSINode, and the nodes to which they lead are such nodes too:
// their QueryInterface answers IQSVNode. It has 39 members with those of IUnknown.
//
// Reads answer kResultFalse where the value is NULL; those of numbers also where the node is gone.
// A text is read as a number by its beginning, one that is none as 0. Stores answer kResultFalse
// and the message, in task memory, when the value is refused.

#include "fixtop/automation/node.h"
#include "fixtop/automation/variant.h"

namespace fixtop::inline FI {

struct IQSVNode : IQSINode {
    static constexpr InterfaceId kId = {
        0x6f0b1c59, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // An attribute as one type; true is what is not 0.
    virtual HRESULT FIXTOP_MEMBER GetInt(const char* name, std::int32_t* value) = 0;
    virtual HRESULT FIXTOP_MEMBER GetDouble(const char* name, double* value) = 0;
    virtual HRESULT FIXTOP_MEMBER GetString(const char* name, char** value) = 0;
    virtual HRESULT FIXTOP_MEMBER GetBool(const char* name, bool* value) = 0;
    // A bool is stored as 1 or 0.
    virtual HRESULT FIXTOP_MEMBER SetInt(const char* name, std::int32_t value, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetDouble(const char* name, double value, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetString(const char* name, const char* value, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetBool(const char* name, bool value, char** error) = 0;

    // Counted from 0.
    virtual HRESULT FIXTOP_MEMBER GetChildByIndex(std::int32_t index, IQSVNode** child) = 0;
    // Of the children; 0 for what is no container.
    virtual HRESULT FIXTOP_MEMBER GetCount(std::int32_t* count) = 0;
    // What tells the node from others of its name: its length in bytes without the NUL, and the
    // text, cut to size - 1 bytes; 0 and empty when nothing does.
    virtual HRESULT FIXTOP_MEMBER GetKeyLength(std::int32_t* length) = 0;
    virtual HRESULT FIXTOP_MEMBER GetKey(std::int32_t size, char* buffer) = 0;
    // May have children, and is not below itself.
    virtual HRESULT FIXTOP_MEMBER IsContainer(bool* is_container) = 0;
    // The attribute "value" is not NULL, and the node not gone.
    virtual HRESULT FIXTOP_MEMBER HasValue(bool* has_value) = 0;

    // `count` attributes, one after the other. Of the values read each is kNull, kInt, kReal or
    // kText; kResultFalse when one is kNull. Those that are kEmpty are not stored; all others are,
    // and the first message is answered. kResultFail for a count below 0.
    virtual HRESULT FIXTOP_MEMBER GetArrayValues(std::int32_t count, const char* const* names,
                                                 Variant* values) = 0;
    virtual HRESULT FIXTOP_MEMBER SetArrayValues(std::int32_t count, const char* const* names,
                                                 const Variant* values, char** error) = 0;

    // The attribute "value" in a unit, and stores of the value and of the specification.
    virtual HRESULT FIXTOP_MEMBER GetDoubleInUnit(const char* unit, double* value) = 0;
    virtual HRESULT FIXTOP_MEMBER SetDoubleInUnit(double value, const char* unit, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetSpecDouble(double value, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetSpecDoubleInUnit(double value, const char* unit,
                                                      char** error) = 0;
    // The unit of the node's own value and specification.
    virtual HRESULT FIXTOP_MEMBER SetUnit(const char* unit, char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetSpecUnit(const char* unit, char** error) = 0;
    // The unit in which this node object, and those that are asked of it later, show a quantity; an
    // empty quantity is the node's own. The unit is never empty.
    virtual HRESULT FIXTOP_MEMBER SetDisplayUnit(const char* unit, const char* quantity,
                                                 char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER SetDisplaySpecUnit(const char* unit, const char* quantity,
                                                     char** error) = 0;

 protected:
    ~IQSVNode() = default;
};

}  // namespace fixtop::inline FI
