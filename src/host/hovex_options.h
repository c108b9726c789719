// SPDX-License-Identifier: Apache-2.0
#pragma once

// HovexOptions: how the nodes below a point of the tree are shown. Every entry embeds one that is
// chained to the one above; a value that an options object does not have is the parent's.
//
// Ownership: the parent is lent and must outlive this object: entries hold a reference to what lies
// above them. The end of the chain has every value.

#include <optional>

#include "fixtop/host/specification.h"
#include "host/case_life.h"

namespace fixtop {

class HovexOptions;

// The record of the given case, or else of the one that the options are for, or of the active one.
Ref<CaseLife> LifeFor(host::SimulationCase* simulation_case, const HovexOptions* options);

class HovexOptions {
 public:
    // The end of a chain: all values, for the given case or else the active one.
    explicit HovexOptions(host::SimulationCase* simulation_case);
    // A link without values of its own. A null parent makes it answer the defaults of a top.
    explicit HovexOptions(const HovexOptions* parent) : parent_(parent) {}
    HovexOptions(const HovexOptions&) = delete;
    HovexOptions& operator=(const HovexOptions&) = delete;

    // How the host fills specifications; lent, null when the chain has none.
    const host::CaseReaderOptions* ReaderOptions() const;
    // True: the children of an object are its variables; false: its specification elements.
    bool VariableView() const;
    void SetVariableView(bool view);
    // Null when there is none, or it is gone.
    host::SimulationCase* Case() const { return Life() ? Life()->Case() : nullptr; }
    // Of the case; null for a link without a parent.
    const Ref<CaseLife>& Life() const { return parent_ ? parent_->Life() : life_; }

 private:
    std::optional<host::CaseReaderOptions> reader_options_;
    bool has_view_ = false;
    bool variable_view_ = true;
    const HovexOptions* parent_ = nullptr;
    Ref<CaseLife> life_;  // at the end of the chain
};

}  // namespace fixtop
