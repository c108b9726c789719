// SPDX-License-Identifier: Apache-2.0
#pragma once

// The specification view of an object: a list of typed elements that the host fills on request.
//
// Units: unlike those of variables, the numbers of a specification are in the default units of the
// case: a number whose element has a moniker with a unit type is in def_unit(type, DefaultUnits())
// as it is when the info is filled, and is shown and stored without conversion. Numbers of
// other elements, and of array sets, have no unit. A host whose unit set changes says so with
// SimulationStep, whereupon infos are filled anew.

#include <cstddef>
#include <cstdint>

#include "fixtop/host/list.h"
#include "fixtop/host/text.h"
#include "fixtop/host/viewable.h"

namespace fixtop::host {

class ArraySetBlock;

// How the host fills a specification, which of it and whether as in dynamics: passed on to the
// host's reader, which may disregard any of them. Owned by the adapter.
struct CaseReaderOptions {
    bool dynamics = false;
    bool first = true;
    bool second = true;
    bool third = false;
};

// A value with its own record of being specified or calculated.
class ProcessVariable {
 public:
    virtual bool CanSpecify() = 0;
    // Store a number in the default unit; the empty real takes the value away. The host may refuse
    // silently.
    virtual void SetSpecified(double value) = 0;
    virtual void SetCalculated(double value) = 0;

    double value = kEmptyReal;  // in the default unit
    // Bits 0-1 adjustable, 2-3 specified, 4-5 holds a value.
    unsigned status_bits = 0;

 protected:
    ~ProcessVariable() = default;
};

// A list of specification elements and whom they describe. Made and destroyed by the host services.
class CSpecInfo {
 public:
    virtual void SetOwner(Viewable* owner) = 0;
    // Not owned; null for the host's defaults.
    virtual void SetReaderOptions(const CaseReaderOptions* options) = 0;
    // Elements are CSpecElement*.
    virtual const LinkedList* Elements() const = 0;
    // Count of the collection behind a sub-specification; 0 when it has none.
    virtual std::size_t CollectionCount() const = 0;

 protected:
    ~CSpecInfo() = default;
};

// Offered by objects that have a specification view.
class CSpecSource {
 public:
    // Fills an info that has its owner set, in place of what it held; false when it has no owner or
    // there is nothing to show.
    virtual bool FillSpecInfo(CSpecInfo* info) = 0;

 protected:
    ~CSpecSource() = default;
};

// One element. Pointers belong to the host and are good until the info is filled again or deleted.
struct CSpecElement {
    ProcessVariable* process_variable = nullptr;
    void* status_holder = nullptr;  // not null: a status element
    CSpecInfo* child = nullptr;     // a sub-specification
    bool custom = false;
    Text moniker;  // of the variable, which tells its unit type
    Viewable* attached_object = nullptr;
    // Its Identity when the info was filled: the object may go before the info does. 0 as there.
    std::uint64_t attached_identity = 0;
    Text tag;  // the element's name
    Text value_text;
    double number = kEmptyReal;  // in the default unit
    ArraySetBlock* array_set = nullptr;
    Text extra_text;  // a document behind the element; whether it is empty is all that is asked
};

}  // namespace fixtop::host
