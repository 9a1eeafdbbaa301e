#pragma once

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include "quad/double128.h"
#include "skyline/skyline_view.h"

namespace qvx::test {

/// Height of a column above its diagonal, at most column - 1.
using Profile = std::function<int(int column)>;

/// Symmetric matrix in skyline form, slot 0 of each array unused.
template <Number Real>
struct SkylineMatrix
{
    int n = 0;
    std::vector<int> maxa;
    std::vector<Real> a;

    SkylineMatrix(int equations, const Profile& height) : n(equations), maxa(static_cast<std::size_t>(equations) + 2)
    {
        maxa[1] = 1;
        for (int column = 1; column <= n; ++column)
            maxa[static_cast<std::size_t>(column) + 1] =
                maxa[static_cast<std::size_t>(column)] + 1 + std::clamp(height(column), 0, column - 1);
        a.resize(static_cast<std::size_t>(maxa.back()));
    }
    SkylineView<Real> View() { return {a.data(), maxa.data()}; }
    Real& operator()(int row, int column) { return View()(row, column); }
    int FirstRow(int column) { return View().FirstRow(column); }
};

/// Numbers of one range whose last bits are random too.
template <Number Real>
Real RandomNumber(std::mt19937_64& engine, double low, double high)
{
    const double hi = std::uniform_real_distribution<double>(low, high)(engine);
    if constexpr (std::same_as<Real, double128>) {
        const double lo = std::uniform_real_distribution<double>(-0.25, 0.25)(engine) * 0x1p-52 * hi;
        return double128(hi) + lo;
    } else {
        return hi;
    }
}

/// Random off-diagonal terms, diagonals that exceed the sum of their row: positive definite, well conditioned.
template <Number Real>
SkylineMatrix<Real> DominantMatrix(int n, const Profile& height, unsigned seed)
{
    std::mt19937_64 engine(seed);
    SkylineMatrix<Real> k(n, height);
    for (int column = 1; column <= n; ++column)
        k(column, column) = RandomNumber<Real>(engine, 1, 2);
    for (int column = 1; column <= n; ++column)
        for (int row = k.FirstRow(column); row < column; ++row) {
            const Real term = RandomNumber<Real>(engine, -1, 1);
            k(row, column) = term;
            k(row, row) += term < Real(0) ? -term : term;
            k(column, column) += term < Real(0) ? -term : term;
        }
    return k;
}

/// Integer factors with the given pivots: K = U^T D U has whole terms, so every step of its factorization is exact.
template <Number Real>
SkylineMatrix<Real> MatrixWithPivots(int n, const Profile& height, const std::function<int(int)>& pivot)
{
    SkylineMatrix<Real> u(n, height), k(n, height);
    for (int column = 1; column <= n; ++column)
        for (int row = u.FirstRow(column); row < column; ++row)
            u(row, column) = (row * 7 + column * 3) % 5 - 2;
    for (int column = 1; column <= n; ++column)
        for (int row = k.FirstRow(column); row <= column; ++row) {
            Real sum = row == column ? Real(pivot(row)) : u(row, column) * Real(pivot(row));
            for (int r = std::max(u.FirstRow(row), u.FirstRow(column)); r < row; ++r)
                sum += u(r, row) * Real(pivot(r)) * u(r, column);
            k(row, column) = sum;
        }
    return k;
}

struct NamedProfile
{
    const char* name;
    Profile height;
};

/// Profiles as models give them, and as they never should.
inline std::vector<NamedProfile> Profiles(int n)
{
    return {
        {"diagonal only", [](int) { return 0; }},
        {"full", [](int column) { return column; }},
        {"narrow band", [](int) { return 5; }},
        {"band", [n](int) { return n / 4; }},
        {"nodes of six", [n](int column) { return (column - 1) % 6 + 6 * (1 + (column / 6) % (n / 30 + 1)); }},
        {"random heights", [](int column) { return column * 7919 % 104729 % (column + 1); }},
        {"every fifth tall", [](int column) { return column % 5 == 0 ? column : column % 3; }},
        {"gaps of short columns", [](int column) { return column / 40 % 2 == 0 ? 45 : 1; }},
        {"last column full", [n](int column) { return column == n ? n : 2; }},
        {"first column of each block full", [](int column) { return column % 64 == 1 ? column : 9; }},
    };
}

}  // namespace qvx::test
