#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/export.h"
#include "quad/double128.h"

namespace qvx {

/// Location table: per element (row, from 1) the equation numbers of its degrees of freedom (column, from 1),
/// 0 where a degree of freedom has no equation.
class RowTable
{
public:
    RowTable() = default;
    RowTable(int rows, int columns)
        : rows_(rows), columns_(columns),
          terms_((static_cast<std::size_t>(rows) + 1) * (static_cast<std::size_t>(columns) + 1))
    {
    }

    int Rows() const { return rows_; }
    int Columns() const { return columns_; }
    /// Row r; its slots 1 to Columns() hold the entries.
    int* operator[](int row) { return terms_.data() + static_cast<std::size_t>(row) * Stride(); }
    const int* operator[](int row) const { return terms_.data() + static_cast<std::size_t>(row) * Stride(); }

private:
    std::size_t Stride() const { return static_cast<std::size_t>(columns_) + 1; }

    int rows_ = 0;
    int columns_ = 0;
    std::vector<int> terms_;
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
    int bForceSkyline = 0;  ///< keeps the skyline form although solverType is 2
};
