// SPDX-License-Identifier: Apache-2.0
#pragma once

// IQSIDocument: the document of a case. When the case is gone it has no name and is not saved.

#include "fixtop/automation/node.h"

namespace fixtop::inline FI {

struct IQSIDocument : IUnknown {
    static constexpr InterfaceId kId = {
        0x6f0b1c5a, 0x3a47, 0x4d0e, {0x9b, 0x21, 0x5c, 0x7e, 0x10, 0x64, 0xd8, 0x02}};

    // Name part of the document's file, the application that it belongs to, and the host's text of
    // the session; in task memory, kResultFalse where there is none.
    virtual HRESULT FIXTOP_MEMBER GetName(char** name) = 0;
    virtual HRESULT FIXTOP_MEMBER GetApplicationName(char** name) = 0;
    virtual HRESULT FIXTOP_MEMBER GetSessionText(char** text) = 0;
    // The one collection of the document, made at the first call and after it was dropped.
    virtual HRESULT FIXTOP_MEMBER CreateCollection(IQSICollection** collection) = 0;
    virtual HRESULT FIXTOP_MEMBER DropCollection() = 0;
    // kResultFail when it was not saved.
    virtual HRESULT FIXTOP_MEMBER Save() = 0;
    virtual HRESULT FIXTOP_MEMBER SaveAs(const char* path) = 0;
    // No history is kept: kResultFalse and the message, in task memory.
    virtual HRESULT FIXTOP_MEMBER ReadHistory(char** error) = 0;
    virtual HRESULT FIXTOP_MEMBER ClearHistory(char** error) = 0;
    // The top of the case, of the family by which the document was asked for.
    virtual HRESULT FIXTOP_MEMBER GetTopNode(IQSINode** node) = 0;

 protected:
    ~IQSIDocument() = default;
};

}  // namespace fixtop::inline FI
