// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "automation/com/system_events.h"
#include "automation/object.h"
#include "automation/sink_list.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/automation/collection.h"
#include "fixtop/collection.h"
#include "fixtop/ref.h"

namespace fixtop {

class CQSICollection final : public AutomationObject<IQSICollection>,
                             private Counted<CountedClass::CQSICollection> {
 public:
    explicit CQSICollection(Ref<FICollectionBase> collection) : items_(std::move(collection)) {}

    HRESULT FIXTOP_MEMBER GetIterator(IQSICollectionIterator** iterator) override;
    HRESULT FIXTOP_MEMBER AddNode(IUnknown* node) override;
    HRESULT FIXTOP_MEMBER AddAttribute(IUnknown* attribute) override;
    HRESULT FIXTOP_MEMBER SetValueTexts(std::int32_t count, const char* const* values,
                                        const char* unit) override;
    HRESULT FIXTOP_MEMBER SetValueInts(std::int32_t count, const std::int32_t* values,
                                       const char* unit) override;
    HRESULT FIXTOP_MEMBER SetValueReals(std::int32_t count, const double* values,
                                        const char* unit) override;
    HRESULT FIXTOP_MEMBER GetValues(std::int32_t* count, double** values) override;
    HRESULT FIXTOP_MEMBER GetValueVariant(Variant* values) override;
    HRESULT FIXTOP_MEMBER GetAsXml(char** text) override;
    HRESULT FIXTOP_MEMBER GetConnectionPoints(IQSIConnectionPoint** point) override;

    // The object is one that answers to the id of held nodes. What becomes an item comes before the
    // present one of a walk, when there is one.
    HRESULT Add(IUnknown* object, const InterfaceId& id, FICollectionIteratorBase* at);

    HRESULT Advise(IQSISink* sink, std::uint32_t* cookie);
    HRESULT Unadvise(std::uint32_t cookie);

 private:
    ~CQSICollection() override;
    void* Find(const InterfaceId& id) override;

    template <class Value, class Convert>
    HRESULT Store(std::int32_t count, const Value* values, const char* unit, Convert convert);
    // NaN for what is no number.
    std::vector<double> ReadAll();

    void WatchForSinks();
    void StopWatching();
    static void OnChange(void* owner, void* tag, FICollectionElement* item, int kind);

    const Ref<FICollectionBase> items_;
    SinkList sinks_;
    SystemEvents events_;
    bool watches_ = false;
};

}  // namespace fixtop
