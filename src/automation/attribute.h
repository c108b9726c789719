// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/held_node.h"
#include "automation/object.h"
#include "diagnostics/instance_counts.h"
#include "fixtop/automation/attribute.h"

namespace fixtop {

// A value as it was. It also keeps where it was read, so that it can be added to a collection.
class CQSIAttribute final : public AutomationObject<IQSIAttribute>,
                            private HeldNode,
                            private Counted<CountedClass::CQSIAttribute> {
 public:
    // `node` may be null.
    CQSIAttribute(const FIValue& value, Ref<FIIteratorBase> node);

    // An attribute of anything that has some, as an object; null when its value is NULL.
    template <class Readable>
    static IQSIAttribute* Read(Readable& from, const char* name, Ref<FIIteratorBase> node) {
        FIValue value;
        from.GetAttribute(FIValue(name), value);
        return value.IsNull() ? nullptr : new CQSIAttribute(value, std::move(node));
    }

    HRESULT FIXTOP_MEMBER GetType(std::int32_t* type) override;
    HRESULT FIXTOP_MEMBER GetValue(std::int32_t type, std::int32_t size, void* buffer) override;
    HRESULT FIXTOP_MEMBER GetString(char** text) override;
    HRESULT FIXTOP_MEMBER GetInt(std::int32_t* number) override;
    HRESULT FIXTOP_MEMBER GetDouble(double* number) override;

 private:
    ~CQSIAttribute() override = default;
    void* Find(const InterfaceId& id) override;
    // Of a member that has handed out the value as a number.
    HRESULT AsNumber(HRESULT handed_out) const;

    const FIValue value_;
};

}  // namespace fixtop
