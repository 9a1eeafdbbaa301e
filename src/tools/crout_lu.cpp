#include "tools/crout_lu.h"

#include <cassert>
#include <vector>

namespace qvx {

template <Number Real>
void InvertByCroutLu(std::span<const Real> matrix, int n, std::span<Real> inverse)
{
    const auto size = static_cast<std::size_t>(n);
    assert(matrix.size() == size * size && inverse.size() == size * size);
    std::vector<Real> factors(matrix.begin(), matrix.end());
    std::vector<int> rowOf(size);
    std::vector<Real> column(size);
    const CroutLu<Real> lu(factors.data(), rowOf.data(), column.data(), n);
    for (std::size_t j = 0; j < size; ++j) {
        // Column by column of the unit matrix: the factors are formed once.
        column.assign(size, Real(0));
        column[j] = Real(1);
        lu.Solve(column.data());
        for (std::size_t i = 0; i < size; ++i)
            inverse[i * size + j] = column[i];
    }
}

template void InvertByCroutLu<double>(std::span<const double>, int, std::span<double>);
template void InvertByCroutLu<double128>(std::span<const double128>, int, std::span<double128>);

}  // namespace qvx
