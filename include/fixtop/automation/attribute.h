// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSIAttribute: the value that an attribute had when it was read. It keeps it whatever becomes of
// the node.

#include "fixtop/automation/unknown.h"

namespace fixtop::inline FI {

struct IQSIAttribute : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c52, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    enum Type : std::int32_t { kNull = 0, kInt = 1, kReal = 2, kText = 3 };

    virtual HRESULT FIXTOP_MEMBER GetType(std::int32_t* type) = 0;
    // The value as one of this type: an int of 4 bytes, a double of 8, a text with its NUL. A size
    // too small gives kResultFail, and nothing is written; nor is it for kNull and for a type that
    // there is not, which give kResultOk.
    virtual HRESULT FIXTOP_MEMBER GetValue(std::int32_t type, std::int32_t size, void* buffer) = 0;
    // In task memory; an empty text for NULL, a number as it is shown.
    virtual HRESULT FIXTOP_MEMBER GetString(char** text) = 0;
    // A real is cut toward zero; a text that is no number gives 0. kResultFalse, for GetValue too,
    // when the value is the message that there was no node to read from.
    virtual HRESULT FIXTOP_MEMBER GetInt(std::int32_t* number) = 0;
    virtual HRESULT FIXTOP_MEMBER GetDouble(double* number) = 0;

 protected:
    ~IQSIAttribute() = default;
};

}  // namespace fixtop::inline FI
