#include "elements/member_stiffness.h"

#include <array>
#include <cassert>

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

// Adds a spring between two equal degrees of freedom of the ends.
template <Number Real>
void AddSpring(Matrix12<Real>& k, int dof1, int dof2, const Real& stiffness)
{
    k(dof1, dof1) += stiffness;
    k(dof2, dof2) += stiffness;
    k(dof1, dof2) -= stiffness;
    k(dof2, dof1) -= stiffness;
}

// Adds the bending block of one plane. dof = translation and rotation at the start, then at the end.
// A positive rotation about local y turns x towards -z, so its couples change sign: sign = -1 there.
template <Number Real>
void AddBending(Matrix12<Real>& k, std::array<MemberDof, 4> dof, const BendingTerms<Real>& t, int sign)
{
    const Real c = Real(sign) * t.couple;
    // clang-format off
    const Real block[4][4] = {
        {  t.force,  c,          -t.force,  c          },
        {  c,        t.sameEnd,  -c,        t.otherEnd },
        { -t.force, -c,           t.force, -c          },
        {  c,        t.otherEnd, -c,        t.sameEnd  },
    };
    // clang-format on
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            k(dof[i], dof[j]) += block[i][j];
}

// sum of w[r] * (axis r) (axis r)^t over the three local axes
template <Number Real>
Matrix3<Real> AlongAxes(const Matrix3<Real>& c, const std::array<Real, 3>& w)
{
    Matrix3<Real> block;
    for (int i = 0; i < 3; ++i)
        for (int j = i; j < 3; ++j)
            block(i, j) = w[0] * c(0, i) * c(0, j) + w[1] * c(1, i) * c(1, j) + w[2] * c(2, i) * c(2, j);
    MirrorUpper(block);
    return block;
}

// Forces in local y and z against rotations about local z and y: inXy y z^t - inXz z y^t.
template <Number Real>
Matrix3<Real> Couples(const Matrix3<Real>& c, const Real& inXy, const Real& inXz)
{
    Matrix3<Real> block;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            block(i, j) = inXy * c(1, i) * c(2, j) - inXz * c(2, i) * c(1, j);
    return block;
}

template <Number Real>
void SetBlocks(Matrix12<Real>& k, int node1, int node2, const Matrix3<Real>& block, const Real& sign)
{
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(node1 + i, node2 + j) = sign * block(i, j);
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
Matrix12<Real> LocalStiffness(const MemberTerms<Real>& terms)
{
    Matrix12<Real> k;
    AddSpring(k, kUx1, kUx2, terms.axial);
    AddSpring(k, kRx1, kRx2, terms.torsion);
    AddBending(k, {kUy1, kRz1, kUy2, kRz2}, terms.inXy, +1);
    AddBending(k, {kUz1, kRy1, kUz2, kRy2}, terms.inXz, -1);
    return k;
}

// With x, y, z the local axes in global components, s over translations, c translation to rotation, r and o rotations
// of one end and of both ends:          s = EA/L x x^t + force y y^t + force z z^t, r and o likewise,
//   |  s    c   -s    c |               c = couple y z^t - couple z y^t.
//   |  c^t  r   -c^t  o |
//   | -s   -c    s   -c |
//   |  c^t  o   -c^t  r |
template <Number Real>
Matrix12<Real> GlobalStiffness(const MemberTerms<Real>& terms, const Matrix3<Real>& cosines)
{
    const BendingTerms<Real>& xy = terms.inXy;
    const BendingTerms<Real>& xz = terms.inXz;
    const Matrix3<Real> s = AlongAxes<Real>(cosines, {terms.axial, xy.force, xz.force});
    const Matrix3<Real> c = Couples(cosines, xy.couple, xz.couple);
    const Matrix3<Real> r = AlongAxes<Real>(cosines, {terms.torsion, xz.sameEnd, xy.sameEnd});
    const Matrix3<Real> o = AlongAxes<Real>(cosines, {-terms.torsion, xz.otherEnd, xy.otherEnd});
    const Real plus(1);
    const Real minus(-1);
    Matrix12<Real> k;
    SetBlocks(k, 0, 0, s, plus);
    SetBlocks(k, 0, 3, c, plus);
    SetBlocks(k, 0, 6, s, minus);
    SetBlocks(k, 0, 9, c, plus);
    SetBlocks(k, 3, 3, r, plus);
    SetBlocks(k, 3, 9, o, plus);
    SetBlocks(k, 6, 6, s, plus);
    SetBlocks(k, 6, 9, c, minus);
    SetBlocks(k, 9, 9, r, plus);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            k(3 + i, 6 + j) = -c(j, i);
    MirrorUpper(k);
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
template Matrix12<double> LocalStiffness(const MemberTerms<double>&);
template Matrix12<double128> LocalStiffness(const MemberTerms<double128>&);
template Matrix12<double> GlobalStiffness(const MemberTerms<double>&, const Matrix3<double>&);
template Matrix12<double128> GlobalStiffness(const MemberTerms<double128>&, const Matrix3<double128>&);

}  // namespace qvx
