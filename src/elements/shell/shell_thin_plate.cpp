#include "elements/shell/shell_thin_plate.h"

#include <cassert>

#include "elements/invariants.h"
#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr int kTerms = 12;
constexpr std::array<int, kTerms> kPowerOfX = {0, 1, 0, 2, 1, 0, 3, 2, 1, 0, 3, 1};
constexpr std::array<int, kTerms> kPowerOfY = {0, 0, 1, 0, 1, 2, 0, 1, 2, 3, 1, 3};

template <Number Real>
Real Power(const Real& x, int n)
{
    Real product(1);
    for (int i = 0; i < n; ++i)
        product *= x;
    return product;
}

// x^p y^q differentiated dx times in x and dy times in y.
template <Number Real>
Real Derivative(int term, const Real& x, const Real& y, int dx, int dy)
{
    const int p = kPowerOfX[static_cast<std::size_t>(term)];
    const int q = kPowerOfY[static_cast<std::size_t>(term)];
    // Differentiated more often than its power: gone.
    if (p < dx || q < dy)
        return Real(0);
    int factor = 1;
    for (int i = 0; i < dx; ++i)
        factor *= p - i;
    for (int i = 0; i < dy; ++i)
        factor *= q - i;
    return factor * Power(x, p - dx) * Power(y, q - dy);
}

// Coefficients of the polynomial on the unit square for unit nodal values, one column each.
template <Number Real>
FixedMatrix<Real, kTerms, kTerms> UnitSquareCoefficients()
{
    constexpr std::array<int, 4> kX = {0, 1, 1, 0};
    constexpr std::array<int, 4> kY = {0, 0, 1, 1};
    FixedMatrix<Real, kTerms, kTerms> values;
    FixedMatrix<Real, kTerms, kTerms> coefficients;
    for (int node = 0; node < 4; ++node) {
        const Real x = kX[static_cast<std::size_t>(node)];
        const Real y = kY[static_cast<std::size_t>(node)];
        for (int term = 0; term < kTerms; ++term) {
            values(3 * node, term) = Derivative(term, x, y, 0, 0);
            values(3 * node + 1, term) = Derivative(term, x, y, 0, 1);
            values(3 * node + 2, term) = -Derivative(term, x, y, 1, 0);
        }
    }
    for (int i = 0; i < kTerms; ++i)
        coefficients(i, i) = Real(1);
    SolveByCroutLu(values, coefficients);
    return coefficients;
}

// The same on the rectangle a x b: with x = a X the term X^p Y^q has the coefficient 1 / (a^p b^q), and thx = w,y is
// w,Y / b. The inverse on the unit square is well scaled whatever the unit of length.
template <Number Real>
FixedMatrix<Real, kTerms, kTerms> Coefficients(const Real& a, const Real& b)
{
    static const FixedMatrix<Real, kTerms, kTerms> unit = UnitSquareCoefficients<Real>();
    FixedMatrix<Real, kTerms, kTerms> scaled;
    const std::array<Real, 3> nodal = {Real(1), b, a};
    for (int term = 0; term < kTerms; ++term) {
        const std::size_t i = static_cast<std::size_t>(term);
        const Real scale = 1 / (Power(a, kPowerOfX[i]) * Power(b, kPowerOfY[i]));
        for (int j = 0; j < kTerms; ++j)
            scaled(term, j) = scale * unit(term, j) * nodal[static_cast<std::size_t>(j % 3)];
    }
    return scaled;
}

// w,xx, w,yy and 2 w,xy at a point per nodal value.
template <Number Real>
FixedMatrix<Real, 3, kTerms> Curvatures(const FixedMatrix<Real, kTerms, kTerms>& coefficients, const Real& x,
                                        const Real& y)
{
    // 1, x and y are the rigid motions of a plate and have no curvature.
    constexpr int kFirstCurved = 3;
    FixedMatrix<Real, 3, kTerms> curvature;
    for (int term = kFirstCurved; term < kTerms; ++term) {
        const std::array<Real, 3> of = {Derivative(term, x, y, 2, 0), Derivative(term, x, y, 0, 2),
                                        2 * Derivative(term, x, y, 1, 1)};
        for (int row = 0; row < 3; ++row)
            for (int j = 0; j < kTerms; ++j)
                curvature(row, j) += of[static_cast<std::size_t>(row)] * coefficients(term, j);
    }
    return curvature;
}

template <Number Real>
void AddCurvatureEnergy(Matrix12<Real>& k, const FixedMatrix<Real, 3, kTerms>& B, const PlaneRigidity<Real>& D,
                        const Real& weight)
{
    for (int i = 0; i < kTerms; ++i) {
        const Real mxx = weight * (D.direct * B(0, i) + D.coupling * B(1, i));
        const Real myy = weight * (D.coupling * B(0, i) + D.direct * B(1, i));
        const Real mxy = weight * D.shear * B(2, i);
        for (int j = 0; j <= i; ++j)
            k(i, j) += mxx * B(0, j) + myy * B(1, j) + mxy * B(2, j);
    }
}

}  // namespace

template <Number Real>
Matrix12<Real> ThinPlateStiffness(const Real& a, const Real& b, const PlaneRigidity<Real>& bending)
{
    assert(a > Real(0) && b > Real(0) && "a rectangle");
    const FixedMatrix<Real, kTerms, kTerms> coefficients = Coefficients(a, b);
    Matrix12<Real> k;
    for (const BilinearPoint<Real>& point : GaussPoints2x2<Real>())
        AddCurvatureEnergy(k, Curvatures(coefficients, a * (1 + point.at.r) * 0.5, b * (1 + point.at.s) * 0.5), bending,
                           a * b * 0.25);
    for (int i = 0; i < kTerms; ++i)
        for (int j = 0; j < i; ++j)
            k(j, i) = k(i, j);
    [[maybe_unused]] const Real z(0);
    assert(StrainsNothing(k, std::array<Real, 12>{1, z, z, 1, z, z, 1, z, z, 1, z, z}) && "a lift does no work");
    assert(StrainsNothing(k, std::array<Real, 12>{z, z, -1, a, z, -1, a, z, -1, z, z, -1}) && "nor a turn about y");
    return k;
}

template <Number Real>
PlateForces<Real> ThinPlateForces(const Real& a, const Real& b, const PlaneRigidity<Real>& D,
                                  const std::array<Real, 12>& u, const Real& x, const Real& y)
{
    const FixedMatrix<Real, kTerms, kTerms> coefficients = Coefficients(a, b);
    Real xx(0), yy(0), xy(0);  // w,xx w,yy w,xy
    Real xxx(0), xxy(0), xyy(0), yyy(0);
    for (int term = 3; term < kTerms; ++term) {
        Real c(0);
        for (int j = 0; j < kTerms; ++j)
            c += coefficients(term, j) * u[static_cast<std::size_t>(j)];
        xx += c * Derivative(term, x, y, 2, 0);
        yy += c * Derivative(term, x, y, 0, 2);
        xy += c * Derivative(term, x, y, 1, 1);
        xxx += c * Derivative(term, x, y, 3, 0);
        xxy += c * Derivative(term, x, y, 2, 1);
        xyy += c * Derivative(term, x, y, 1, 2);
        yyy += c * Derivative(term, x, y, 0, 3);
    }
    // Vxx = Mxx,x + Mxy,y = D (w,xxx + w,xyy) of an isotropic plate, written by the rigidities so that factors on them
    // count.
    const Real mixed = D.coupling + 2 * D.shear;
    return {.M = {D.direct * xx + D.coupling * yy, D.coupling * xx + D.direct * yy, 2 * D.shear * xy},
            .V = {D.direct * xxx + mixed * xyy, D.direct * yyy + mixed * xxy}};
}

template Matrix12<double> ThinPlateStiffness<double>(const double&, const double&, const PlaneRigidity<double>&);
template Matrix12<double128> ThinPlateStiffness<double128>(const double128&, const double128&,
                                                           const PlaneRigidity<double128>&);
template PlateForces<double> ThinPlateForces<double>(const double&, const double&, const PlaneRigidity<double>&,
                                                     const std::array<double, 12>&, const double&, const double&);
template PlateForces<double128> ThinPlateForces<double128>(const double128&, const double128&,
                                                           const PlaneRigidity<double128>&,
                                                           const std::array<double128, 12>&, const double128&,
                                                           const double128&);

}  // namespace qvx
