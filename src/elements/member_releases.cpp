#include "elements/member_releases.h"

#include <array>
#include <cwchar>
#include <limits>
#include <span>

#include "tools/crout_lu.h"

namespace qvx {

namespace {

constexpr int kEndDofs = 6;

/// Released degrees of freedom in ascending order.
struct ReleasedList
{
    explicit ReleasedList(const MemberDofSet& released)
    {
        for (int i = 0; i < kMemberDofs; ++i)
            if (released[static_cast<std::size_t>(i)])
                dof[static_cast<std::size_t>(count++)] = i;
    }
    int operator[](int i) const { return dof[static_cast<std::size_t>(i)]; }

    std::array<int, kMemberDofs> dof{};
    int count = 0;
};

template <Number Real>
constexpr double kUnitRoundOff = std::numeric_limits<double>::epsilon();
template <>
constexpr double kUnitRoundOff<double128> = 0x1p-100;

// (B K Bt)^-1 in the leading count x count terms, row by row.
template <Number Real>
std::array<Real, kMemberDofs * kMemberDofs> ReleasedFlexibility(const Matrix12<Real>& k, const ReleasedList& released)
{
    const auto m = static_cast<std::size_t>(released.count);
    std::array<Real, kMemberDofs * kMemberDofs> block;
    std::array<Real, kMemberDofs * kMemberDofs> inverse;
    for (int i = 0; i < released.count; ++i)
        for (int j = 0; j < released.count; ++j)
            block[static_cast<std::size_t>(i) * m + static_cast<std::size_t>(j)] = k(released[i], released[j]);
    InvertByCroutLu<Real>(std::span(block).first(m * m), released.count, std::span(inverse).first(m * m));
    return inverse;
}

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
    return masksAre(L"000111", L"000011") || masksAre(L"000011", L"000111");
}

template <Number Real>
void CondenseReleases(Matrix12<Real>& k, const MemberDofSet& released)
{
    const ReleasedList list(released);
    if (list.count == 0)
        return;
    const auto flexibility = ReleasedFlexibility(k, list);

    FixedMatrix<Real, kMemberDofs, kMemberDofs> motion;  // of the released freedoms under unit motions: (BKBt)^-1 B K
    for (int i = 0; i < list.count; ++i)
        for (int j = 0; j < list.count; ++j)
            for (int column = 0; column < kMemberDofs; ++column)
                motion(i, column) += flexibility[static_cast<std::size_t>(i * list.count + j)] * k(list[j], column);

    const Matrix12<Real> full = k;
    for (int row = 0; row < kMemberDofs; ++row)
        for (int column = row; column < kMemberDofs; ++column) {
            Real term(0);
            for (int i = 0; i < list.count; ++i)
                term += full(row, list[i]) * motion(i, column);
            term = full(row, column) - term;
            k(row, column) = IsRoundOff(term, full(row, row), full(column, column)) ? Real(0) : term;
        }
    MirrorUpper(k);
}

template <Number Real>
Matrix12<Real> LocalStiffness(const ReleasedMember<Real>& member)
{
    Matrix12<Real> k = LocalStiffness(member.terms);
    CondenseReleases(k, member.released);
    return k;
}

template <Number Real>
Matrix12<Real> GlobalStiffness(const ReleasedMember<Real>& member, const Matrix3<Real>& c)
{
    if (member.released.none())
        return GlobalStiffness(member.terms, c);
    const Matrix12<Real> k = LocalStiffness(member);
    const bool bGlobalAxes = c(0, 0) == Real(1) && c(1, 1) == Real(1) && c(2, 2) == Real(1);
    return bGlobalAxes ? k : RotateSymmetric(k, c);
}

template void CondenseReleases<double>(Matrix12<double>&, const MemberDofSet&);
template void CondenseReleases<double128>(Matrix12<double128>&, const MemberDofSet&);
template Matrix12<double> LocalStiffness(const ReleasedMember<double>&);
template Matrix12<double128> LocalStiffness(const ReleasedMember<double128>&);
template Matrix12<double> GlobalStiffness(const ReleasedMember<double>&, const Matrix3<double>&);
template Matrix12<double128> GlobalStiffness(const ReleasedMember<double128>&, const Matrix3<double128>&);

}  // namespace qvx
