#include "host/hovex_options.h"

#include "host/host_access.h"

HovexOptions::HovexOptions(host::SimulationCase* simulation_case)
    : reader_options_(std::in_place), has_view_(true), case_(CaseOrActive(simulation_case)) {
    reader_options_->dynamics = case_ && IsInDynamics(*case_);
    reader_options_->first = true;
    reader_options_->second = true;
    reader_options_->third = false;
}

HovexOptions::HovexOptions(const HovexOptions* parent)
    : parent_(parent), case_(parent ? parent->case_ : nullptr) {}

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
