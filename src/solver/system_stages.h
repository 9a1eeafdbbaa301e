#pragma once

#include <memory>
#include <span>
#include <vector>

#include "model/run_context.h"
#include "model/solution_data.h"
#include "solver/equation_solver.h"

namespace qvx {

/// Fault of the solver itself, who has told of it already: it leaves the run with its text and no more words.
class SolverFault : public jxException
{
public:
    using jxException::jxException;
};

/// What a stiffness is wanted for; the mode of CjxStruct::AllocateStiffnessMemory.
enum StiffnessUse : int { ForStatics = 0, ForModes = 1 };

/// The stages of a static run that differ from one kind of solver to another, as the user is told of them.
///
/// Stages speak, to window and log; what they have solved is solved by an EquationSolver, which does not. A driver calls
/// them in the order in which they stand here, from Clear on once for each matrix.
class SystemStages
{
public:
    virtual ~SystemStages() = default;

    /// The solver behind the stages; there from Allocate on.
    virtual EquationSolver& Solver() = 0;

    /// Storage, once the equations are numbered.
    /// @param nTerms  terms of the skyline
    virtual void Allocate(int nTerms) = 0;
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
    virtual bool NamesCombinationOfFault() const = 0;
    /// What the factorisation tells about the trust that its results deserve.
    virtual void CheckStability() = 0;
    /// Says that a combination is being solved.
    virtual void AnnounceSolution() = 0;
    /// Load vectors in, displacements out, without a word.
    /// @throws SolverFault  when a sparse solver failed
    virtual void Solve(std::span<std::vector<double128>* const> loads) = 0;
    /// Frees what only a solution needs.
    virtual void Release() { Solver().Release(); }
};

/// Heading of the solution of a combination, in window and log.
inline constexpr wchar_t kSolution[] = L"REDUCTION AND BACK-SUBSTITUTION";

}  // namespace qvx
