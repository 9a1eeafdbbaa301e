#include "elements/brick/brick_geometry.h"

#include <cassert>
#include <cmath>
#include <span>

#include "elements/invariants.h"

namespace qvx {

namespace {

using std::sqrt;

// Signs of r, s, t at the nodes.
constexpr int kSigns[8][3] = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                              {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};

// Derivatives of the shape functions along r, s, t, and of the modes 1 - r^2, 1 - s^2, 1 - t^2 along their own
// coordinate. They depend on the point only, not on the element.
template <Number Real>
struct NaturalDerivatives
{
    std::array<Real, 8> r;
    std::array<Real, 8> s;
    std::array<Real, 8> t;
    std::array<Real, kBrickModes> mode;
    BrickPoint<Real> at;
};

template <Number Real>
NaturalDerivatives<Real> DerivativesAt(const BrickPoint<Real>& at)
{
    NaturalDerivatives<Real> d;
    for (std::size_t i = 0; i < 8; ++i) {
        const Real signR = kSigns[i][0], signS = kSigns[i][1], signT = kSigns[i][2];
        const Real fr = 1 + signR * at.r, fs = 1 + signS * at.s, ft = 1 + signT * at.t;
        d.r[i] = signR * fs * ft / 8;
        d.s[i] = signS * fr * ft / 8;
        d.t[i] = signT * fr * fs / 8;
    }
    d.mode = {-2 * at.r, -2 * at.s, -2 * at.t};
    d.at = at;
    return d;
}

template <Number Real, std::size_t N>
std::array<NaturalDerivatives<Real>, N> DerivativesAtAll(const std::array<BrickPoint<Real>, N>& points)
{
    std::array<NaturalDerivatives<Real>, N> all;
    for (std::size_t i = 0; i < N; ++i)
        all[i] = DerivativesAt(points[i]);
    return all;
}

// The trilinear map x(r, s, t) = c0 + cr r + cs s + ct t + crs r s + cst s t + ctr t r + crst r s t of the element.
template <Number Real>
struct TrilinearMap
{
    using Vector = std::array<Real, 3>;
    Vector r, s, t, rs, st, tr, rst;
};

template <Number Real>
TrilinearMap<Real> MapOf(const BrickCorners& corners)
{
    TrilinearMap<Real> map{};
    for (std::size_t i = 0; i < 8; ++i) {
        const int r = kSigns[i][0], s = kSigns[i][1], t = kSigns[i][2];
        const Real p[3] = {corners[i].x, corners[i].y, corners[i].z};
        const auto Add = [&p](std::array<Real, 3>& c, int sign) {
            for (std::size_t k = 0; k < 3; ++k)
                c[k] += sign * p[k] / 8;
        };
        Add(map.r, r);
        Add(map.s, s);
        Add(map.t, t);
        Add(map.rs, r * s);
        Add(map.st, s * t);
        Add(map.tr, t * r);
        Add(map.rst, r * s * t);
    }
    return map;
}

// Derivatives of all functions in a direction that changes r, s, t by dr, ds, dt.
template <Number Real>
std::array<Real, kBrickFunctions> DerivativeOf(const NaturalDerivatives<Real>& d, const Real& dr, const Real& ds,
                                               const Real& dt)
{
    std::array<Real, kBrickFunctions> along;
    for (std::size_t i = 0; i < 8; ++i)
        along[i] = dr * d.r[i] + ds * d.s[i] + dt * d.t[i];
    along[8] = dr * d.mode[0];
    along[9] = ds * d.mode[1];
    along[10] = dt * d.mode[2];
    along[11] = Real(0);
    return along;
}

template <Number Real>
BrickGradients<Real> Gradients(const TrilinearMap<Real>& map, const NaturalDerivatives<Real>& d)
{
    // J: row 0 the derivatives of x, y, z along r, then along s, along t.
    const BrickPoint<Real>& at = d.at;
    Real J[3][3];
    for (std::size_t k = 0; k < 3; ++k) {
        J[0][k] = map.r[k] + map.rs[k] * at.s + (map.tr[k] + map.rst[k] * at.s) * at.t;
        J[1][k] = map.s[k] + map.st[k] * at.t + (map.rs[k] + map.rst[k] * at.t) * at.r;
        J[2][k] = map.t[k] + map.tr[k] * at.r + (map.st[k] + map.rst[k] * at.r) * at.s;
    }
    // Cofactors by cyclic indices carry their sign in the order of the columns: no (-1)^(i + j) is needed.
    const auto Minor = [&J](int a, int b, int c, int e) { return J[a][c] * J[b][e] - J[a][e] * J[b][c]; };
    const Real cofactor[3][3] = {{Minor(1, 2, 1, 2), Minor(1, 2, 2, 0), Minor(1, 2, 0, 1)},
                                 {Minor(2, 0, 1, 2), Minor(2, 0, 2, 0), Minor(2, 0, 0, 1)},
                                 {Minor(0, 1, 1, 2), Minor(0, 1, 2, 0), Minor(0, 1, 0, 1)}};
    BrickGradients<Real> g;
    g.det = J[0][0] * cofactor[0][0] + J[0][1] * cofactor[0][1] + J[0][2] * cofactor[0][2];
    const Real perVolume = Real(1) / g.det;

    // Column k of the cofactors over det is row k of the inverse: how x_k changes r, s, t.
    const auto Along = [&](int k) {
        return DerivativeOf(d, cofactor[0][k] * perVolume, cofactor[1][k] * perVolume, cofactor[2][k] * perVolume);
    };
    // A folded solid has det <= 0 here. It is not refused: the sign goes into the stiffness and is told by its diagonal
    // with the number of the solid (see brick_group.cpp).
    g.x = Along(0);
    g.y = Along(1);
    g.z = Along(2);
    assert(AddUpToNothing(std::span(g.x).template first<8>()) && AddUpToNothing(std::span(g.y).template first<8>()) &&
           AddUpToNothing(std::span(g.z).template first<8>()) && "a translation strains nothing");
    return g;
}

}  // namespace

template <Number Real>
const std::array<BrickPoint<Real>, 8>& BrickGaussPoints()
{
    static const std::array<BrickPoint<Real>, 8> points = [] {
        const Real g = sqrt(Real(3)) / 3;
        std::array<BrickPoint<Real>, 8> all;
        for (std::size_t i = 0; i < 8; ++i)
            all[i] = {kSigns[i][0] * g, kSigns[i][1] * g, kSigns[i][2] * g};
        return all;
    }();
    return points;
}

template <Number Real>
const std::array<BrickPoint<Real>, 9>& BrickStressPoints()
{
    static const std::array<BrickPoint<Real>, 9> points = [] {
        std::array<BrickPoint<Real>, 9> all{};
        for (std::size_t i = 0; i < 8; ++i)
            all[i + 1] = {Real(kSigns[i][0]), Real(kSigns[i][1]), Real(kSigns[i][2])};
        return all;
    }();
    return points;
}

template <Number Real>
std::array<Real, 8> BrickShapeFunctions(const BrickPoint<Real>& at)
{
    std::array<Real, 8> N;
    // Each coefficient is the mean of the corners with the signs that its monomial has there: the eight monomials are
    // orthogonal over the corners of the cube.
    for (std::size_t i = 0; i < 8; ++i)
        N[i] = (1 + kSigns[i][0] * at.r) * (1 + kSigns[i][1] * at.s) * (1 + kSigns[i][2] * at.t) / 8;
    assert(!(std::fabs(static_cast<double>(N[0] + N[1] + N[2] + N[3] + N[4] + N[5] + N[6] + N[7]) - 1) > 1e-12) &&
           "shape functions share a load out whole");
    return N;
}

template <Number Real>
std::array<BrickGradients<Real>, 8> GradientsAtGaussPoints(const BrickCorners& corners)
{
    static const std::array<NaturalDerivatives<Real>, 8> derivatives = DerivativesAtAll(BrickGaussPoints<Real>());
    const TrilinearMap<Real> map = MapOf<Real>(corners);
    std::array<BrickGradients<Real>, 8> gradients;
    for (std::size_t i = 0; i < gradients.size(); ++i)
        gradients[i] = Gradients(map, derivatives[i]);
    return gradients;
}

template <Number Real>
std::array<BrickGradients<Real>, 9> GradientsAtStressPoints(const BrickCorners& corners)
{
    static const std::array<NaturalDerivatives<Real>, 9> derivatives = DerivativesAtAll(BrickStressPoints<Real>());
    const TrilinearMap<Real> map = MapOf<Real>(corners);
    std::array<BrickGradients<Real>, 9> gradients;
    for (std::size_t i = 0; i < gradients.size(); ++i)
        gradients[i] = Gradients(map, derivatives[i]);
    return gradients;
}

template const std::array<BrickPoint<double>, 8>& BrickGaussPoints<double>();
template const std::array<BrickPoint<double128>, 8>& BrickGaussPoints<double128>();
template const std::array<BrickPoint<double>, 9>& BrickStressPoints<double>();
template const std::array<BrickPoint<double128>, 9>& BrickStressPoints<double128>();
template std::array<double, 8> BrickShapeFunctions<double>(const BrickPoint<double>&);
template std::array<double128, 8> BrickShapeFunctions<double128>(const BrickPoint<double128>&);
template std::array<BrickGradients<double>, 8> GradientsAtGaussPoints<double>(const BrickCorners&);
template std::array<BrickGradients<double128>, 8> GradientsAtGaussPoints<double128>(const BrickCorners&);
template std::array<BrickGradients<double>, 9> GradientsAtStressPoints<double>(const BrickCorners&);
template std::array<BrickGradients<double128>, 9> GradientsAtStressPoints<double128>(const BrickCorners&);

}  // namespace qvx
