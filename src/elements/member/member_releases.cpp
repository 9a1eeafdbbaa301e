#include "elements/member/member_releases.h"

#include <cassert>
#include <cwchar>
#include <limits>

#include "elements/invariants.h"
#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr int kEndDofs = 6;

template <Number Real>
constexpr double kUnitRoundOff = std::numeric_limits<double>::epsilon();
// double128 is right to about 2^-104 in a product and less in a sum of many: the last digits are left out of the
// judgement.
template <>
constexpr double kUnitRoundOff<double128> = 0x1p-100;

// The subtraction leaves about a hundred roundings of the stiffness that was there; its scale for a term is the
// geometric mean of the two diagonals, whatever the units of the term. Squares spare the root.
template <Number Real>
bool IsRoundOff(const Real& term, const Real& diagonal1, const Real& diagonal2)
{
    constexpr double kTolerance = 256 * kUnitRoundOff<Real>;
    const auto t = static_cast<double>(term);
    const double scale = static_cast<double>(diagonal1) * static_cast<double>(diagonal2);
    return t * t <= kTolerance * kTolerance * (scale < 0 ? -scale : scale);
}

/// Released freedoms of one part, by their index in it, ascending.
template <int N>
struct ReleasedList
{
    /// @param dofs  member degrees of freedom of the part
    ReleasedList(const MemberDofSet& released, const int (&dofs)[N])
    {
        for (int i = 0; i < N; ++i)
            if (released[static_cast<std::size_t>(dofs[i])])
                index[count++] = i;
    }
    int index[N] = {};
    int count = 0;
};

// motion(i, j): how the released freedom i moves under a unit displacement of j if its force is to stay the same,
// (B K Bt)^-1 B K.
template <Number Real, int N>
FixedMatrix<Real, N, N> ReleasedMotion(const FixedMatrix<Real, N, N>& k, const ReleasedList<N>& released)
{
    const int m = released.count;
    Real lu[N * N];
    Real column[N];
    int rowOf[N];
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < m; ++j)
            lu[i * m + j] = k(released.index[i], released.index[j]);
    assert(m >= 1 && m <= N);
    // The inverse is formed once, of 1 to 4 freedoms, and multiplied with: most members are released in one or two
    // directions, and it is a division or a handful of products.
    const CroutLu<Real> factors(lu, rowOf, column, m);
    FixedMatrix<Real, N, N> inverse;
    for (int j = 0; j < m; ++j) {
        for (int i = 0; i < m; ++i)
            column[i] = Real(i == j ? 1 : 0);
        factors.Solve(column);
        for (int i = 0; i < m; ++i)
            inverse(i, j) = column[i];
    }
    FixedMatrix<Real, N, N> motion;
    for (int i = 0; i < m; ++i)
        for (int s = 0; s < m; ++s)
            for (int j = 0; j < N; ++j)
                motion(i, j) += inverse(i, s) * k(released.index[s], j);
    return motion;
}

template <Number Real, int N>
void CondensePart(FixedMatrix<Real, N, N>& k, const MemberDofSet& released, const int (&dofs)[N])
{
    const ReleasedList<N> list(released, dofs);
    if (list.count == 0)
        return;
    const FixedMatrix<Real, N, N> motion = ReleasedMotion(k, list);
    // A copy, as the terms are overwritten row by row while later rows still need those of the stiffness before.
    const FixedMatrix<Real, N, N> full = k;
    for (int row = 0; row < N; ++row)
        for (int column = row; column < N; ++column) {
            Real carried(0);
            for (int i = 0; i < list.count; ++i)
                carried += full(row, list.index[i]) * motion(i, column);
            const Real rest = full(row, column) - carried;
            k(row, column) = IsRoundOff(rest, full(row, row), full(column, column)) ? Real(0) : rest;
        }
    MirrorUpper(k);
    assert(IsSymmetric(k) && "what is left is a stiffness");
}

}  // namespace

MemberDofSet ReleasedDofs(const jxRels& rels)
{
    MemberDofSet released;
    for (std::size_t i = 0; i < kEndDofs; ++i) {
        released[i] = rels.start[i] == L'1';
        released[kEndDofs + i] = rels.end[i] == L'1';
    }
    return released;
}

bool IsPinEndedTruss(const jxRels& rels)
{
    const auto masksAre = [&rels](const wchar_t* start, const wchar_t* end) {
        return std::wcscmp(rels.start, start) == 0 && std::wcscmp(rels.end, end) == 0;
    };
    // Whole masks are compared: an axial or transverse release beside them makes another member, which is condensed.
    return masksAre(L"000111", L"000011") || masksAre(L"000011", L"000111");
}

// The parts are not coupled, so each is condensed by itself.
template <Number Real>
void CondenseReleases(MemberParts<Real>& parts, const MemberDofSet& released)
{
    CondensePart(parts.axial, released, {kUx1, kUx2});
    CondensePart(parts.torsion, released, {kRx1, kRx2});
    CondensePart(parts.inXy, released, {kUy1, kRz1, kUy2, kRz2});
    CondensePart(parts.inXz, released, {kUz1, kRy1, kUz2, kRy2});
}

FixedVector<double, 4> CondenseLoads(const FixedMatrix<double, 4, 4>& k, const MemberDofSet& released,
                                     const int (&dofs)[4], FixedVector<double, 4> f)
{
    const ReleasedList<4> list(released, dofs);
    if (list.count == 0)
        return f;
    assert(list.count <= 2 && "the other two hold the part against rigid motions");
    // K is symmetric: K Bt (B K Bt)^-1 is the transpose of the released motion.
    const FixedMatrix<double, 4, 4> motion = ReleasedMotion(k, list);
    const FixedVector<double, 4> full = f;
    for (int j = 0; j < 4; ++j)
        for (int i = 0; i < list.count; ++i)
            f[static_cast<std::size_t>(j)] -= motion(i, j) * full[static_cast<std::size_t>(list.index[i])];
    for (int i = 0; i < list.count; ++i)
        f[static_cast<std::size_t>(list.index[i])] = 0;
    return f;
}

template <Number Real>
MemberParts<Real> PartsOf(const ReleasedMember<Real>& member)
{
    MemberParts<Real> parts = PartsOf(member.terms);
    if (member.released.any())
        CondenseReleases(parts, member.released);
    return parts;
}

template void CondenseReleases(MemberParts<double>&, const MemberDofSet&);
template void CondenseReleases(MemberParts<double128>&, const MemberDofSet&);
template MemberParts<double> PartsOf(const ReleasedMember<double>&);
template MemberParts<double128> PartsOf(const ReleasedMember<double128>&);

}  // namespace qvx
