#include "solver/skyline_system.h"

#include <cassert>
#include <cmath>
#include <utility>

#include "elements/stiffness_sink.h"
#include "model/number_type.h"
#include "tools/softest_motion.h"

namespace qvx {

namespace {

/// What counts as rounding, and what is looked at, for one number type.
struct Limits
{
    int digitsLost;   ///< by a pivot, from which the softest motion is looked at
    double rounding;  ///< energy of a free motion
};

// Eight roundings of a double. In double128 the geometry of oblique members, which is double, adds the square of its
// own rounding, and the product of many; what is left below 1e-25 no structure has.
constexpr Limits LimitsOf(NumberTag<double>)
{
    return {6, 0x1p-49};
}
constexpr Limits LimitsOf(NumberTag<double128>)
{
    return {15, 1e-25};
}

/// The search on a factor in place of its matrix: the energy is the work x^t f of the forces that hold the motion, and
/// stands beside x^t D x, what each degree of freedom would take by itself.
template <Number Real>
MotionSearch<double128> SearchOf(const SkylineStore<Real>& factor, const std::vector<Real>& diagonals)
{
    const auto n = static_cast<std::size_t>(factor.Equations());
    assert(diagonals.size() > n && "kept before they were overwritten by the factor");
    // Directions are scaled by their own stiffness, so that a rotation in radians and a translation in inches compare.
    std::vector<double128> root(n + 1);
    for (std::size_t e = 1; e <= n; ++e)
        root[e] = double128(std::sqrt(static_cast<double>(diagonals[e])));
    return {.rootOfDiagonal = std::move(root),
            .solve =
                [&factor](std::vector<double128>& x) {
                    factor.Substitute(x);
                    return true;
                },
            .energy =
                [&diagonals](const std::vector<double128>& x, const std::vector<double128>& force) {
                    double128 work(0), size(0);
                    for (std::size_t e = 1; e < x.size(); ++e) {
                        work += x[e] * force[e];
                        size += x[e] * x[e] * double128(diagonals[e]);
                    }
                    return static_cast<double>(work / size);
                }};
}

}  // namespace

template <Number Real>
SkylineStore<Real> SkylineSystem<Real>::Store() const
{
    return {data_.maxa, TermsOfSkyline<Real>(data_)};
}

template <Number Real>
void SkylineSystem<Real>::Clear()
{
    Store().SetZero();
    kept_.clear();
    isFactor_ = false;
}

template <Number Real>
void SkylineSystem<Real>::AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
{
    assert((!isFactor_ || !kept_.empty()) && "the matrix was not kept");
    AddSkylineProduct<Real>(data_.maxa, isFactor_ ? kept_ : TermsOfSkyline<Real>(data_), v, product);
}

/// Puts the matrix of this factorization where its factor will stand.
template <Number Real>
void SkylineSystem<Real>::PrepareMatrix(const FactorWish& wish)
{
    std::vector<Real>& terms = TermsOfSkyline<Real>(data_);
    assert((!isFactor_ || !kept_.empty()) && "the matrix was not kept");
    // A second factorization starts from the copy that the first one kept: elements are not formed again for a new
    // shift.
    if (isFactor_)
        terms = kept_;
    else if (wish.keepsMatrix)
        kept_ = terms;
    isFactor_ = true;
    if (wish.shift.factor != 0)
        Store().SubtractDiagonal(wish.shift.factor, wish.shift.masses);
}

template <Number Real>
FactorOutcome SkylineSystem<Real>::FactorizeMatrix(const FactorWish& wish)
{
    PrepareMatrix(wish);
    try {
        if (Store().Factorize(wish.pivots, wish.atColumn) == 0)
            return {.isPositive = false};
    } catch (int equation) {
        return {.isPositive = false, .isWhole = false, .equation = equation};
    }
    // A shifted matrix has soft motions by design: every eigenvalue near the shift is one.
    const int equation = wish.shift.factor != 0 ? 0 : FreeEquation(wish.digitsLeftToUser);
    return {.isPositive = equation == 0, .equation = equation};
}

/// @return  the equation that takes the largest part in a motion without resistance; 0 when every motion meets one
template <Number Real>
int SkylineSystem<Real>::FreeEquation(int digitsLeftToUser) const
{
    constexpr Limits kLimits = LimitsOf(NumberTag<Real>{});
    const std::vector<Real>& diagonals = DiagonalsOfSkyline<Real>(data_);
    const SkylineStore<Real> factor = Store();
    const int lost = factor.DigitsLost(diagonals);
    // Digits tell that something is soft, not that it is free: a slender stable structure loses as many. The search is
    // made only where it could find something, as it takes a few substitutions.
    if (lost < kLimits.digitsLost || lost >= digitsLeftToUser)
        return 0;
    const SoftestMotion motion = FindSoftestMotion(SearchOf(factor, diagonals));
    return motion.isFound && motion.energy <= kLimits.rounding ? static_cast<int>(motion.place) : 0;
}

template <Number Real>
int SkylineSystem<Real>::Substitute(std::span<std::vector<double128>* const> vectors)
{
    assert(isFactor_ && "factorize first");
    for (std::vector<double128>* v : vectors)
        Store().Substitute(*v);
    return 0;
}

template <Number Real>
void SkylineSystem<Real>::Release()
{
    kept_ = {};
    TermsOfSkyline<Real>(data_) = {};
    isFactor_ = false;
}

template class SkylineSystem<double>;
template class SkylineSystem<double128>;

std::unique_ptr<EquationSolver> MakeSkylineSystem(int solverType, jxSolutionData& data)
{
    return WithSkylineNumber(solverType, [&](auto tag) -> std::unique_ptr<EquationSolver> {
        return std::make_unique<SkylineSystem<typename decltype(tag)::Real>>(data);
    });
}

}  // namespace qvx
