#include "elements/shell_stiffness.h"

#include "tools/geometry.h"

#include <cmath>

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

// block = c^t [[A, 0], [0, n]] c for a 2 x 2 part A in the plane and a term n along the normal.
template <Number Real>
void PutTurnedDiagonal(Matrix24<Real>& k, int row, int column, const ShellFrame<Real>& frame, const Real (&A)[2][2],
                       const Real& n)
{
    const auto& [ex, ey, ez] = frame.c;
    for (std::size_t j = 0; j < 3; ++j) {
        const Real x = A[0][0] * ex[j] + A[0][1] * ey[j];
        const Real y = A[1][0] * ex[j] + A[1][1] * ey[j];
        const Real z = n * ez[j];
        for (std::size_t i = 0; i < 3; ++i)
            k(row + static_cast<int>(i), column + static_cast<int>(j)) = ex[i] * x + ey[i] * y + ez[i] * z;
    }
}

// Translations of node i against rotations of node j: only uz meets rx and ry.
template <Number Real>
void PutTurnedCoupling(Matrix24<Real>& k, int row, int column, const ShellFrame<Real>& frame, const Real& uzRx,
                       const Real& uzRy, bool isTransposed)
{
    const auto& [ex, ey, ez] = frame.c;
    for (std::size_t j = 0; j < 3; ++j) {
        const Real inPlane = uzRx * ex[j] + uzRy * ey[j];
        for (std::size_t i = 0; i < 3; ++i) {
            const int normal = static_cast<int>(i);
            const int turned = static_cast<int>(j);
            (isTransposed ? k(row + turned, column + normal) : k(row + normal, column + turned)) = ez[i] * inPlane;
        }
    }
}

// The 6 x 6 block of nodes i and j: c^t k c block by block, with the zeros of the local matrix left out.
template <Number Real>
void PutNodePair(Matrix24<Real>& k, const ShellElement<Real>& e, int i, int j, const Real& drilling)
{
    const FixedMatrix<Real, 8, 8>& m = e.membrane.stiffness;
    const Matrix12<Real>& p = e.plate;
    const int mi = 2 * i, mj = 2 * j, pi = 3 * i, pj = 3 * j, row = 6 * i, column = 6 * j;
    const Real inPlane[2][2] = {{m(mi, mj), m(mi, mj + 1)}, {m(mi + 1, mj), m(mi + 1, mj + 1)}};
    const Real rotation[2][2] = {{p(pi + 1, pj + 1), p(pi + 1, pj + 2)}, {p(pi + 2, pj + 1), p(pi + 2, pj + 2)}};
    PutTurnedDiagonal(k, row, column, e.frame, inPlane, p(pi, pj));
    PutTurnedDiagonal(k, row + 3, column + 3, e.frame, rotation, i == j ? drilling : Real(0));
    PutTurnedCoupling(k, row, column + 3, e.frame, p(pi, pj + 1), p(pi, pj + 2), false);
    PutTurnedCoupling(k, row + 3, column, e.frame, p(pi + 1, pj), p(pi + 2, pj), true);
}

}  // namespace

template <Number Real>
ShellElement<Real> FormShell(const QuadCorners& corners, const ShellRigidity<Real>& rigidity,
                             const ShellOptions& options)
{
    const double angle = QuadReferenceAngle(corners, options.isThinPlateWanted);
    const ShellFrame<Real> frame = ShellFrameOf<Real>(corners, QuadLocalAxes(corners, angle));
    const PlaneQuad<Real>& q = frame.corners;
    const bool isThin = options.isThinPlateWanted && is_rectangle(corners[0], corners[1], corners[2], corners[3]);
    const Real a = SideLength(q, 0, 1);
    const Real b = SideLength(q, 0, 3);
    return {.frame = frame,
            .referenceAngle = angle,
            .rigidity = rigidity,
            .shearDirections = options.shearDirections,
            .membrane = FormMembrane(q, rigidity.membrane, options.isIncompatible),
            .plate = isThin ? ThinPlateStiffness(a, b, rigidity.bending)
                            : Mitc4Stiffness(q, rigidity, options.shearDirections),
            .isThinPlate = isThin,
            .a = a,
            .b = b};
}

template <Number Real>
Real DrillingStiffness(const ShellElement<Real>& element, double ozFactor)
{
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
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            PutNodePair(k, element, i, j, drilling);
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
