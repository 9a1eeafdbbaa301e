#pragma once

#include <cassert>

#include "elements/stiffness_sink.h"
#include "tools/parallel.h"

namespace qvx {

/// Adds a square matrix to a store of the global stiffness by its location row.
///
/// Of a pair of equations only the term with row <= column is stored. Two degrees of freedom that share an equation
/// add all their four terms to its diagonal, as the transformation T^t k T wants it.
/// @param k    n x n, row-major, global axes
/// @param loc  slots 1..n: equation numbers, 0 or below where there is none
/// @param share  of the store: several threads may add the shares of one element
template <class Sink, Number Real>
void ScatterInto(const Sink& sink, const int* loc, int n, const Real* k, Share share = {})
{
    assert(n > 0 && loc != nullptr && "an element has its row of equations");
    if constexpr (requires { sink.AddElement(loc, n, k, share); }) {
        sink.AddElement(loc, n, k, share);
        return;
    }
    // Both (p, q) and (q, p) are visited, and the one that lies in the upper triangle is stored: which of the two it is
    // hangs on the order of the equations and not on that of the degrees of freedom.
    for (int p = 1; p <= n; ++p) {
        const int column = loc[p];
        if (column <= 0 || !share.Has(column))
            continue;
        for (int q = 1; q <= n; ++q) {
            const int row = loc[q];
            if (row > 0 && row <= column)
                sink.Add(row, column, k[(q - 1) * n + (p - 1)]);
        }
    }
}

/// Adds an element matrix to the global stiffness of the run, whatever the number type the matrix was formed in.
template <Number Real>
void ScatterStiffness(jxSolutionData& data, int solverType, const int* loc, int n, const Real* k, Share share = {})
{
    WithStiffnessSink(data, solverType, [&](const auto& sink) { ScatterInto(sink, loc, n, k, share); });
}

}  // namespace qvx
