#include "elements/member/member_stiffness.h"

#include <cassert>

#include "elements/invariants.h"

namespace qvx {

namespace {

template <Number Real>
BendingTerms<Real> Sum(const BendingTerms<Real>& a, const BendingTerms<Real>& b)
{
    return {.force = a.force + b.force,
            .couple = a.couple + b.couple,
            .sameEnd = a.sameEnd + b.sameEnd,
            .otherEnd = a.otherEnd + b.otherEnd};
}

template <Number Real>
FixedMatrix<Real, 2, 2> Spring(const Real& stiffness)
{
    FixedMatrix<Real, 2, 2> k;
    // A bar along or about its axis: what pulls one end pushes the other, so that a rigid motion strains nothing.
    k(0, 0) = k(1, 1) = stiffness;
    k(0, 1) = k(1, 0) = -stiffness;
    return k;
}

// Equilibrium of the member as a whole gives the rows of the end from those of the start.
template <Number Real>
FixedMatrix<Real, 4, 4> Bending(const BendingTerms<Real>& t)
{
    // clang-format off
    const Real block[4][4] = {
        {  t.force,   t.couple,   -t.force,   t.couple   },
        {  t.couple,  t.sameEnd,  -t.couple,  t.otherEnd },
        { -t.force,  -t.couple,    t.force,  -t.couple   },
        {  t.couple,  t.otherEnd, -t.couple,  t.sameEnd  },
    };
    // clang-format on
    FixedMatrix<Real, 4, 4> k;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            k(i, j) = block[i][j];
    assert(IsSymmetric(k));
    return k;
}

/// Local axes of a member in global components, multiplied with each other: x x^t, y y^t, z z^t, y z^t.
template <Number Real>
struct AxisProducts
{
    explicit AxisProducts(const Matrix3<Real>& c)
    {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                xx(i, j) = c(0, i) * c(0, j);
                yy(i, j) = c(1, i) * c(1, j);
                zz(i, j) = c(2, i) * c(2, j);
                yz(i, j) = c(1, i) * c(2, j);
            }
    }
    Matrix3<Real> xx;
    Matrix3<Real> yy;
    Matrix3<Real> zz;
    Matrix3<Real> yz;
};

// Writes a 3 x 3 block that couples translations with translations or rotations with rotations: a stiffness along or
// about each local axis.
template <Number Real>
void SetAlongAxes(Matrix12<Real>& k, int row, int column, const AxisProducts<Real>& axes, const Real& x, const Real& y,
                  const Real& z)
{
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(row + i, column + j) = x * axes.xx(i, j) + y * axes.yy(i, j) + z * axes.zz(i, j);
}

// Writes the block of translations against rotations: forces along y go with rotations about z, and along z with the
// opposite of those about y.
template <Number Real>
void SetCouples(Matrix12<Real>& k, int row, int column, const AxisProducts<Real>& axes, const Real& inXy,
                const Real& inXz)
{
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(row + i, column + j) = inXy * axes.yz(i, j) - inXz * axes.yz(j, i);
}

}  // namespace

template <Number Real>
MemberTerms<Real> operator+(const MemberTerms<Real>& a, const MemberTerms<Real>& b)
{
    return {.axial = a.axial + b.axial,
            .torsion = a.torsion + b.torsion,
            .inXy = Sum(a.inXy, b.inXy),
            .inXz = Sum(a.inXz, b.inXz)};
}

template <Number Real>
BendingTerms<Real> MemberBendingTerms(const Real& EI, const Real& GAs, const Real& L)
{
    assert(!(EI < Real(0)) && "a member resists bending");
    const Real phi = GAs > Real(0) ? 12 * EI / (GAs * L * L) : Real(0);  // shear over bending flexibility
    const Real b = EI / L / (1 + phi);
    return {.force = 12 * b / (L * L), .couple = 6 * b / L, .sameEnd = (4 + phi) * b, .otherEnd = (2 - phi) * b};
}

template <Number Real>
MemberTerms<Real> ElasticTerms(const MemberProperties<Real>& m)
{
    assert(m.L > Real(0));
    return {.axial = m.EA / m.L,
            .torsion = m.GJ / m.L,
            .inXy = MemberBendingTerms(m.EIz, m.GAy, m.L),
            .inXz = MemberBendingTerms(m.EIy, m.GAz, m.L)};
}

template <Number Real>
MemberTerms<Real> GeometricTerms(const Real& N, const Real& L)
{
    assert(L > Real(0));
    // Quotients are formed in Real, so that double128 has 6/5 and 2/15 to all its digits.
    const BendingTerms<Real> bending = {
        .force = 6 * N / (5 * L), .couple = N / 10, .sameEnd = 2 * N * L / 15, .otherEnd = -N * L / 30};
    // A bar under axial force N resists relative motion of its ends in all three directions with N / L. Many texts
    // drop the axial one as small beside E A / L; we keep it, as the Green strain of a bar has it
    // (Crisfield, Non-linear Finite Element Analysis of Solids and Structures, vol. 1, 1991, ch. 3).
    // Test: MemberStiffness.GeometricStiffnessActsAlongTheMemberToo.
    return {.axial = N / L, .torsion = Real(0), .inXy = bending, .inXz = bending};
}

template <Number Real>
MemberParts<Real> PartsOf(const MemberTerms<Real>& terms)
{
    return {.axial = Spring(terms.axial),
            .torsion = Spring(terms.torsion),
            .inXy = Bending(terms.inXy),
            .inXz = Bending(terms.inXz)};
}

template <Number Real>
Matrix12<Real> LocalStiffness(const MemberParts<Real>& parts)
{
    constexpr int kAxial[2] = {kUx1, kUx2};
    constexpr int kTorsion[2] = {kRx1, kRx2};
    constexpr int kXy[4] = {kUy1, kRz1, kUy2, kRz2};
    constexpr int kXz[4] = {kUz1, kRy1, kUz2, kRy2};
    Matrix12<Real> k;
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) {
            k(kAxial[i], kAxial[j]) = parts.axial(i, j);
            k(kTorsion[i], kTorsion[j]) = parts.torsion(i, j);
        }
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            const bool bCouple = i % 2 != j % 2;  // a translation with a rotation, and the rotation is -ry
            k(kXy[i], kXy[j]) = parts.inXy(i, j);
            k(kXz[i], kXz[j]) = bCouple ? -parts.inXz(i, j) : parts.inXz(i, j);
        }
    return k;
}

template <Number Real>
Matrix12<Real> GlobalStiffness(const MemberParts<Real>& parts, const Matrix3<Real>& c)
{
    assert(IsRotation(c) && "local axes are orthonormal");
    const AxisProducts<Real> axes(c);
    const auto& xy = parts.inXy;
    const auto& xz = parts.inXz;
    Matrix12<Real> k;
    for (int end1 = 0; end1 < 2; ++end1)
        for (int end2 = 0; end2 < 2; ++end2) {
            // Block (end1, end2) of the four parts: bending in x-y moves along y and turns about z, bending in x-z
            // along z and about y. That is why the rigidities of the two planes change places between translations and
            // rotations.
            const int v1 = 2 * end1;
            const int v2 = 2 * end2;
            const int r1 = v1 + 1;
            const int r2 = v2 + 1;
            const int row = 6 * end1;
            const int column = 6 * end2;
            SetCouples(k, row, column + 3, axes, xy(v1, r2), xz(v1, r2));
            if (end1 > end2)
                continue;
            SetAlongAxes(k, row, column, axes, parts.axial(end1, end2), xy(v1, v2), xz(v1, v2));
            SetAlongAxes(k, row + 3, column + 3, axes, parts.torsion(end1, end2), xz(r1, r2), xy(r1, r2));
        }
    // Rotations of the start against translations of the end: the transpose of what stands below the diagonal.
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(kRx1 + i, kUx2 + j) = k(kUx2 + j, kRx1 + i);
    MirrorUpper(k);
    assert(IsSymmetric(k));
    return k;
}

template MemberTerms<double> operator+(const MemberTerms<double>&, const MemberTerms<double>&);
template MemberTerms<double128> operator+(const MemberTerms<double128>&, const MemberTerms<double128>&);
template BendingTerms<double> MemberBendingTerms(const double&, const double&, const double&);
template BendingTerms<double128> MemberBendingTerms(const double128&, const double128&, const double128&);
template MemberTerms<double> ElasticTerms(const MemberProperties<double>&);
template MemberTerms<double128> ElasticTerms(const MemberProperties<double128>&);
template MemberTerms<double> GeometricTerms(const double&, const double&);
template MemberTerms<double128> GeometricTerms(const double128&, const double128&);
template MemberParts<double> PartsOf(const MemberTerms<double>&);
template MemberParts<double128> PartsOf(const MemberTerms<double128>&);
template Matrix12<double> LocalStiffness(const MemberParts<double>&);
template Matrix12<double128> LocalStiffness(const MemberParts<double128>&);
template Matrix12<double> GlobalStiffness(const MemberParts<double>&, const Matrix3<double>&);
template Matrix12<double128> GlobalStiffness(const MemberParts<double128>&, const Matrix3<double128>&);

}  // namespace qvx
