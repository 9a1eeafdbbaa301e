#include "sparse/free_motion.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <utility>

namespace qvx {

namespace {

/// x^t A x over |x|^t |A| |x|. A stored term off the diagonal stands for two of the matrix.
double EnergyBesideItsTerms(const SymmetricMatrix& a, const std::vector<double>& x)
{
    double sum = 0;
    double magnitude = 0;
    for (int i = 0; i < a.n; ++i)
        for (int k = a.rowStart[i] - 1; k < a.rowStart[i + 1] - 1; ++k) {
            const int j = a.column[k] - 1;
            assert(j >= i && "upper triangle by rows");
            const double term =
                (j == i ? 1 : 2) * x[static_cast<std::size_t>(i)] * a.value[k] * x[static_cast<std::size_t>(j)];
            sum += term;
            magnitude += std::fabs(term);
        }
    // Of an honest deformation the terms add up to a part of their sizes that a double can tell; of a motion without
    // resistance they cancel to their roundings. The measure has no unit and needs no mass or scale beside it.
    return sum / magnitude;
}

}  // namespace

MotionSearch<double> MotionSearchOf(const SymmetricMatrix& a, std::function<bool(std::vector<double>&)> solve)
{
    assert(a.n > 0 && a.rowStart[0] == 1 && a.column[0] == 1 && "a row begins with its diagonal, counted from 1");
    std::vector<double> root(static_cast<std::size_t>(a.n));
    for (int i = 0; i < a.n; ++i)
        root[static_cast<std::size_t>(i)] = std::sqrt(std::fabs(a.value[a.rowStart[i] - 1]));
    return {.rootOfDiagonal = std::move(root),
            .solve = std::move(solve),
            .energy = [&a](const std::vector<double>& x, const std::vector<double>&) {
                return EnergyBesideItsTerms(a, x);
            }};
}

}  // namespace qvx
