#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/export.h"
#include "quad/double128.h"
#include "sparse/row_table.h"
#include "sparse/sparse_stiffness.h"

namespace qvx {

/// What a term of the stiffness lost when it was rounded into its store. Refinement forms residuals with the term as it
/// was before.
struct RoundedTerm
{
    int row;      ///< equation, from 1, row <= column
    int column;   ///< equation, from 1
    double lost;  ///< exact value less stored value
};

}  // namespace qvx

/// Working data of one run. All arrays count from 1: slot 0 is unused. A row table has a row per record, by its
/// position, with the equations of its degrees of freedom in the order of the element, 0 where there is none. Of the
/// stores one is filled, that of the solver type; the term in row i <= column j of a skyline stands at maxa[j] + (j -
/// i).
struct jxSolutionData
{
    std::vector<double> origDiag;                 ///< diagonals before factorisation, double solver
    std::vector<qvx::double128> origDiagQ;        ///< the same, quad solver
    std::vector<int> maxa;                        ///< address of each column's diagonal
    std::vector<std::int64_t> maxa64;             ///< the same in 64 bits, to detect overflow
    std::vector<double> K;                        ///< stiffness in skyline form, double solver
    std::vector<qvx::double128> KQ;               ///< stiffness in skyline form, quad solver
    qvx::RowTable lmBeams;                        ///< 12 equations a row
    qvx::RowTable lmShell3s;                      ///< empty: they take no part
    qvx::RowTable lmShell4s;                      ///< 24, six at each corner
    qvx::RowTable lmBricks;                       ///< 24, three at each corner
    qvx::RowTable lmLinks;                        ///< 12
    qvx::RowTable lmConstraints;                  ///< 2
    qvx::RowTable lmCoupledSprings;               ///< 6
    std::vector<int> columnHeight;                ///< distance from the diagonal to the topmost stored term
    qvx::SparseStiffness sparseK;                 ///< stiffness for a direct sparse solver
    int bAnalysed = 0;                            ///< a direct sparse solver knows the pattern of sparseK
    std::vector<qvx::double128> settlement;       ///< prescribed displacements v by equation; empty without any
    std::vector<qvx::double128> settlementForce;  ///< K v
    std::vector<qvx::RoundedTerm> rounded;        ///< of terms that call for a refined solution
    std::vector<double> axialForces;              ///< of the members in this stiffness; empty where all are 0
    std::vector<double> shellDrilling;            ///< stiffness of each shell about its normal in this stiffness
    int bTellSkyline = 0;                         ///< tells the size of the skyline form although the store is another
    int bForceSkyline = 0;                        ///< keeps the skyline form although solverType is 2
};
