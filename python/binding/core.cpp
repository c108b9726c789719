// SPDX-License-Identifier: Apache-2.0
// The module `fixtop._core`: the client library as the package takes it. All of it is for the
// thread that opened the case; its errors are those of `fixtop.errors`.

#include "case.h"
#include "errors.h"
#include "fixtop/client/selection.h"
#include "node.h"

PYBIND11_MODULE(_core, module) {
    using namespace fixtop::python;
    module.doc() = "What the package takes of the library.";
    TranslateErrors();
    BindNode(module);
    BindCase(module);
    BindSolving(module);
    BindReference(module);
    BindSelection(module);
    module.attr("demo_case") = fixtop::client::Case::kDemo;
    module.attr("FRESHNESS_OLD") = static_cast<int>(fixtop::client::Freshness::kOld);
    module.attr("version") = FIXTOP_VERSION;
}
