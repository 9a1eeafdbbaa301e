#include "elements/shell_stiffness.h"

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

// Blocks of global axes made from the few terms of a local 6 x 6 block that are not zero.
template <Number Real>
class NodePairRotation
{
public:
    NodePairRotation(const Matrix3<Real>& c, Matrix24<Real>& k) : c_(c), k_(k) {}

    // c^t [[A, 0], [0, n]] c for a 2 x 2 part A in the plane and a term n along the normal.
    void PutDiagonal(int row, int column, const Real (&A)[2][2], const Real& n)
    {
        for (int j = 0; j < 3; ++j) {
            const Real x = A[0][0] * c_(0, j) + A[0][1] * c_(1, j);
            const Real y = A[1][0] * c_(0, j) + A[1][1] * c_(1, j);
            const Real z = n * c_(2, j);
            for (int i = 0; i < 3; ++i)
                Put(row + i, column + j, c_(0, i) * x + c_(1, i) * y + c_(2, i) * z);
        }
    }

    // Translations against rotations: only uz meets rx and ry.
    void PutCoupling(int translation, int rotation, const Real& uzRx, const Real& uzRy)
    {
        for (int j = 0; j < 3; ++j) {
            const Real inPlane = uzRx * c_(0, j) + uzRy * c_(1, j);
            for (int i = 0; i < 3; ++i)
                Put(translation + i, rotation + j, c_(2, i) * inPlane);
        }
    }

private:
    void Put(int i, int j, const Real& term)
    {
        k_(i, j) = term;
        k_(j, i) = term;
    }

    const Matrix3<Real> c_;  // a copy: it cannot overlap the matrix that is written
    Matrix24<Real>& k_;
};

// The 6 x 6 block of nodes i <= j and its mirror image.
template <Number Real>
void PutNodePair(NodePairRotation<Real>& k, const ShellElement<Real>& e, int i, int j, const Real& drilling)
{
    const FixedMatrix<Real, 8, 8>& m = e.membrane.stiffness;
    const Matrix12<Real>& p = e.plate;
    const int mi = 2 * i, mj = 2 * j, pi = 3 * i, pj = 3 * j, row = 6 * i, column = 6 * j;
    const Real inPlane[2][2] = {{m(mi, mj), m(mi, mj + 1)}, {m(mi + 1, mj), m(mi + 1, mj + 1)}};
    const Real rotation[2][2] = {{p(pi + 1, pj + 1), p(pi + 1, pj + 2)}, {p(pi + 2, pj + 1), p(pi + 2, pj + 2)}};
    k.PutDiagonal(row, column, inPlane, p(pi, pj));
    k.PutDiagonal(row + 3, column + 3, rotation, i == j ? drilling : Real(0));
    k.PutCoupling(row, column + 3, p(pi, pj + 1), p(pi, pj + 2));
    if (i != j)
        k.PutCoupling(column, row + 3, p(pi + 1, pj), p(pi + 2, pj));
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
    NodePairRotation<Real> rotation(element.frame.c, k);
    for (int i = 0; i < 4; ++i)
        for (int j = i; j < 4; ++j)
            PutNodePair(rotation, element, i, j, drilling);
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
