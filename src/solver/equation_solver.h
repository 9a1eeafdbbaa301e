#pragma once

#include <vector>

#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "tools/jx_exception.h"

namespace qvx {

/// Fault of the solver itself, who has told of it already: it leaves the run with its text and no more words.
class SolverFault : public jxException
{
public:
    using jxException::jxException;
};

/// The linear system of a static run: where its stiffness is stored, how boundary terms enter it and how it is solved.
/// The stages of a run are the same for every system; each system says in window and log what it does.
class EquationSolver
{
public:
    virtual ~EquationSolver() = default;

    /// Storage, once the equations are numbered.
    /// @param nTerms  terms of the skyline
    virtual void Allocate(int nTerms) = 0;
    /// Sets the stiffness to zero before the elements add theirs.
    virtual void Clear() = 0;
    /// Penalty stiffness, supports, constraints and springs; then every diagonal must be positive.
    /// @param comb  combination whose last displacements decide on one-way springs and whose load vector receives the
    ///              prescribed displacements; -1 in the linear stage, which does neither
    /// @throws jxException  of an unstable structure, node and DOF in the log
    virtual void AddBoundary(int comb) = 0;
    /// Turns the stiffness into its factor.
    /// @return  false when a pivot was zero or negative, or a motion free, and bAllowNonPositivePivot let it pass
    /// @throws  jxException of an unstable structure, node and DOF in the log
    virtual bool Factorize(bool bAllowNonPositivePivot) = 0;
    /// Says that the factor stands, and whether every pivot of it, or of an earlier iteration, was positive.
    virtual void AnnounceFactor(bool bPositive) = 0;
    /// True when a fault of the factorisation is told with its combination.
    virtual bool NamesCombinationOfFault() const { return false; }
    /// What the factorisation tells about the trust that its results deserve.
    virtual void CheckStability() = 0;
    /// Load vector in, displacements out.
    virtual void Solve(std::vector<double128>& load) = 0;
    /// True when it is worth to hand over all load vectors of a stage at once.
    virtual bool SolvesTogether() const { return false; }
    /// Solves all load vectors, silently; Solve then answers for each of them with its messages.
    virtual void SolveAll(const std::vector<std::vector<double128>*>&) {}
    /// Frees matrix and factor when nothing is left to be solved, or after a fault. Solve still answers for the load
    /// vectors of SolveAll.
    virtual void Release() {}
};

}  // namespace qvx
