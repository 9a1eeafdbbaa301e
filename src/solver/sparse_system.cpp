#include "solver/sparse_system.h"

#include <algorithm>
#include <cassert>

namespace qvx {

namespace {

SymmetricMatrix MatrixOf(SparseStiffness& stiffness)
{
    return {.n = stiffness.Equations(),
            .rowStart = stiffness.RowStarts(),
            .column = stiffness.Columns(),
            .value = stiffness.Values()};
}

/// Takes factor * masses off the diagonal of a store for its lifetime; the diagonal comes back to the last bit.
class ShiftedDiagonal
{
public:
    ShiftedDiagonal(SparseStiffness& stiffness, const Shift& shift) : stiffness_(stiffness)
    {
        if (shift.factor == 0)
            return;
        assert(shift.masses.size() > static_cast<std::size_t>(stiffness.Equations()) &&
               "one mass per equation, from 1");
        for (int e = 1; e <= stiffness.Equations(); ++e) {
            // Saved and not added back: s m taken off a double and added to it again may miss the last bit.
            double& diagonal = stiffness.Diagonal(e);
            saved_.push_back(diagonal);
            diagonal -= static_cast<double>(double128(shift.factor) * shift.masses[static_cast<std::size_t>(e)]);
        }
    }
    ~ShiftedDiagonal()
    {
        int equation = 0;
        for (const double diagonal : saved_)
            stiffness_.Diagonal(++equation) = diagonal;
    }
    ShiftedDiagonal(const ShiftedDiagonal&) = delete;
    ShiftedDiagonal& operator=(const ShiftedDiagonal&) = delete;

private:
    SparseStiffness& stiffness_;
    std::vector<double> saved_;
};

}  // namespace

SparseStatus SparseSystem::Analyse(bool isPositiveDefinite)
{
    // A positive definite factor needs no search for pivots and is faster; which kind it is, is fixed with the
    // analysis.
    if (isPositiveDefinite != isPositiveDefinite_) {
        solver_.Release();
        solver_.ExpectDefinite(isPositiveDefinite);
        isPositiveDefinite_ = isPositiveDefinite;
        data_.bAnalysed = 0;
    }
    if (data_.bAnalysed)
        return {};
    const SparseStatus status = solver_.Analyse(MatrixOf(data_.sparseK));
    data_.bAnalysed = status ? 1 : 0;
    return status;
}

FactorOutcome SparseSystem::FactorizeMatrix(const FactorWish& wish)
{
    const ShiftedDiagonal shifted(data_.sparseK, wish.shift);
    SparseStatus status = Analyse(wish.pivots == Pivots::Positive);
    if (status)
        status = solver_.Factorise(MatrixOf(data_.sparseK));
    if (!status)
        return {.isPositive = false, .isWhole = false, .equation = status.equation, .error = status.error};
    return {.isPositive = wish.pivots == Pivots::Positive || solver_.NegativePivots() == 0};
}

int SparseSystem::Substitute(std::span<std::vector<double128>* const> vectors)
{
    std::vector<double128*> entries;
    for (std::vector<double128>* v : vectors) {
        assert(v->size() == static_cast<std::size_t>(data_.sparseK.Equations()) + 1);
        entries.push_back(v->data());
    }
    return SolveInPlace(solver_, MatrixOf(data_.sparseK), entries).error;
}

void SparseSystem::AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
{
    data_.sparseK.AddProduct(v, product);
}

void SparseSystem::Release()
{
    solver_.Release();
    data_.sparseK.Clear();
    data_.bAnalysed = 0;
}

SparseStatus SolveInPlace(DirectSolver& solver, const SymmetricMatrix& matrix, std::span<double128* const> vectors)
{
    const auto n = static_cast<std::size_t>(matrix.n);
    assert(std::none_of(vectors.begin(), vectors.end(), [](const double128* v) { return v == nullptr; }));
    // Column by column, as the solvers want many right sides. Rounding to double loses nothing that the factor, which
    // is double, could use; what it loses comes back by refinement where there is any.
    std::vector<double> b(n * vectors.size()), x(n * vectors.size());
    for (std::size_t k = 0; k < vectors.size(); ++k)
        for (std::size_t i = 0; i < n; ++i)
            b[k * n + i] = static_cast<double>(vectors[k][i + 1]);
    const SparseStatus status = solver.Solve(matrix, b.data(), x.data(), static_cast<int>(vectors.size()));
    for (std::size_t k = 0; k < vectors.size() && status; ++k)
        std::copy_n(x.begin() + static_cast<std::ptrdiff_t>(k * n), n, vectors[k] + 1);
    return status;
}

}  // namespace qvx
