// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSpecType: which of the ten types of specification element an element is, and what it shows of
// itself by that type: "value", "type", "uom", "status" and "moniker".
//
// Numbers are as the host gives them, in the default units of the case, which "uom" names.

#include "fixtop/host/specification.h"
#include "fixtop/value.h"
#include "host/host_object.h"

namespace fixtop {

class HSpecType {
 public:
    // The numbers index the table of handlers.
    enum Number : int {
        kNone = 0,  // not shown at all
        kCustomElement = 1,
        kProcVarStatus = 2,
        kArraySet = 3,
        kProcVar = 4,
        kAttachedObject = 5,
        kNumber = 6,
        kText = 7,
        kXmlSpecInfo = 8,
        kSpecCollection = 9,
    };
    enum Row : int { kValue, kType, kUom, kStatus, kMoniker };

    // Both are lent and must outlive this object; `owner` is what the specification describes, in
    // the case of `life`.
    HSpecType(const host::CSpecElement& element, host::Viewable* owner, const Ref<CaseLife>& life);

    static Number Classify(const host::CSpecElement& element);

    Number Get() const { return number_; }
    // Whether the row is shown.
    bool Shows(Row row) const;
    // NULL for a row that is not shown.
    void Read(Row row, FIValue& out) const;

    const host::CSpecElement& Element() const { return element_; }
    host::Viewable* Owner() const { return owner_; }
    // The attached object; null for none and when it is gone.
    host::Viewable* Attached() const { return attached_.Get(); }

 private:
    const host::CSpecElement& element_;
    host::Viewable* owner_;
    HostObject<host::Viewable> attached_;
    Number number_;
};

// A number of a specification that is as good as the empty real.
bool IsEmptySpecNumber(double number);
// The variable's value was given, not found.
bool IsSpecified(const host::ProcessVariable& variable);

}  // namespace fixtop
