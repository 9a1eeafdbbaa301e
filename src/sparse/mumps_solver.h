#pragma once

#include <memory>
#include <vector>

#include "sparse/direct_solver.h"

namespace qvx {

/// An error of MUMPS, entry 1 of its global information, in the numbers of SparseStatus. Warnings, above 0, are none.
/// @param isOutOfCore  a lack of work space is then one of the limit that the settings give
SparseStatus StatusOfMumps(int error, bool isOutOfCore);

/// The multifrontal solver MUMPS, sequential build, behind the solver's door (Amestoy, Duff, L'Excellent & Koster,
/// SIAM J. Matrix Anal. Appl. 23 (2001) 15-41).
///
/// A definite matrix is factorised as a general symmetric one, which lists null pivots and counts negative ones; where
/// a negative one stands is the largest component of the vector of negative energy that inverse iteration finds.
class MumpsSolver : public DirectSolver
{
public:
    explicit MumpsSolver(const SparseSettings& settings);
    ~MumpsSolver() override;

    void ExpectDefinite(bool isPositiveDefinite) override;
    SparseStatus Analyse(const SymmetricMatrix& matrix) override;
    SparseStatus Factorise(const SymmetricMatrix& matrix) override;
    SparseStatus Solve(const SymmetricMatrix& matrix, double* b, double* x, int nRhs) override;
    void Release() override;
    int NegativePivots() const override;
    std::int64_t PeakKilobytes() const override;
    std::int64_t FactorTerms() const override;
    const char* Name() const override { return "MUMPS"; }

private:
    class Instance;

    SparseStatus StatusOf(const SymmetricMatrix& matrix) const;
    SparseStatus CheckMotion(const SymmetricMatrix& matrix) const;
    int FindBadPivot(const SymmetricMatrix& matrix) const;

    SparseSettings settings_;
    std::vector<int> row_;  ///< row of each term: MUMPS takes coordinates
    std::unique_ptr<Instance> instance_;
};

}  // namespace qvx
