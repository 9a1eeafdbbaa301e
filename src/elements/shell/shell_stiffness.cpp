#include "elements/shell/shell_stiffness.h"

#include <cassert>
#include <cmath>

#include "elements/invariants.h"

namespace qvx {

namespace {

using std::sqrt;

template <Number Real>
using Vector3 = std::array<Real, 3>;

template <Number Real>
Real SideLength(const PlaneQuad<Real>& q, std::size_t i, std::size_t j)
{
    const Real dx = q.x[j] - q.x[i];
    const Real dy = q.y[j] - q.y[i];
    return sqrt(dx * dx + dy * dy);
}

template <Number Real>
using Block9 = std::array<Real, 9>;  // 3 x 3, row-major

// e_a (x) e_b of two local axes: where the term (a, b) of a local 3 x 3 block goes in global axes.
template <Number Real>
Block9<Real> Dyad(const Matrix3<Real>& c, int a, int b)
{
    Block9<Real> dyad;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            dyad[static_cast<std::size_t>(3 * i + j)] = c(a, i) * c(b, j);
    return dyad;
}

// c^t k c of local 3 x 3 blocks, made from those terms only that are not zero in a flat shell.
template <Number Real>
class BlockRotation
{
public:
    explicit BlockRotation(const Matrix3<Real>& c)
        : xx_(Dyad(c, 0, 0)), xy_(Dyad(c, 0, 1)), yx_(Dyad(c, 1, 0)), yy_(Dyad(c, 1, 1)), zx_(Dyad(c, 2, 0)),
          zy_(Dyad(c, 2, 1)), zz_(Dyad(c, 2, 2))
    {
    }

    // Translations among themselves, or rotations: four terms in the plane and one along the normal.
    Block9<Real> Diagonal(const Real (&A)[4], const Real& n) const
    {
        Block9<Real> block;
        for (std::size_t i = 0; i < 9; ++i)
            block[i] = A[0] * xx_[i] + A[1] * xy_[i] + A[2] * yx_[i] + A[3] * yy_[i] + n * zz_[i];
        return block;
    }

    // Translations against rotations: only uz meets rx and ry.
    Block9<Real> Coupling(const Real& uzRx, const Real& uzRy) const
    {
        Block9<Real> block;
        for (std::size_t i = 0; i < 9; ++i)
            block[i] = uzRx * zx_[i] + uzRy * zy_[i];
        return block;
    }

private:
    Block9<Real> xx_, xy_, yx_, yy_, zx_, zy_, zz_;
};

// Writes a block and its mirror image.
template <Number Real>
void PutMirrored(Matrix24<Real>& k, int row, int column, const Block9<Real>& block)
{
    Real* upper = &k(row, column);
    Real* lower = &k(column, row);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            upper[24 * i + j] = block[static_cast<std::size_t>(3 * i + j)];
            lower[24 * j + i] = block[static_cast<std::size_t>(3 * i + j)];
        }
}

// The 6 x 6 block of nodes i <= j.
template <Number Real>
void PutNodePair(Matrix24<Real>& k, const BlockRotation<Real>& turn, const ShellElement<Real>& e, int i, int j,
                 const Real& drilling)
{
    // Rows of 8 and of 12 terms: m[8] and p[12] are the next row, p[24] the one after.
    const Real* m = &e.membrane.stiffness(2 * i, 2 * j);
    const Real* p = &e.plate(3 * i, 3 * j);
    const int row = 6 * i;
    const int column = 6 * j;
    PutMirrored(k, row, column, turn.Diagonal({m[0], m[1], m[8], m[9]}, p[0]));
    PutMirrored(k, row + 3, column + 3, turn.Diagonal({p[13], p[14], p[25], p[26]}, i == j ? drilling : Real(0)));
    PutMirrored(k, row, column + 3, turn.Coupling(p[1], p[2]));
    if (i != j)
        PutMirrored(k, column, row + 3, turn.Coupling(p[12], p[24]));
}

// All four nodes moved by 1 along global X.
template <Number Real>
[[maybe_unused]] std::array<Real, 24> AllAlongX()
{
    std::array<Real, 24> u{};
    for (std::size_t node = 0; node < 4; ++node)
        u[6 * node] = Real(1);
    return u;
}

}  // namespace

template <Number Real>
ShellElement<Real> FormShell(const QuadCorners& corners, const ShellRigidity<Real>& rigidity,
                             const ShellOptions& options)
{
    const QuadPlacement place = PlaceQuad(corners, options.isThinPlateWanted);
    const ShellFrame<Real> frame = ShellFrameOf<Real>(corners, place.axes);
    const GaussGeometry<Real> geometry(frame.corners);
    const Real a = place.isThinPlate ? SideLength(frame.corners, 0, 1) : Real(0);
    const Real b = place.isThinPlate ? SideLength(frame.corners, 0, 3) : Real(0);
    return {.frame = frame,
            .referenceAngle = place.referenceAngle,
            .rigidity = rigidity,
            .shearDirections = options.shearDirections,
            .membrane = FormMembrane(geometry, rigidity.membrane, options.isIncompatible),
            .plate = place.isThinPlate ? ThinPlateStiffness(a, b, rigidity.bending)
                                       : Mitc4Stiffness(geometry, rigidity, options.shearDirections),
            .isThinPlate = place.isThinPlate,
            .a = a,
            .b = b};
}

template <Number Real>
Real DrillingStiffness(const ShellElement<Real>& element, double ozFactor)
{
    // Of forces per length and moments alike, whatever their units: in inch and pound the factor keeps the spring below
    // all of them, and a spring that is too weak is told by its pivot where one too stiff would bend the results.
    Real smallest = element.plate(0, 0);
    for (int i = 1; i < 12; ++i)
        if (element.plate(i, i) < smallest)
            smallest = element.plate(i, i);
    for (int i = 0; i < 8; ++i)
        if (element.membrane.stiffness(i, i) < smallest)
            smallest = element.membrane.stiffness(i, i);
    return smallest * ozFactor;
}

template <Number Real>
Matrix24<Real> ShellStiffness(const ShellElement<Real>& element, double ozFactor)
{
    const Real drilling = DrillingStiffness(element, ozFactor);
    Matrix24<Real> k;
    const BlockRotation<Real> turn(element.frame.c);
    for (int i = 0; i < 4; ++i)
        for (int j = i; j < 4; ++j)
            PutNodePair(k, turn, element, i, j, drilling);
    assert(IsSymmetric(k));
    assert(StrainsNothing(k, AllAlongX<Real>()) && "a translation does no work");
    return k;
}

template ShellElement<double> FormShell<double>(const QuadCorners&, const ShellRigidity<double>&, const ShellOptions&);
template ShellElement<double128> FormShell<double128>(const QuadCorners&, const ShellRigidity<double128>&,
                                                      const ShellOptions&);
template double DrillingStiffness<double>(const ShellElement<double>&, double);
template double128 DrillingStiffness<double128>(const ShellElement<double128>&, double);
template Matrix24<double> ShellStiffness<double>(const ShellElement<double>&, double);
template Matrix24<double128> ShellStiffness<double128>(const ShellElement<double128>&, double);

}  // namespace qvx
