#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/export.h"
#include "quad/double128.h"
#include "sparse/row_table.h"
#include "sparse/sparse_stiffness.h"

namespace qvx {

/// What a term of the stiffness lost when it was rounded into its store, row <= column.
struct RoundedTerm
{
    int row;
    int column;
    double lost;
};

}  // namespace qvx

/// Working data of one run. All arrays count from 1: slot 0 is unused.
struct jxSolutionData
{
    std::vector<double> origDiag;           ///< diagonals before factorisation, double solver
    std::vector<qvx::double128> origDiagQ;  ///< the same, quad solver
    std::vector<int> maxa;                  ///< address of each column's diagonal
    std::vector<std::int64_t> maxa64;       ///< the same in 64 bits, to detect overflow
    std::vector<double> K;                  ///< stiffness in skyline form, double solver
    std::vector<qvx::double128> KQ;         ///< stiffness in skyline form, quad solver
    qvx::RowTable lmBeams;
    qvx::RowTable lmShell3s;
    qvx::RowTable lmShell4s;
    qvx::RowTable lmBricks;
    qvx::RowTable lmLinks;
    qvx::RowTable lmConstraints;
    qvx::RowTable lmCoupledSprings;
    std::vector<int> columnHeight;  ///< distance from the diagonal to the topmost stored term
    std::vector<double> M;          ///< second matrix of an eigen run
    std::vector<qvx::double128> MQ;
    qvx::SparseStiffness sparseK;                 ///< stiffness for a direct sparse solver
    int bAnalysed = 0;                            ///< a direct sparse solver knows the pattern of sparseK
    std::vector<qvx::double128> settlement;       ///< prescribed displacements v by equation; empty without any
    std::vector<qvx::double128> settlementForce;  ///< K v
    std::vector<qvx::RoundedTerm> rounded;        ///< of terms that call for a refined solution
    int bForceSkyline = 0;                        ///< keeps the skyline form although solverType is 2
};
