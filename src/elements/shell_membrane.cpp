#include "elements/shell_membrane.h"

#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr int kModes = 2;                       // 1 - r^2, 1 - s^2
constexpr std::size_t kFunctions = 4 + kModes;  // bilinear functions first, modes last

template <Number Real>
std::array<Gradient<Real>, kModes> ModeGradients(const Jacobian<Real>& J, const NaturalPoint<Real>& at)
{
    return {GradientOf(J, -2 * at.r, Real(0)), GradientOf(J, Real(0), -2 * at.s)};
}

template <Number Real>
std::array<Gradient<Real>, kModes> MeanModeGradients(const std::array<Jacobian<Real>, 4>& J)
{
    std::array<Gradient<Real>, kModes> mean{};
    Real area(0);
    for (std::size_t g = 0; g < J.size(); ++g) {
        const std::array<Gradient<Real>, kModes> at = ModeGradients(J[g], GaussPoints2x2<Real>()[g]);
        for (std::size_t m = 0; m < kModes; ++m) {
            mean[m].x += J[g].det * at[m].x;
            mean[m].y += J[g].det * at[m].y;
        }
        area += J[g].det;
    }
    for (Gradient<Real>& m : mean) {
        m.x /= area;
        m.y /= area;
    }
    return mean;
}

// Integrals of f,x g,x, f,x g,y and f,y g,y over the element for each pair of functions; of the symmetric ones only
// the pairs i <= j. Every term of a plane stress matrix is a combination of these.
template <Number Real>
struct GradientProducts
{
    std::array<std::array<Real, kFunctions>, kFunctions> xx{};
    std::array<std::array<Real, kFunctions>, kFunctions> xy{};
    std::array<std::array<Real, kFunctions>, kFunctions> yy{};
};

template <Number Real>
void AddProducts(GradientProducts<Real>& sum, const std::array<Gradient<Real>, kFunctions>& f, std::size_t count,
                 const Real& weight)
{
    for (std::size_t i = 0; i < count; ++i) {
        const Real fx = weight * f[i].x;
        const Real fy = weight * f[i].y;
        for (std::size_t j = 0; j < count; ++j)
            sum.xy[i][j] += fx * f[j].y;
        for (std::size_t j = i; j < count; ++j) {
            sum.xx[i][j] += fx * f[j].x;
            sum.yy[i][j] += fy * f[j].y;
        }
    }
}

// B_i^t D B_j of two functions i <= j, as the 2 x 2 block of their displacements ux, uy.
template <Number Real>
std::array<std::array<Real, 2>, 2> Block(const GradientProducts<Real>& p, const PlaneRigidity<Real>& D, std::size_t i,
                                         std::size_t j)
{
    return {{{D.direct * p.xx[i][j] + D.shear * p.yy[i][j], D.coupling * p.xy[i][j] + D.shear * p.xy[j][i]},
             {D.coupling * p.xy[j][i] + D.shear * p.xy[i][j], D.direct * p.yy[i][j] + D.shear * p.xx[i][j]}}};
}

template <Number Real, int Rows, int Columns>
void Put(FixedMatrix<Real, Rows, Columns>& k, std::size_t i, std::size_t j,
         const std::array<std::array<Real, 2>, 2>& block, bool isTransposed)
{
    const int row = 2 * static_cast<int>(i);
    const int column = 2 * static_cast<int>(j);
    for (int a = 0; a < 2; ++a)
        for (int b = 0; b < 2; ++b)
            k(row + a, column + b) = isTransposed ? block[static_cast<std::size_t>(b)][static_cast<std::size_t>(a)]
                                                  : block[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)];
}

// Eliminates the amplitudes a of the modes, which carry no load: Kau u + Kaa a = 0.
template <Number Real>
void CondenseModes(MembraneElement<Real>& e, const GradientProducts<Real>& p)
{
    FixedMatrix<Real, 4, 4> Kaa;
    FixedMatrix<Real, 4, 8> Kau;
    for (std::size_t m = 0; m < kModes; ++m) {
        for (std::size_t i = 0; i < 4; ++i)
            Put(Kau, m, i, Block(p, e.rigidity, i, 4 + m), true);
        for (std::size_t n = m; n < kModes; ++n) {
            Put(Kaa, m, n, Block(p, e.rigidity, 4 + m, 4 + n), false);
            Put(Kaa, n, m, Block(p, e.rigidity, 4 + m, 4 + n), true);
        }
    }
    e.amplitudes = Kau;
    SolveByCroutLu(Kaa, e.amplitudes);
    for (int i = 0; i < 8; ++i)
        for (int j = i; j < 8; ++j) {
            for (int a = 0; a < 4; ++a)
                e.stiffness(i, j) -= Kau(a, i) * e.amplitudes(a, j);
            e.stiffness(j, i) = e.stiffness(i, j);
        }
    for (int a = 0; a < 4; ++a)
        for (int j = 0; j < 8; ++j)
            e.amplitudes(a, j) = -e.amplitudes(a, j);
}

}  // namespace

template <Number Real>
MembraneElement<Real> FormMembrane(const PlaneQuad<Real>& corners, const PlaneRigidity<Real>& rigidity,
                                   bool isIncompatible)
{
    MembraneElement<Real> e{
        .corners = corners, .rigidity = rigidity, .stiffness = {}, .amplitudes = {}, .meanGradients = {}};
    const std::array<NaturalPoint<Real>, 4>& points = GaussPoints2x2<Real>();
    const std::array<Jacobian<Real>, 4> J = {JacobianAt(corners, points[0]), JacobianAt(corners, points[1]),
                                             JacobianAt(corners, points[2]), JacobianAt(corners, points[3])};
    if (isIncompatible)
        e.meanGradients = MeanModeGradients(J);

    GradientProducts<Real> products;
    for (std::size_t g = 0; g < points.size(); ++g) {
        const std::array<Gradient<Real>, 4> N = BilinearGradients(J[g], points[g]);
        std::array<Gradient<Real>, kFunctions> f = {N[0], N[1], N[2], N[3]};
        if (isIncompatible) {
            const std::array<Gradient<Real>, kModes> modes = ModeGradients(J[g], points[g]);
            for (std::size_t m = 0; m < kModes; ++m)
                f[4 + m] = {modes[m].x - e.meanGradients[m].x, modes[m].y - e.meanGradients[m].y};
        }
        AddProducts(products, f, isIncompatible ? kFunctions : 4, J[g].det);
    }

    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = i; j < 4; ++j) {
            Put(e.stiffness, i, j, Block(products, rigidity, i, j), false);
            Put(e.stiffness, j, i, Block(products, rigidity, i, j), true);
        }
    if (isIncompatible)
        CondenseModes(e, products);
    return e;
}

template <Number Real>
std::array<Real, 3> MembraneForces(const MembraneElement<Real>& element, const std::array<Real, 8>& u,
                                   const NaturalPoint<Real>& at)
{
    const Jacobian<Real> J = JacobianAt(element.corners, at);
    const std::array<Gradient<Real>, 4> N = BilinearGradients(J, at);
    const std::array<Gradient<Real>, kModes> modes = ModeGradients(J, at);
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
    for (const NaturalPoint<Real>& at : GaussPoints2x2<Real>()) {
        const Jacobian<Real> J = JacobianAt(corners, at);
        const std::array<Gradient<Real>, 4> N = BilinearGradients(J, at);
        for (std::size_t i = 0; i < 4; ++i) {
            f[2 * i] += J.det * N[i].x * force;
            f[2 * i + 1] += J.det * N[i].y * force;
        }
    }
    return f;
}

template MembraneElement<double> FormMembrane<double>(const PlaneQuad<double>&, const PlaneRigidity<double>&, bool);
template MembraneElement<double128> FormMembrane<double128>(const PlaneQuad<double128>&,
                                                            const PlaneRigidity<double128>&, bool);
template std::array<double, 3> MembraneForces<double>(const MembraneElement<double>&, const std::array<double, 8>&,
                                                      const NaturalPoint<double>&);
template std::array<double128, 3> MembraneForces<double128>(const MembraneElement<double128>&,
                                                            const std::array<double128, 8>&,
                                                            const NaturalPoint<double128>&);
template std::array<double, 8> MembraneThermalForces<double>(const PlaneQuad<double>&, const PlaneRigidity<double>&,
                                                             const double&);
template std::array<double128, 8> MembraneThermalForces<double128>(const PlaneQuad<double128>&,
                                                                   const PlaneRigidity<double128>&, const double128&);

}  // namespace qvx
