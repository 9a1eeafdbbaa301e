#include "elements/shell/shell_membrane.h"

#include <cassert>

#include "elements/invariants.h"
#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr std::size_t kModes = 2;  // 1 - r^2, 1 - s^2

template <Number Real>
using ModeGradients = std::array<Gradient<Real>, kModes>;

template <Number Real>
ModeGradients<Real> ModeGradientsAt(const Jacobian<Real>& J, const NaturalPoint<Real>& at)
{
    const Real slopeR = -2 * at.r * J.perDet;  // of the first mode along r; it has none along s
    const Real slopeS = -2 * at.s * J.perDet;
    return {{{J.ys * slopeR, -J.xs * slopeR}, {-J.yr * slopeS, J.xr * slopeS}}};
}

template <Number Real>
ModeGradients<Real> Mean(const GaussGeometry<Real>& geometry, const std::array<ModeGradients<Real>, 4>& modes)
{
    ModeGradients<Real> mean{};
    Real area(0);
    for (std::size_t g = 0; g < 4; ++g) {
        // The area of a Gauss point. On a parallelogram all four are equal, the gradients of the modes are odd, and the
        // mean is 0.
        const Real& weight = geometry.J[g].det;
        for (std::size_t m = 0; m < kModes; ++m) {
            mean[m].x += weight * modes[g][m].x;
            mean[m].y += weight * modes[g][m].y;
        }
        area += weight;
    }
    for (Gradient<Real>& m : mean)
        m = {m.x / area, m.y / area};
    return mean;
}

// Integrals f,x g,x, f,x g,y, f,y g,x and f,y g,y of one pair of functions.
template <Number Real>
struct PairProducts
{
    Real xx{};
    Real xy{};
    Real yx{};
    Real yy{};

    void Add(const Gradient<Real>& f, const Gradient<Real>& g)
    {
        xx += f.x * g.x;
        xy += f.x * g.y;
        yx += f.y * g.x;
        yy += f.y * g.y;
    }
};

// B_i^t D B_j, the 2 x 2 block of the displacements ux, uy of two functions, written at (0,0) of a row-major matrix.
template <Number Real>
void PutBlock(Real* k, int columns, const PairProducts<Real>& p, const PlaneRigidity<Real>& D)
{
    k[0] = D.direct * p.xx + D.shear * p.yy;
    k[1] = D.coupling * p.xy + D.shear * p.yx;
    k[columns] = D.coupling * p.yx + D.shear * p.xy;
    k[columns + 1] = D.direct * p.yy + D.shear * p.xx;
}

template <Number Real>
FixedMatrix<Real, 8, 8> PlainStiffness(const GaussGeometry<Real>& geometry, const PlaneRigidity<Real>& D)
{
    const GradientProducts<Real>& p = geometry.products;
    FixedMatrix<Real, 8, 8> k;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i; j < 4; ++j)
            PutBlock(&k(2 * static_cast<int>(i), 2 * static_cast<int>(j)), 8,
                     {p.xx[i][j], p.xy[i][j], p.xy[j][i], p.yy[i][j]}, D);
    MirrorUpper(k);
    return k;
}

// Stiffness Kau between the amplitudes of the modes and the nodes, and Kaa among the amplitudes.
template <Number Real>
struct ModeStiffness
{
    FixedMatrix<Real, 4, 8> Kau;
    FixedMatrix<Real, 4, 4> Kaa;
};

template <Number Real>
ModeStiffness<Real> ModeStiffnessOf(const GaussGeometry<Real>& geometry,
                                    const std::array<ModeGradients<Real>, 4>& modes, const PlaneRigidity<Real>& D)
{
    ModeStiffness<Real> out;
    for (std::size_t m = 0; m < kModes; ++m) {
        std::array<Gradient<Real>, 4> weighted;
        for (std::size_t g = 0; g < 4; ++g)
            weighted[g] = {geometry.J[g].det * modes[g][m].x, geometry.J[g].det * modes[g][m].y};
        const int row = 2 * static_cast<int>(m);
        for (std::size_t i = 0; i < 4; ++i) {
            PairProducts<Real> withNode;
            for (std::size_t g = 0; g < 4; ++g)
                withNode.Add(weighted[g], geometry.N[g][i]);
            PutBlock(&out.Kau(row, 2 * static_cast<int>(i)), 8, withNode, D);
        }
        for (std::size_t n = m; n < kModes; ++n) {
            PairProducts<Real> withMode;
            for (std::size_t g = 0; g < 4; ++g)
                withMode.Add(weighted[g], modes[g][n]);
            PutBlock(&out.Kaa(row, 2 * static_cast<int>(n)), 4, withMode, D);
        }
    }
    MirrorUpper(out.Kaa);
    return out;
}

// Eliminates the amplitudes a of the modes, which carry no load: Kau u + Kaa a = 0.
template <Number Real>
void CondenseModes(MembraneElement<Real>& e, ModeStiffness<Real>& modes)
{
    e.amplitudes = modes.Kau;
    SolveByCroutLu(modes.Kaa, e.amplitudes);
    // K := K - Kau^t Kaa^-1 Kau, on and above the diagonal. Four amplitudes are eliminated; the stiffness can only
    // fall.
    for (int i = 0; i < 8; ++i)
        for (int j = i; j < 8; ++j) {
            Real term = e.stiffness(i, j);
            for (int a = 0; a < 4; ++a)
                term -= modes.Kau(a, i) * e.amplitudes(a, j);
            e.stiffness(i, j) = term;
        }
    MirrorUpper(e.stiffness);
    for (int a = 0; a < 4; ++a)
        for (int j = 0; j < 8; ++j)
            e.amplitudes(a, j) = -e.amplitudes(a, j);
}

// The disk as a whole moved by (a, b) and turned by 1 about its first corner, a and b its own size.
template <Number Real>
[[maybe_unused]] std::array<Real, 8> MotionInPlane(const PlaneQuad<Real>& q)
{
    std::array<Real, 8> u;
    for (std::size_t i = 0; i < 4; ++i) {
        u[2 * i] = q.x[2] - q.x[0] - (q.y[i] - q.y[0]);
        u[2 * i + 1] = q.y[2] - q.y[0] + (q.x[i] - q.x[0]);
    }
    return u;
}

}  // namespace

template <Number Real>
MembraneElement<Real> FormMembrane(const GaussGeometry<Real>& geometry, const PlaneRigidity<Real>& rigidity,
                                   bool isIncompatible)
{
    MembraneElement<Real> e{.corners = geometry.corners,
                            .rigidity = rigidity,
                            .stiffness = PlainStiffness(geometry, rigidity),
                            .amplitudes = {},
                            .meanGradients = {}};
    if (!isIncompatible)
        return e;

    std::array<ModeGradients<Real>, 4> modes;
    for (std::size_t g = 0; g < 4; ++g)
        modes[g] = ModeGradientsAt(geometry.J[g], GaussPoints2x2<Real>()[g].at);
    e.meanGradients = Mean(geometry, modes);
    for (ModeGradients<Real>& atPoint : modes)
        for (std::size_t m = 0; m < kModes; ++m)
            atPoint[m] = {atPoint[m].x - e.meanGradients[m].x, atPoint[m].y - e.meanGradients[m].y};
    ModeStiffness<Real> stiffness = ModeStiffnessOf(geometry, modes, rigidity);
    CondenseModes(e, stiffness);
    assert(IsSymmetric(e.stiffness));
    assert(StrainsNothing(e.stiffness, MotionInPlane(geometry.corners)) && "a rigid motion does no work");
    return e;
}

template <Number Real>
std::array<Real, 3> MembraneForces(const MembraneElement<Real>& element, const std::array<Real, 8>& u,
                                   const BilinearPoint<Real>& at)
{
    const Jacobian<Real> J = JacobianAt(element.corners, at);
    const std::array<Gradient<Real>, 4> N = BilinearGradients(J, at);
    const ModeGradients<Real> modes = ModeGradientsAt(J, at.at);
    std::array<Real, 3> strain{};
    const auto Add = [&strain](const Gradient<Real>& f, const Real& ux, const Real& uy) {
        strain[0] += f.x * ux;
        strain[1] += f.y * uy;
        strain[2] += f.y * ux + f.x * uy;
    };
    for (std::size_t i = 0; i < 4; ++i)
        Add(N[i], u[2 * i], u[2 * i + 1]);
    for (std::size_t m = 0; m < kModes; ++m) {
        std::array<Real, 2> a{};
        for (std::size_t d = 0; d < 2; ++d)
            for (std::size_t j = 0; j < 8; ++j)
                a[d] += element.amplitudes(static_cast<int>(2 * m + d), static_cast<int>(j)) * u[j];
        // The same corrected gradients as in the stiffness, else the forces would not be those that the nodal forces
        // balance.
        Add({modes[m].x - element.meanGradients[m].x, modes[m].y - element.meanGradients[m].y}, a[0], a[1]);
    }
    const PlaneRigidity<Real>& D = element.rigidity;
    return {D.direct * strain[0] + D.coupling * strain[1], D.coupling * strain[0] + D.direct * strain[1],
            D.shear * strain[2]};
}

template <Number Real>
std::array<Real, 8> MembraneThermalForces(const PlaneQuad<Real>& corners, const PlaneRigidity<Real>& rigidity,
                                          const Real& e)
{
    const Real force = RestrainedMembraneForce(rigidity, e);
    std::array<Real, 8> f{};
    for (const BilinearPoint<Real>& at : GaussPoints2x2<Real>()) {
        const Jacobian<Real> J = JacobianAt(corners, at);
        const std::array<Gradient<Real>, 4> N = BilinearGradients(J, at);
        for (std::size_t i = 0; i < 4; ++i) {
            f[2 * i] += J.det * N[i].x * force;
            f[2 * i + 1] += J.det * N[i].y * force;
        }
    }
    assert(IsBalanced(f, 2) && "a free element keeps its place");
    return f;
}

template MembraneElement<double> FormMembrane<double>(const GaussGeometry<double>&, const PlaneRigidity<double>&, bool);
template MembraneElement<double128> FormMembrane<double128>(const GaussGeometry<double128>&,
                                                            const PlaneRigidity<double128>&, bool);
template std::array<double, 3> MembraneForces<double>(const MembraneElement<double>&, const std::array<double, 8>&,
                                                      const BilinearPoint<double>&);
template std::array<double128, 3> MembraneForces<double128>(const MembraneElement<double128>&,
                                                            const std::array<double128, 8>&,
                                                            const BilinearPoint<double128>&);
template std::array<double, 8> MembraneThermalForces<double>(const PlaneQuad<double>&, const PlaneRigidity<double>&,
                                                             const double&);
template std::array<double128, 8> MembraneThermalForces<double128>(const PlaneQuad<double128>&,
                                                                   const PlaneRigidity<double128>&, const double128&);

}  // namespace qvx
