#pragma once

#include <climits>
#include <span>
#include <vector>

#include "model/solution_data.h"
#include "quad/double128.h"
#include "skyline/skyline_kernel.h"

namespace qvx {

/// K - factor M is factorized in place of K; M a diagonal of masses.
///
/// The shift of an eigensolver. By Sylvester's law of inertia the factor L D L^t of K - s M has as many negative pivots
/// as there are eigenvalues of K x = w M x below s (Bathe, Finite Element Procedures, 1996, section 8.2.5).
struct Shift
{
    double factor = 0;                       ///< 0: none
    std::span<const double128> masses = {};  ///< by equation from 1; not looked at without a factor
};

/// How a matrix is to be factorized. The plain wish is that of a stable structure: K, positive definite.
struct FactorWish
{
    Shift shift = {};
    Pivots pivots = Pivots::Positive;
    /// AddProduct or another Factorize is wanted behind this one. A skyline is factorized in place and keeps a second
    /// copy of its matrix for it; a sparse solver has the matrix beside its factor anyway.
    bool keepsMatrix = false;
    /// Decimal digits lost by a pivot from which no free motion is searched for: a user will be asked then.
    int digitsLeftToUser = INT_MAX;
    /// Called at the head of each column from 2 on that a skyline factorizes; what it throws leaves Factorize. Sparse
    /// solvers tell their course, and ask whether to go on, by SparseSettings.
    ColumnHook atColumn = [](int) {};
};

/// What came of a factorization.
struct FactorOutcome
{
    bool isPositive = true;  ///< every pivot is positive, and no motion is free of resistance
    bool isWhole = true;     ///< false: there is no factor
    int equation = 0;  ///< whose pivot is not positive, or which takes the largest part in a free motion; 0: unknown
    int error = 0;     ///< of a sparse solver, in the numbers of SparseStatus; 0 of a skyline
};

/// The door to whatever solves K u = f: a skyline in double or double128, or a direct sparse solver.
///
/// It solves, and only that: it knows equations, no nodes, and says nothing. Who speaks to the user stands in front of
/// it (SystemStages). Vectors are by equation from 1, entry 0 unused, n + 1 entries.
///
/// The order of calls: the matrix is assembled into the store (stiffness_sink.h), Factorize, Solve as often as wanted;
/// or AddProduct, whenever the store has the matrix. Clear, assembly and Factorize may follow again.
///
///     const FactorOutcome outcome = solver.Factorize({.keepsMatrix = true});          // K
///     solver.Solve(vectors);                                                          // x := K^-1 x
///     solver.AddProduct(x, product);                                                  // += K x
///     solver.Factorize({.shift = {s, masses}, .pivots = Pivots::Counted});            // K - s M
///     solver.NegativePivots();                                                        // eigenvalues below s
class EquationSolver
{
public:
    /// @param data  stores of the run; outlives the solver and holds the matrix
    explicit EquationSolver(jxSolutionData& data) : data_(data) {}
    virtual ~EquationSolver() = default;
    EquationSolver(const EquationSolver&) = delete;
    EquationSolver& operator=(const EquationSolver&) = delete;

    /// Sets K to zero before elements and boundary add theirs.
    virtual void Clear() = 0;

    /// The factor of K, or of K with a shift. Another Factorize starts from the same matrix again.
    FactorOutcome Factorize(const FactorWish& wish = {});
    /// Of the last factor: pivots below zero. With a shift s these are the eigenvalues of K x = w M x below s.
    virtual int NegativePivots() const = 0;
    /// Of the last factor of a skyline, whole or as far as a bad pivot: its largest multiplier in columns 1 .. lastColumn,
    /// in size; 0 of a sparse solver, which keeps its factor to itself.
    virtual double LargestMultiplier(int /*lastColumn*/) const { return 0; }

    /// Load vectors in, displacements out, many at once. Prescribed displacements of the run (settlement.h) are taken out
    /// of the loads and put back, and where the store has rounded terms away that matter (refinement.h), each solution is
    /// refined. Not behind a shift: its factor counts pivots.
    /// @return  0; else the error of a sparse solver, and the vectors are of no use
    [[nodiscard]] int Solve(std::span<std::vector<double128>* const> loads);
    /// True when many vectors are worth a call of their own: the factor is read once for all of them.
    virtual bool GainsFromMany() const { return false; }

    /// product += K v in double128, K as it was assembled. Not behind a Factorize that did not keep the matrix.
    virtual void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const = 0;

    /// Frees matrix and factor: nothing is left to be solved.
    virtual void Release() {}

protected:
    virtual FactorOutcome FactorizeMatrix(const FactorWish& wish) = 0;
    /// v := K^-1 v for each of them by the factor, no more.
    virtual int Substitute(std::span<std::vector<double128>* const> vectors) = 0;

    jxSolutionData& data_;

private:
    int SolveGroup(std::span<std::vector<double128>* const> loads);

    bool isShifted_ = false;
};

}  // namespace qvx
