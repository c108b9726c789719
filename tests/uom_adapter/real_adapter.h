// SPDX-License-Identifier: Apache-2.0
#pragma once

// The unit adapter as a module, with a source of its own until the end of a test.

#include "model/unit_source.h"
#include "platform/modules.h"

namespace fixtop {

class RealAdapter {
 public:
    RealAdapter()
        : module_(LoadModule("QSIUOMAdapter2004_2.dll")),
          create_(reinterpret_cast<CreateUnitSourceFunction>(
              FindFunction(module_, "CreateUnitSource"))),
          delete_(reinterpret_cast<DeleteUnitSourceFunction>(
              FindFunction(module_, "DeleteUnitSource"))),
          source_(create_ == nullptr || delete_ == nullptr ? nullptr : create_()) {}
    ~RealAdapter() {
        if (source_ != nullptr) {
            source_->Destroy();
            delete_(source_);
        }
        UnloadModule(module_);
    }
    RealAdapter(const RealAdapter&) = delete;
    RealAdapter& operator=(const RealAdapter&) = delete;

    // Null when the module was not found.
    CCDMUnitSource* operator->() const { return source_; }
    explicit operator bool() const { return source_ != nullptr; }

 private:
    ModuleHandle module_;
    CreateUnitSourceFunction create_;
    DeleteUnitSourceFunction delete_;
    CCDMUnitSource* source_;
};

inline constexpr char kDefinitions[] = "CCDM_UOMDefinitions.xml";

}  // namespace fixtop
