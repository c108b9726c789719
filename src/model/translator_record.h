// SPDX-License-Identifier: Apache-2.0
#pragma once

// The base of the translators: what the mapping room makes of a map file and stores in the model's
// records, which own it.

#include <map>
#include <memory>
#include <string>

namespace fixtop {

class CCDMTranslatorRecord {
 public:
    CCDMTranslatorRecord() = default;
    CCDMTranslatorRecord(const CCDMTranslatorRecord&) = delete;
    CCDMTranslatorRecord& operator=(const CCDMTranslatorRecord&) = delete;
    virtual ~CCDMTranslatorRecord() = default;
};

// By translate name; those of one name in the order of the map files.
using TranslatorMap = std::multimap<std::string, std::unique_ptr<CCDMTranslatorRecord>>;

}  // namespace fixtop
