#pragma once

#include <functional>
#include <memory>

#include "model/jx_struct.h"
#include "model/solver_window.h"
#include "sparse/direct_solver.h"

namespace qvx {

/// What the driver of a run gets: the model, and what of its inside a run needs and a host does not. CjxStruct makes it
/// (CjxStruct::Context) and hands it over; it is valid as long as the model.
struct RunContext
{
    CjxStruct& model;
    const SolverWindow& window;  ///< knows whether the user has stopped the run
    const int& threads;          ///< of assembly and sparse solver; known once the solver is configured, 1 before
    std::unique_ptr<DirectSolver>& directSolver;  ///< of a sparse run; CjxStruct::configure_pardiso makes it
    /// Rewrites every number of model, loads and results from one unit set to the other.
    std::function<void(const jxUnit& from, const jxUnit& to)> convertUnits;
    /// Has the host open its progress window, in its own time; empty: the host wants none.
    std::function<void()> openProgressWindow;

    bool IsAborted() const { return window.IsAborted(); }
};

}  // namespace qvx
