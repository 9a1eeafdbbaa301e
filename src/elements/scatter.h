#pragma once

#include "model/solution_data.h"
#include "quad/double128.h"

namespace qvx {

/// Adds an element matrix to the global stiffness by its location row.
///
/// Term (q, p) with equations row <= column, both nonzero, is added at maxa[column] + column - row: in the double array
/// for the double skyline, else in the double128 array, whatever the number type the matrix was formed in.
/// @param k    n x n, row-major, global axes
/// @param loc  slots 1..n: equation numbers, 0 or below where there is none
template <Number Real>
void ScatterStiffness(jxSolutionData& data, int solverType, const int* loc, int n, const Real* k)
{
    for (int p = 1; p <= n; ++p) {
        const int column = loc[p];
        if (column <= 0)
            continue;
        const int diagonal = data.maxa[static_cast<std::size_t>(column)];
        for (int q = 1; q <= n; ++q) {
            const int row = loc[q];
            if (row <= 0 || row > column)
                continue;
            const auto address = static_cast<std::size_t>(diagonal + column - row);
            const Real& term = k[(q - 1) * n + (p - 1)];
            if (solverType == 0)
                data.K[address] += static_cast<double>(term);
            else
                data.KQ[address] += term;
        }
    }
}

}  // namespace qvx
