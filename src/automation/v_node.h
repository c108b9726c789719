// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/node_object.h"
#include "fixtop/automation/v_node.h"

namespace fixtop {

class CQSVNode final : public NodeObject<IQSVNode> {
 public:
    static IQSINode* Make(Ref<FIIteratorBase> place) { return new CQSVNode(std::move(place)); }

    HRESULT FIXTOP_MEMBER GetInt(const char* name, std::int32_t* value) override;
    HRESULT FIXTOP_MEMBER GetDouble(const char* name, double* value) override;
    HRESULT FIXTOP_MEMBER GetString(const char* name, char** value) override;
    HRESULT FIXTOP_MEMBER GetBool(const char* name, bool* value) override;
    HRESULT FIXTOP_MEMBER SetInt(const char* name, std::int32_t value, char** error) override;
    HRESULT FIXTOP_MEMBER SetDouble(const char* name, double value, char** error) override;
    HRESULT FIXTOP_MEMBER SetString(const char* name, const char* value, char** error) override;
    HRESULT FIXTOP_MEMBER SetBool(const char* name, bool value, char** error) override;
    HRESULT FIXTOP_MEMBER GetChildByIndex(std::int32_t index, IQSVNode** child) override;
    HRESULT FIXTOP_MEMBER GetCount(std::int32_t* count) override;
    HRESULT FIXTOP_MEMBER GetKeyLength(std::int32_t* length) override;
    HRESULT FIXTOP_MEMBER GetKey(std::int32_t size, char* buffer) override;
    HRESULT FIXTOP_MEMBER IsContainer(bool* is_container) override;
    HRESULT FIXTOP_MEMBER HasValue(bool* has_value) override;
    HRESULT FIXTOP_MEMBER GetArrayValues(std::int32_t count, const char* const* names,
                                         Variant* values) override;
    HRESULT FIXTOP_MEMBER SetArrayValues(std::int32_t count, const char* const* names,
                                         const Variant* values, char** error) override;
    HRESULT FIXTOP_MEMBER GetDoubleInUnit(const char* unit, double* value) override;
    HRESULT FIXTOP_MEMBER SetDoubleInUnit(double value, const char* unit, char** error) override;
    HRESULT FIXTOP_MEMBER SetSpecDouble(double value, char** error) override;
    HRESULT FIXTOP_MEMBER SetSpecDoubleInUnit(double value, const char* unit,
                                              char** error) override;
    HRESULT FIXTOP_MEMBER SetUnit(const char* unit, char** error) override;
    HRESULT FIXTOP_MEMBER SetSpecUnit(const char* unit, char** error) override;
    HRESULT FIXTOP_MEMBER SetDisplayUnit(const char* unit, const char* quantity,
                                         char** error) override;
    HRESULT FIXTOP_MEMBER SetDisplaySpecUnit(const char* unit, const char* quantity,
                                             char** error) override;

 private:
    explicit CQSVNode(Ref<FIIteratorBase> place) : NodeObject(std::move(place), Make) {}
    ~CQSVNode() override = default;
};

}  // namespace fixtop
