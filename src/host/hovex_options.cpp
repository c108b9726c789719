// SPDX-License-Identifier: Apache-2.0
#include "host/hovex_options.h"

#include "host/host_access.h"

namespace fixtop {

HovexOptions::HovexOptions(host::SimulationCase* simulation_case)
    : reader_options_(std::in_place),
      has_view_(true),
      life_(CaseLife::Of(CaseOrActive(simulation_case))) {
    reader_options_->dynamics = Case() && IsInDynamics(*Case());
    reader_options_->first = true;
    reader_options_->second = true;
    reader_options_->third = false;
}

const host::CaseReaderOptions* HovexOptions::ReaderOptions() const {
    const HovexOptions* link = this;
    while (link && !link->reader_options_) link = link->parent_;
    return link ? &*link->reader_options_ : nullptr;
}

bool HovexOptions::VariableView() const {
    const HovexOptions* link = this;
    while (!link->has_view_ && link->parent_) link = link->parent_;
    return link->variable_view_;
}

void HovexOptions::SetVariableView(bool view) {
    has_view_ = true;
    variable_view_ = view;
}

Ref<CaseLife> LifeFor(host::SimulationCase* simulation_case, const HovexOptions* options) {
    const bool serves =
        options && options->Life() && (!simulation_case || options->Case() == simulation_case);
    return serves ? options->Life() : CaseLife::Of(CaseOrActive(simulation_case));
}

}  // namespace fixtop
