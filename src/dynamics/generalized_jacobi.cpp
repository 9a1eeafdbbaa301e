#include "dynamics/generalized_jacobi.h"

#include <cmath>

namespace qvx {

namespace {

using std::fabs;
using std::sqrt;

template <Number Real>
void RequirePositiveDiagonals(const PackedMatrix<Real>& a, const PackedMatrix<Real>& b, const wchar_t* text)
{
    for (int i = 1; i <= a.Order(); ++i)
        if (!(a(i, i) > Real(0) && b(i, i) > Real(0)))
            throw ProjectionFault(text);
}

/// Square of the cosine between lines j and k: how far a pair is from being diagonal.
template <Number Real>
Real Coupling(const PackedMatrix<Real>& m, int j, int k)
{
    return (m(j, k) / m(j, j)) * (m(j, k) / m(k, k));
}

/// x_j += cg x_k and x_k += ca x_j with the values before.
template <Number Real>
struct Rotation
{
    Real ca, cg;

    void Turn(Real& xj, Real& xk) const
    {
        const Real old = xj;
        xj = old + cg * xk;
        xk = xk + ca * old;
    }
    /// Turns lines j and k of a symmetric matrix whose term (j, k) becomes zero by it.
    void TurnMatrix(PackedMatrix<Real>& m, int j, int k) const
    {
        for (int i = 1; i <= m.Order(); ++i)
            if (i != j && i != k)
                Turn(m(i, j), m(i, k));
        const Real mk = m(k, k);
        m(k, k) = mk + Real(2) * ca * m(j, k) + ca * ca * m(j, j);
        m(j, j) = m(j, j) + Real(2) * cg * m(j, k) + cg * cg * mk;
        m(j, k) = Real(0);
    }
};

/// The rotation that makes the terms (j, k) of both matrices zero. The root of larger magnitude keeps the angle small.
template <Number Real>
Rotation<Real> RotationOf(const PackedMatrix<Real>& a, const PackedMatrix<Real>& b, int j, int k)
{
    const Real akk = a(k, k) * b(j, k) - b(k, k) * a(j, k);
    const Real ajj = a(j, j) * b(j, k) - b(j, j) * a(j, k);
    const Real ab = a(j, j) * b(k, k) - a(k, k) * b(j, j);
    const Real scale = a(k, k) * b(k, k);
    const Real abRatio = ab / scale;
    const Real check = (abRatio * abRatio + Real(4) * (akk / scale) * (ajj / scale)) / Real(4);
    if (check < Real(0))
        throw ProjectionFault(L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [2]");
    const Real root = sqrt(check) * scale;
    const Real d1 = ab / Real(2) + root, d2 = ab / Real(2) - root;
    const Real den = fabs(d2) > fabs(d1) ? d2 : d1;
    if (den == Real(0))
        return {Real(0), -a(j, k) / a(k, k)};
    return {akk / den, -ajj / den};
}

template <Number Real>
void Sweep(PackedMatrix<Real>& a, PackedMatrix<Real>& b, SquareMatrix<Real>& vectors, double threshold)
{
    const int n = a.Order();
    for (int j = 1; j < n; ++j)
        for (int k = j + 1; k <= n; ++k) {
            if (Real(threshold) > Coupling(a, j, k) && Real(threshold) > Coupling(b, j, k))
                continue;
            const Rotation<Real> rotation = RotationOf(a, b, j, k);
            rotation.TurnMatrix(a, j, k);
            rotation.TurnMatrix(b, j, k);
            for (int i = 1; i <= n; ++i)
                rotation.Turn(vectors(i, j), vectors(i, k));
        }
}

template <Number Real>
bool HasConverged(const PackedMatrix<Real>& a, const PackedMatrix<Real>& b, const std::vector<Real>& before,
                  const std::vector<Real>& now, double tolerance)
{
    const int n = a.Order();
    for (std::size_t i = 1; i <= static_cast<std::size_t>(n); ++i)
        if (fabs(now[i] - before[i]) > before[i] * Real(tolerance))
            return false;
    const Real limit = tolerance * tolerance;
    for (int j = 1; j < n; ++j)
        for (int k = j + 1; k <= n; ++k)
            if (!(limit > Coupling(a, j, k) && limit > Coupling(b, j, k)))
                return false;
    return true;
}

template <Number Real>
std::vector<Real> Ratios(const PackedMatrix<Real>& a, const PackedMatrix<Real>& b)
{
    std::vector<Real> ratios(static_cast<std::size_t>(a.Order()) + 1);
    for (int i = 1; i <= a.Order(); ++i)
        ratios[static_cast<std::size_t>(i)] = a(i, i) / b(i, i);
    return ratios;
}

}  // namespace

template <Number Real>
void JACOBI(PackedMatrix<Real>& AR, PackedMatrix<Real>& BR, SquareMatrix<Real>& VEC, std::vector<Real>& EIGV,
            double RTOLJ, int NSMAX)
{
    assert(AR.Order() == BR.Order() && EIGV.size() == static_cast<std::size_t>(AR.Order()) + 1);
    const int n = AR.Order();
    RequirePositiveDiagonals(AR, BR, L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [1]");
    std::vector<Real> W = Ratios(AR, BR);
    EIGV = W;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j)
            VEC(i, j) = i == j ? Real(1) : Real(0);
    if (n == 1)
        return;
    for (int sweep = 1; sweep <= NSMAX; ++sweep) {
        Sweep(AR, BR, VEC, std::pow(0.01, 2 * sweep));
        RequirePositiveDiagonals(AR, BR, L"MATRICES NOT POSITIVE DEFINITE IN JACOBI [3]");
        EIGV = Ratios(AR, BR);
        if (HasConverged(AR, BR, W, EIGV, RTOLJ))
            break;
        W = EIGV;
    }
    for (int j = 1; j <= n; ++j)
        for (int i = 1; i <= n; ++i)
            VEC(i, j) = VEC(i, j) / sqrt(BR(j, j));
}

template void JACOBI(PackedMatrix<double>&, PackedMatrix<double>&, SquareMatrix<double>&, std::vector<double>&, double,
                     int);
template void JACOBI(PackedMatrix<double128>&, PackedMatrix<double128>&, SquareMatrix<double128>&,
                     std::vector<double128>&, double, int);

}  // namespace qvx
