#pragma once

// The steady-state solver for cases of our own, as CaseHost::SetEngineMaker wants it.

#include <memory>

#include "casehost/solve_engine.h"

namespace casehost {

std::unique_ptr<SolveEngine> MakeProcessEngine();

}  // namespace casehost
