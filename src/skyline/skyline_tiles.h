#pragma once

#include <vector>

#include "quad/double128.h"

namespace qvx {

/// Doubles that make one number: its high and low part stand in separate runs of a packed row.
template <Number Real>
inline constexpr int kParts = sizeof(Real) / sizeof(double);

/// Rows that a triangular solve takes at a time. The same for every instruction set, as it orders the sums.
inline constexpr int kTriangleRows = 8;

/// Inner loops of factorization and substitution for one instruction set.
///
/// A packed row holds `rows` numbers of one matrix row side by side: their high parts, then (double128) their low
/// parts. "left" is a run of packed rows, "right" the same with `columns` numbers a row. Each sum runs over k in
/// ascending order; with fused multiply-adds the results are the same bits on every instruction set.
template <Number Real>
struct TileKernels
{
    const char* name;  ///< instruction set
    int rows;          ///< numbers in a row of left; a multiple of the vector length
    int columns;       ///< numbers in a row of right; divides kTriangleRows
    int lanes;         ///< numbers in a vector: side of a square that is transposed at once

    /// target[s][t] -= sum over k < depth of left[k][t] right[k][s]; target[s] addresses `rows` numbers in memory.
    void (*updateColumns)(int depth, const double* left, const double* right, Real* const* target);
    /// The same on packed rows: row s of target, s < columns.
    void (*updateRows)(int depth, const double* left, const double* right, double* target);
    /// Packed rows x[s] -= sum over k < s of u[k][s] x[k], s < kTriangleRows; u[k] is a row of kTriangleRows numbers.
    void (*solveTriangle)(double* x, const double* u);
    /// quotient[k] = x[k] / pivot[k] for packed rows k < depth; the pivots are finite, not zero and no subnormals.
    void (*divideRows)(int depth, const double* x, const Real* pivot, double* quotient);
    /// right[k][s] = left[k][firstOfLeft + s] for s < columns.
    void (*copyToRight)(int depth, const double* left, int firstOfLeft, double* right);
    /// Between `lanes` matrix columns and as many packed rows: column[t] addresses the last of `lanes` matrix rows, whose
    /// number belongs to position firstInRow + t of the last packed row; the rows above follow it in memory.
    void (*packSquare)(const Real* const* column, double* rows, int firstInRow);
    void (*unpackSquare)(const double* rows, int firstInRow, Real* const* column);

    /// Sum of u[i] v[i], v in high and low parts. For double u each product is rounded to double and summed in double.
    /// Partial sums are taken in turn, their number the same for every instruction set.
    double128 (*dotProduct)(int count, const Real* u, const double* vHigh, const double* vLow);
    /// v[i] -= u[i] t.
    void (*subtractMultiple)(int count, const Real* u, const double128& t, double* vHigh, double* vLow);
};

/// Those this machine can run, the fastest first.
template <Number Real>
const std::vector<const TileKernels<Real>*>& AvailableTileKernels();

// One per instruction set; null where the processor family does not know it.
const TileKernels<double>* Avx512DoubleTiles();
const TileKernels<double128>* Avx512QuadTiles();
const TileKernels<double>* Avx2DoubleTiles();
const TileKernels<double128>* Avx2QuadTiles();
const TileKernels<double>* PortableDoubleTiles();
const TileKernels<double128>* PortableQuadTiles();

}  // namespace qvx
