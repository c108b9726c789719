// SPDX-License-Identifier: Apache-2.0
#include "automation/collection.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "automation/collection_iterator.h"
#include "automation/held_node.h"
#include "automation/member.h"
#include "automation/read_value.h"
#include "collection/collection.h"
#include "platform/real_array.h"

namespace fixtop {

namespace {

const FIValue& ValueName() {
    static const FIValue name("value");
    return name;
}

FIValue TextOrNull(const char* text) {
    return text ? FIValue(text) : FIValue();
}

// What was read as no number is not stored as one.
FIValue RealOrNull(double real) {
    return std::isnan(real) ? FIValue() : FIValue::OfReal(real);
}

}  // namespace

HRESULT CQSICollection::GetIterator(IQSICollectionIterator** iterator) {
    return HandOutObject(iterator, [&]() -> IQSICollectionIterator* {
        return new CQSICollectionIterator(
            Ref<CQSICollection>::Share(this),
            Ref<FICollectionIteratorBase>::Adopt(items_->MakeIterator()));
    });
}

HRESULT CQSICollection::Add(IUnknown* object, const InterfaceId& id, FICollectionIteratorBase* at) {
    // Whoever is asked, or hears of a node that is gone, may let go of the collection.
    const auto self = Ref<CQSICollection>::Share(this);
    const HRESULT entered = EnterMember();
    if (entered != kResultOk) return entered;
    Ref<FIIteratorBase> node;
    const HRESULT found = FindHeldNode(object, id, node);
    if (found != kResultOk) return found;
    return RunMember([&] {
        FICollectionElement* const behind = at ? at->Item() : nullptr;
        const bool added = items_->AddBefore(*node, behind) != nullptr;
        WatchForSinks();
        return added ? kResultOk : kResultFalse;
    });
}

HRESULT CQSICollection::AddNode(IUnknown* node) {
    return Add(node, kHeldNodeId, nullptr);
}

HRESULT CQSICollection::AddAttribute(IUnknown* attribute) {
    return Add(attribute, kHeldAttributeId, nullptr);
}

template <class Value, class Convert>
HRESULT CQSICollection::Store(std::int32_t count, const Value* values, const char* unit,
                              Convert convert) {
    return RunMember([&] {
        if (count < 0) return kResultFail;
        if (count > 0 && !values) return kResultPointer;
        // Whoever hears of a store may let go of the collection.
        const Ref<FICollectionBase> held = items_;
        const int stored = std::min(count, held->Count());
        const auto size = static_cast<std::size_t>(stored);
        // What is removed by whoever hears of a store before it was its turn is not stored.
        std::vector<FIValue> given(size), outs(size, FIValue(kNothingToWrite));
        std::transform(values, values + stored, given.begin(), convert);
        held->SetValues(ValueName(), given.data(), stored, TextOrNull(unit), outs.data());
        return std::ranges::all_of(outs, &FIValue::IsNull) ? kResultOk : kResultFalse;
    });
}

HRESULT CQSICollection::SetValueTexts(std::int32_t count, const char* const* values,
                                      const char* unit) {
    return Store(count, values, unit, TextOrNull);
}

HRESULT CQSICollection::SetValueInts(std::int32_t count, const std::int32_t* values,
                                     const char* unit) {
    return Store(count, values, unit, FIValue::OfInt);
}

HRESULT CQSICollection::SetValueReals(std::int32_t count, const double* values, const char* unit) {
    return Store(count, values, unit, RealOrNull);
}

std::vector<double> CQSICollection::ReadAll() {
    std::vector<FIValue> values(static_cast<std::size_t>(items_->Count()));
    if (!values.empty()) items_->GetValues(ValueName(), values.data());
    std::vector<double> reals(values.size());
    std::ranges::transform(values, reals.begin(), ToRealOrNan);
    return reals;
}

HRESULT CQSICollection::GetValues(std::int32_t* count, double** values) {
    if (count) *count = 0;
    if (values) *values = nullptr;
    if (!count || !values) return kResultPointer;
    return RunMember([&] {
        const std::vector<double> read = ReadAll();
        if (read.empty()) return kResultOk;
        *values = AllocateReals(read.size()).release();
        std::ranges::copy(read, *values);
        *count = static_cast<std::int32_t>(read.size());
        return kResultOk;
    });
}

HRESULT CQSICollection::GetValueVariant(Variant* values) {
    if (!values) return kResultPointer;
    *values = Variant();
    return RunMember([&] {
        void* array = nullptr;
        const std::vector<double> read = ReadAll();
        if (!MakeRealArray(read, &array)) throw std::bad_alloc();
        values->type = Variant::kRealArray;
        values->array = array;
        values->count = static_cast<std::int32_t>(read.size());
        return kResultOk;
    });
}

HRESULT CQSICollection::GetAsXml(char** text) {
    return HandOutText(text, [&](FIValue& out) { items_->ToXml(out); });
}

}  // namespace fixtop
