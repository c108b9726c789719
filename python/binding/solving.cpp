// SPDX-License-Identifier: Apache-2.0
#include <pybind11/functional.h>
#include <pybind11/stl.h>

#include <chrono>
#include <memory>
#include <stdexcept>

#include "case.h"
#include "fixtop/client/solver.h"
#include "storing.h"
#include "text.h"

namespace fixtop::python {

namespace py = pybind11;

namespace {

using client::Released;
using client::Solver;
using client::SolveResult;

// A solve with the interpreter's lock let go, which is taken now and then to look for ^C and to
// tell the progress. What Python raises meanwhile stops the solve, and is thrown after its end.
class Turns {
 public:
    Turns(const Solver& solver, py::object progress)
        : solver_(solver), progress_(std::move(progress)) {}

    Solver::Progress Call() {
        return [this] { return !thrown_ && (!IsTime() || Look()); };
    }
    void Rethrow() {
        if (thrown_) std::rethrow_exception(thrown_);
    }

 private:
    using Clock = std::chrono::steady_clock;
    static constexpr auto kBetween = std::chrono::milliseconds(20);

    bool IsTime() {
        const auto now = Clock::now();
        if (now < next_) return false;
        next_ = now + kBetween;
        return true;
    }
    bool Look() {
        const py::gil_scoped_acquire ours;
        try {
            if (PyErr_CheckSignals() != 0) throw py::error_already_set();
            if (progress_.is_none()) return true;
            const py::object goes_on = progress_(solver_.DoneShare());
            return goes_on.is_none() || py::cast<bool>(py::bool_(goes_on));
        } catch (...) {
            thrown_ = std::current_exception();
            return false;
        }
    }

    Solver solver_;
    py::object progress_;
    Clock::time_point next_;
    std::exception_ptr thrown_;
};

template <class Work>
auto WhileOthersGoOn(const Solver& solver, const py::object& progress, const Work& work) {
    Turns turns(solver, progress);
    auto result = [&] {
        const py::gil_scoped_release others_go_on;
        return work(turns.Call());
    }();
    turns.Rethrow();
    return result;
}

SolveResult Solve(PyCase& self, const py::object& progress) {
    const Solver solver = self->GetSolver();
    return WhileOthersGoOn(solver, progress,
                           [&](const Solver::Progress& call) { return solver.Solve(call); });
}

using PyHold = Owned<std::unique_ptr<HeldStores>>;

PyHold Hold(PyCase& open_case) {
    if (HeldStores::Open()) throw std::runtime_error("a hold is open already");
    return PyHold(std::make_unique<HeldStores>(open_case->GetSolver()));
}

Released Release(PyHold& self, PyCase& open_case, const py::object& progress) {
    HeldStores& held = **self;
    return WhileOthersGoOn(open_case->GetSolver(), progress,
                           [&](const Solver::Progress& call) { return held.Release(call); });
}

void BindResults(py::module_& module) {
    py::class_<SolveResult>(module, "SolveResult", "How a solve ended; true when it is complete.")
        .def_readonly("complete", &SolveResult::complete)
        .def_property_readonly("message", [](const SolveResult& it) { return Text(it.message); })
        .def_property_readonly("problem", [](const SolveResult& it) { return Text(it.problem); })
        .def("__bool__", [](const SolveResult& self) { return self.complete; });
    py::class_<Released>(module, "Released")
        .def_readonly("solve", &Released::solve)
        .def_property_readonly("normalised",
                               [](const Released& it) { return TextsOf(it.normalised); })
        .def_property_readonly("refused", [](const Released& it) { return TextsOf(it.refused); });
}

}  // namespace

void BindSolving(py::module_& module) {
    BindResults(module);
    py::class_<PyHold>(module, "Hold")
        .def(py::init(&Hold), py::arg("case"))
        .def("release", &Release, py::arg("case"), py::arg("progress") = py::none())
        .def("drop", [](PyHold& self) { self->reset(); });
    module.def("on_store", &SetAfterStore, py::arg("call"));
    module.def("solve", &Solve, py::arg("case"), py::arg("progress") = py::none());
    module.def("is_running", [](PyCase& self) { return self->GetSolver().IsRunning(); });
    module.def("is_complete", [](PyCase& self) { return self->GetSolver().IsComplete(); });
    module.def("solves_on_store", [](PyCase& self) { return self->GetSolver().SolvesOnStore(); });
    module.def("solve_on_store", [](PyCase& self, bool on) { self->GetSolver().SolveOnStore(on); });
}

}  // namespace fixtop::python
