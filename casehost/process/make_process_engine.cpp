#include "casehost/process_engine.h"
#include "process/process_engine.h"

namespace casehost {

std::unique_ptr<SolveEngine> MakeProcessEngine() {
    return std::make_unique<process::ProcessEngine>();
}

}  // namespace casehost
