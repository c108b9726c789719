// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/object.h"
#include "fixtop/automation/collection.h"
#include "fixtop/automation/document.h"
#include "fixtop/ref.h"
#include "host/levels/document.h"

namespace fixtop {

class Documents;

// The document of a case with the top node of its tree.
class CQSIDocument final : public AutomationObject<IQSIDocument> {
 public:
    // `among` is told when it goes.
    CQSIDocument(Ref<IQSINode> top, void* session, const void* identity, Documents& among);

    // Of this case, which is there, and made for this identity.
    bool IsOf(void* session, const void* identity) const;

    HRESULT FIXTOP_MEMBER GetName(char** name) override;
    HRESULT FIXTOP_MEMBER GetApplicationName(char** name) override;
    HRESULT FIXTOP_MEMBER GetSessionText(char** text) override;
    HRESULT FIXTOP_MEMBER CreateCollection(IQSICollection** collection) override;
    HRESULT FIXTOP_MEMBER DropCollection() override;
    HRESULT FIXTOP_MEMBER Save() override;
    HRESULT FIXTOP_MEMBER SaveAs(const char* path) override;
    HRESULT FIXTOP_MEMBER ReadHistory(char** error) override;
    HRESULT FIXTOP_MEMBER ClearHistory(char** error) override;
    HRESULT FIXTOP_MEMBER GetTopNode(IQSINode** node) override;

 private:
    ~CQSIDocument() override;

    const Ref<IQSINode> top_;
    HDocumentAgg document_;
    const void* const identity_;
    Documents& among_;
};

}  // namespace fixtop
