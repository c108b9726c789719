// SPDX-License-Identifier: Apache-2.0
// CQSVNode: several attributes at once.

#include <algorithm>
#include <span>
#include <vector>

#include "automation/member.h"
#include "automation/v_node.h"
#include "automation/variant_value.h"

namespace fixtop {

namespace {

// What a call with `count` names and as many values answers before anything is done.
HRESULT CheckArrays(std::int32_t count, const char* const* names, const Variant* values) {
    if (count < 0) return kResultFail;
    if (count > 0 && (!names || !values)) return kResultPointer;
    return std::all_of(names, names + count, [](const char* name) { return name != nullptr; })
               ? kResultOk
               : kResultPointer;
}

// Variants that are freed unless they are handed out.
struct Variants {
    ~Variants() { std::for_each(made.begin(), made.end(), ClearVariant); }
    std::vector<Variant> made;
};

}  // namespace

HRESULT CQSVNode::GetArrayValues(std::int32_t count, const char* const* names, Variant* values) {
    if (values && count > 0) std::fill_n(values, count, Variant());
    const HRESULT checked = CheckArrays(count, names, values);
    if (checked != kResultOk) return checked;
    Variants read;
    const HRESULT result = RunMember([&] {
        read.made.resize(static_cast<std::size_t>(count));
        bool all = true;
        for (std::int32_t i = 0; i < count; ++i) {
            FIValue value;
            iterator->GetAttribute(FIValue(names[i]), value);
            read.made[static_cast<std::size_t>(i)] = ToVariant(value);
            all = all && !value.IsNull();
        }
        return all ? kResultOk : kResultFalse;
    });
    const bool is_done = result == kResultOk || result == kResultFalse;
    if (is_done) std::ranges::swap_ranges(read.made, std::span(values, read.made.size()));
    return result;
}

HRESULT CQSVNode::SetArrayValues(std::int32_t count, const char* const* names,
                                 const Variant* values, char** error) {
    if (!error) return kResultPointer;
    *error = nullptr;
    const HRESULT checked = CheckArrays(count, names, values);
    if (checked != kResultOk) return checked;
    return HandOutMessage(error, [&](FIValue& first) {
        // Whoever hears of a store may let go of the node.
        const Ref<FIIteratorBase> held = iterator;
        for (std::int32_t i = 0; i < count; ++i) {
            FIValue out;
            if (values[i].type == Variant::kEmpty) continue;
            held->SetAttribute(FIValue(names[i]), ToValue(values[i]), 0, out);
            if (first.IsNull()) first = out;
        }
    });
}

}  // namespace fixtop
