// SPDX-License-Identifier: Apache-2.0
#pragma once

// Attributes of the classes of the model. Records live as long as the library that made them.

#include <cstdint>
#include <string>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "fixtop/value.h"
#include "model/enumeration.h"
#include "model/model_types.h"
#include "model/named_object.h"
#include "model/translator_record.h"

namespace fixtop {

class CCDMClass;

class CCDMAttribute : public CCDMNamedObject, private Counted<CountedClass::CCDMAttribute> {
 public:
    using CCDMNamedObject::CCDMNamedObject;

    TranslatorMap translators;
    TranslatorMap arrayTranslators;  // in use when the attribute is an array
    EnumMaps enumMaps;               // tables of this attribute alone
    CCDMAttrType type = CCDMAttrType::kNone;
    // Names of the attributes whose values name one element of an array of this class.
    std::vector<FIValue> keys;
    std::string typeName;  // class of an Object, enumeration of an Enumeration
    bool isArray = false;
    CCDMClass* owner = nullptr;  // the class that declares it
    std::int32_t quantity = 0;   // number from the unit source; 0 is none
};

}  // namespace fixtop
