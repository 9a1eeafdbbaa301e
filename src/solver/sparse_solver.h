#pragma once

#include "model/run_context.h"
#include "solver/equation_solver.h"

namespace qvx {

/// A sparse factorization as the user is told of it: progress window, list lines, node and DOF of a bad pivot, memory.
/// @throws jxException  with the text of the solver's error, or "SOLUTION ABORTED!"
void TellAndFactorize(const RunContext& context, EquationSolver& solver);

/// Nothing when the factor stands; else node and DOF of a bad pivot are told.
/// @throws jxException  "SOLUTION ABORTED!" when the user has stopped it, else the text of the solver's error
void ThrowFactorizationFault(const RunContext& context, const FactorOutcome& outcome);

/// Nothing when the error of a substitution is 0.
/// @throws jxException  "SOLUTION ABORTED!" when the user has stopped it, else with the error's number
void ThrowSolutionFault(const RunContext& context, int error);

/// A direct solver as settings and preferences of a run want it: backend, threads, memory limit; it asks for the abort
/// key and tells the progress window. The context must outlive it.
/// @throws jxException  when the backend that the preferences name is not installed
std::unique_ptr<DirectSolver> MakeRunSolver(const RunContext& context);

}  // namespace qvx
