// SPDX-License-Identifier: Apache-2.0
#include "model/class_library.h"

namespace fixtop {

namespace {

template <class Record>
Record* Find(const std::map<std::string, std::unique_ptr<Record>>& records,
             const std::string& name) {
    const auto found = records.find(name);
    return found == records.end() ? nullptr : found->second.get();
}

template <class Record>
Record* GetOrCreate(std::map<std::string, std::unique_ptr<Record>>& records,
                    const std::string& name, CCDMClassLibrary& library) {
    auto& record = records[name];
    if (!record) record = std::make_unique<Record>(name, library);
    return record.get();
}

}  // namespace

CCDMClass* CCDMClassLibrary::FindClass(std::string_view name) const {
    const auto found = class_index_.find(name);
    return found == class_index_.end() ? nullptr : found->second;
}

CCDMEnumeration* CCDMClassLibrary::FindEnumeration(const std::string& name) const {
    return Find(enumerations, name);
}

CCDMClass* CCDMClassLibrary::GetOrCreateClass(const std::string& name) {
    CCDMClass* record = GetOrCreate(classes, name, *this);
    class_index_.emplace(record->name, record);
    return record;
}

CCDMEnumeration* CCDMClassLibrary::GetOrCreateEnumeration(const std::string& name) {
    return GetOrCreate(enumerations, name, *this);
}

}  // namespace fixtop
