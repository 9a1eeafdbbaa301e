#include "dynamics/sturm_check.h"

#include <cassert>

#include "tools/jx_exception.h"

namespace qvx {

namespace {

template <Number Real>
Real Upper(const Real& eigenvalue)
{
    return eigenvalue * Real(1.01);
}

template <Number Real>
bool Overlap(const Real& lower, const Real& upper)
{
    return Upper(lower) > upper * Real(0.99);
}

/// Roots nearer than this to one another are not told apart by a count between them.
constexpr double kApart = 1.002;
constexpr double kAbove = 1.001;

/// Last root of each group of roots that stand apart, as far as the modes asked for reach.
template <Number Real>
std::vector<int> GroupEnds(const std::vector<Real>& EIGV, int modes)
{
    const int n = static_cast<int>(EIGV.size()) - 1;
    std::vector<int> ends;
    for (int i = 1; i <= n && (ends.empty() || ends.back() < modes); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i == n || EIGV[at + 1] > EIGV[at] * Real(kApart))
            ends.push_back(i);
    }
    return ends;
}

template <Number Real>
double ShiftAbove(const std::vector<Real>& EIGV, int root)
{
    return static_cast<double>(EIGV[static_cast<std::size_t>(root)]) * kAbove;
}

}  // namespace

/// The converged roots are counted, and it is the lowest ones that are taken for them: convergence comes from below.
/// Roots behind them that overlap and stand at the limit of convergence belong to the last cluster.
template <Number Real>
SturmExpectation<Real> SCHECK(const std::vector<Real>& EIGV, const std::vector<Real>& RTOLV, double RTOL)
{
    assert(EIGV.size() == RTOLV.size() && EIGV.size() > 1);
    const std::size_t n = EIGV.size() - 1;
    std::size_t count = 0;
    for (std::size_t i = 1; i <= n; ++i)
        if (RTOLV[i] < Real(RTOL))
            ++count;
    if (count < 1)
        throw jxException(L"ERROR, SOLUTION STOP IN SCHECK, NO EIGENVAULES FOUND");
    while (count < n && Overlap(EIGV[count], EIGV[count + 1]) && RTOLV[count + 1] <= Real(RTOL))
        ++count;
    return {Upper(EIGV[count]), static_cast<int>(count)};
}

template <Number Real>
SturmVerdict LookCloser(const std::vector<Real>& EIGV, int modes, const SturmVerdict& verdict, const CountBelow& count)
{
    assert(modes >= 1 && static_cast<std::size_t>(modes) < EIGV.size());
    const std::vector<int> ends = GroupEnds(EIGV, modes);
    const auto judge = [&](std::size_t group) -> std::optional<SturmVerdict> {
        const double shift = ShiftAbove(EIGV, ends[group]);
        const std::optional<int> counted = count(shift);
        if (!counted)
            return std::nullopt;
        return SturmVerdict{.isMade = true, .shift = shift, .expected = ends[group], .counted = *counted};
    };
    std::size_t differs = ends.size() - 1;
    std::optional<SturmVerdict> found = judge(differs);
    if (!found)
        return verdict;
    if (found->counted == found->expected)
        return *found;
    std::size_t agrees = 0;  // groups below which the counts are known to agree
    while (agrees < differs) {
        const std::size_t middle = agrees + (differs - agrees) / 2;
        const std::optional<SturmVerdict> next = judge(middle);
        if (next && next->counted == next->expected) {
            agrees = middle + 1;
        } else {
            differs = middle;
            found = next ? next : found;
        }
    }
    found->missFrom = agrees == 0 ? 0 : ShiftAbove(EIGV, ends[agrees - 1]);
    found->missUntil = found->shift;
    return *found;
}

template SturmExpectation<double> SCHECK(const std::vector<double>&, const std::vector<double>&, double);
template SturmExpectation<double128> SCHECK(const std::vector<double128>&, const std::vector<double128>&, double);
template SturmVerdict LookCloser(const std::vector<double>&, int, const SturmVerdict&, const CountBelow&);
template SturmVerdict LookCloser(const std::vector<double128>&, int, const SturmVerdict&, const CountBelow&);

}  // namespace qvx
