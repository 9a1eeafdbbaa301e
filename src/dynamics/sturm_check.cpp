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

template SturmExpectation<double> SCHECK(const std::vector<double>&, const std::vector<double>&, double);
template SturmExpectation<double128> SCHECK(const std::vector<double128>&, const std::vector<double128>&, double);

}  // namespace qvx
