#include "sparse/lanczos.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

// Eigenvalues and vectors of a symmetric tridiagonal matrix (LAPACK).
extern "C" void dstev_(const char* job, const int* n, double* diagonal, double* offDiagonal, double* vectors,
                       const int* leadingDimension, double* work, int* info, std::size_t jobLength);

namespace qvx {

namespace {

using Vector = std::vector<double>;

double Dot(const Vector& a, const Vector& b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

void AddScaled(Vector& y, double factor, const Vector& x)
{
    for (std::size_t i = 0; i < y.size(); ++i)
        y[i] += factor * x[i];
}

// Scales v to unit length and returns its length before.
double Normalize(Vector& v)
{
    const double length = std::sqrt(Dot(v, v));
    if (length > 0)
        for (double& value : v)
            value /= length;
    return length;
}

struct Krylov
{
    std::vector<Vector> basis;
    Vector diagonal;
    Vector offDiagonal;
};

Krylov Iterate(std::size_t n, const std::function<bool(Vector&)>& solve)
{
    constexpr std::size_t kSteps = 40;
    Krylov k;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Vector v(n);
    std::generate(v.begin(), v.end(), [&] { return uniform(random); });
    Normalize(v);
    for (std::size_t step = 0; step < std::min(kSteps, n); ++step) {
        Vector next = v;
        if (!solve(next))
            break;
        k.diagonal.push_back(Dot(v, next));
        k.basis.push_back(std::move(v));
        for (int pass = 0; pass < 2; ++pass)  // twice is enough (Parlett, 6.9)
            for (const Vector& q : k.basis)
                AddScaled(next, -Dot(next, q), q);
        const double residual = Normalize(next);
        const double scale = std::fabs(k.diagonal.back());
        k.offDiagonal.push_back(residual);
        if (!(residual > 1e-12 * scale))
            break;  // the basis spans an invariant space
        v = std::move(next);
    }
    return k;
}

}  // namespace

std::vector<double> LowestVectorOfInverse(std::size_t n, const std::function<bool(std::vector<double>&)>& solve)
{
    Krylov k = Iterate(n, solve);
    const int m = static_cast<int>(k.basis.size());
    if (m == 0)
        return {};
    const auto size = static_cast<std::size_t>(m);
    Vector vectors(size * size);
    Vector work(std::max<std::size_t>(1, 2 * size));
    int info = 0;
    dstev_("V", &m, k.diagonal.data(), k.offDiagonal.data(), vectors.data(), &m, work.data(), &info, 1);
    if (info != 0)
        return {};
    Vector lowest(n);
    for (std::size_t j = 0; j < size; ++j)  // eigenvalues ascend: the first column belongs to the smallest
        AddScaled(lowest, vectors[j], k.basis[j]);
    Normalize(lowest);
    return lowest;
}

int LargestComponent(const std::vector<double>& x)
{
    const auto largest =
        std::max_element(x.begin(), x.end(), [](double a, double b) { return std::fabs(a) < std::fabs(b); });
    return largest == x.end() ? 0 : static_cast<int>(largest - x.begin()) + 1;
}

}  // namespace qvx
