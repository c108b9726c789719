#pragma once

// The specification view of an object: a list of typed elements that the host fills on request.

#include <cstddef>

#include "host/interface/list.h"
#include "host/interface/text.h"
#include "host/interface/viewable.h"

namespace host {

class ArraySetBlock;

// How the host fills a specification. Owned by the adapter.
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
    virtual void SetSpecified(double value) = 0;
    virtual void SetCalculated(double value) = 0;

    double value = kEmptyReal;
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
    // Fills an info that has its owner set; false when there is nothing to show.
    virtual bool FillSpecInfo(CSpecInfo* info) = 0;

protected:
    ~CSpecSource() = default;
};

// One element. Pointers belong to the host.
struct CSpecElement {
    ProcessVariable* process_variable = nullptr;
    void* status_holder = nullptr;
    CSpecInfo* child = nullptr;
    bool custom = false;
    Text moniker;
    Viewable* attached_object = nullptr;
    Text tag;
    Text value_text;
    double number = kEmptyReal;
    ArraySetBlock* array_set = nullptr;
    Text extra_text;
};

}  // namespace host
