#pragma once

#include <cassert>

namespace qvx {

/// Upper triangle of a symmetric matrix by columns, each from its diagonal upward to its topmost stored term; arrays
/// count from 1. Term (row, column) stands at a[maxa[column] + column - row].
///
///     maxa = . 1 2 4 7          | 1  3  . |
///     a    = . 1 2 3 4 5 ..     |    2  5 |       (third column stops at row 2: height 1)
///                               |       4 |
template <class Real>
struct SkylineView
{
    Real* a = nullptr;
    const int* maxa = nullptr;

    /// The diagonal term of a column; the term of row r stands column - r behind it.
    // Columns and not rows, upward and not downward: factorization and substitution take dot products of columns, whose
    // terms then follow each other in memory whatever their height.
    Real* Diagonal(int column) const { return a + maxa[column]; }
    /// A stored term; above the profile there is none.
    Real& operator()(int row, int column) const
    {
        assert(row >= FirstRow(column) && row <= column && "a term of the profile");
        return a[maxa[column] + (column - row)];
    }
    /// Row of the topmost stored term.
    int FirstRow(int column) const { return column + 1 - (maxa[column + 1] - maxa[column]); }
};

}  // namespace qvx
