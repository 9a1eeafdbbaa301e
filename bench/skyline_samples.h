#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "quad/double128.h"
#include "skyline/skyline_view.h"

namespace qvx::bench {

/// Band matrix in skyline form: every column has `band` terms above its diagonal, the first ones fewer. Random terms,
/// dominant diagonal.
template <class Real>
struct BandMatrix
{
    int n;
    std::vector<int> maxa;
    std::vector<Real> a;

    BandMatrix(int equations, int band) : n(equations), maxa(static_cast<std::size_t>(equations) + 2)
    {
        maxa[1] = 1;
        for (int column = 1; column <= n; ++column)
            maxa[static_cast<std::size_t>(column) + 1] =
                maxa[static_cast<std::size_t>(column)] + 1 + std::min(band, column - 1);
        a.resize(static_cast<std::size_t>(maxa.back()));
        std::mt19937_64 engine(1);
        std::uniform_real_distribution<double> distribution(-1, 1);
        for (int column = 1; column <= n; ++column) {
            View()(column, column) = Real(2 * band + 2);
            for (int row = View().FirstRow(column); row < column; ++row)
                View()(row, column) = Real(distribution(engine));
        }
    }
    SkylineView<Real> View() { return {a.data(), maxa.data()}; }

    /// Products x += a b that a factorization takes, its triangular solve and its pivots included.
    double Products()
    {
        double products = 0;
        for (int column = 2; column <= n; ++column) {
            const double height = column - View().FirstRow(column);
            products += height * (height + 1) / 2;
        }
        return products;
    }
};

/// Largest |K x - U^T D U x| over the largest |K x| for one x, formed in Wide.
template <class Wide, class Real>
double FactorError(BandMatrix<Real>& matrix, BandMatrix<Real>& factors)
{
    const auto n = static_cast<std::size_t>(matrix.n);
    std::vector<Wide> x(n + 1), kx(n + 1), ux(n + 1), product(n + 1);
    for (std::size_t i = 1; i <= n; ++i)
        x[i] = Wide(static_cast<double>(i * 7919 % 1009) / 1009 - 0.5);
    for (int column = 1; column <= matrix.n; ++column)
        for (int row = matrix.View().FirstRow(column); row <= column; ++row) {
            const auto r = static_cast<std::size_t>(row), c = static_cast<std::size_t>(column);
            kx[r] += Wide(matrix.View()(row, column)) * x[c];
            ux[r] += row < column ? Wide(factors.View()(row, column)) * x[c] : x[c];
            if (row < column)
                kx[c] += Wide(matrix.View()(row, column)) * x[r];
        }
    for (int column = 1; column <= matrix.n; ++column) {
        const auto c = static_cast<std::size_t>(column);
        ux[c] = ux[c] * Wide(factors.View()(column, column));
        product[c] = ux[c];
        for (int row = factors.View().FirstRow(column); row < column; ++row)
            product[c] += Wide(factors.View()(row, column)) * ux[static_cast<std::size_t>(row)];
    }
    double error = 0, scale = 0;
    for (std::size_t i = 1; i <= n; ++i) {
        error = std::max(error, std::fabs(static_cast<double>(product[i] - kx[i])));
        scale = std::max(scale, std::fabs(static_cast<double>(kx[i])));
    }
    return error / scale;
}

}  // namespace qvx::bench
