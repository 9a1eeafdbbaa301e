#include "tools/softest_motion.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <random>
#include <utility>

#include "tools/tridiagonal_eigen.h"

namespace qvx {

namespace {

template <Number Real>
Real Dot(const std::vector<Real>& a, const std::vector<Real>& b)
{
    Real sum(0);
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

template <Number Real>
void AddScaled(std::vector<Real>& y, const Real& factor, const std::vector<Real>& x)
{
    for (std::size_t i = 0; i < y.size(); ++i)
        y[i] += factor * x[i];
}

/// Scales v to unit length.
/// @return  its length before
template <Number Real>
double Normalize(std::vector<Real>& v)
{
    const double length = std::sqrt(static_cast<double>(Dot(v, v)));
    if (length > 0)
        for (Real& value : v)
            value /= Real(length);
    return length;
}

template <Number Real>
void Multiply(std::vector<Real>& x, const std::vector<Real>& factor)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = x[i] * factor[i];
}

/// The vectors q of the iteration and the tridiagonal matrix T of S^-1 in them:
/// S^-1 q_k = offDiagonal_k-1 q_k-1 + diagonal_k q_k + offDiagonal_k q_k+1.
template <Number Real>
class Lanczos
{
public:
    explicit Lanczos(const MotionSearch<Real>& search) : search_(search)
    {
        std::mt19937 random(1);  // the same start in every run: results repeat
        // A random start has a part of every motion; a chosen one may be square to the very one that is sought.
        std::uniform_real_distribution<double> uniform(-1, 1);
        std::vector<Real> start(search.rootOfDiagonal.size());
        for (std::size_t i = 0; i < start.size(); ++i)
            if (!(search.rootOfDiagonal[i] == Real(0))) {
                start[i] = Real(uniform(random));
                ++mostSteps_;
            }
        Normalize(start);
        basis_.push_back(std::move(start));
    }

    /// One solution more.
    /// @return  false when there was none: the factor gave up, or nothing new is left
    bool Step()
    {
        if (isExhausted_ || diagonal_.size() == mostSteps_)
            return false;
        std::vector<Real> next = basis_.back();
        Multiply(next, search_.rootOfDiagonal);
        if (!search_.solve(next))
            return false;
        Multiply(next, search_.rootOfDiagonal);
        assert(next.size() == basis_.back().size() && "a solution keeps the size");
        const auto diagonal = static_cast<double>(Dot(basis_.back(), next));
        diagonal_.push_back(diagonal);
        for (int pass = 0; pass < 2; ++pass)  // twice is enough (Parlett, 6.9)
            for (const std::vector<Real>& q : basis_)
                AddScaled(next, -Dot(next, q), q);
        offDiagonal_.push_back(Normalize(next));
        // Nothing but rounding is left of the new vector: the space of the start is complete.
        isExhausted_ = !(offDiagonal_.back() > 1e-12 * std::fabs(diagonal));
        basis_.push_back(std::move(next));
        return true;
    }

    /// y, unit, of the largest eigenvalue of T or of the smallest, and S^-1 y.
    std::pair<std::vector<Real>, std::vector<Real>> Motion(bool isLargest) const
    {
        const std::size_t m = diagonal_.size();
        const auto [value, part] = EndOfSpectrum(isLargest);
        std::vector<Real> y(basis_.front().size());
        for (std::size_t k = 0; k < m; ++k)
            AddScaled(y, Real(part[k]), basis_[k]);
        std::vector<Real> image(y.size());
        AddScaled(image, Real(value), y);
        AddScaled(image, Real(offDiagonal_.back() * part.back()), basis_.back());
        return {std::move(y), std::move(image)};
    }

private:
    std::pair<double, std::vector<double>> EndOfSpectrum(bool isLargest) const
    {
        const auto size = diagonal_.size();
        assert(size >= 1 && offDiagonal_.size() == size);
        const TridiagonalEigen eigen = EigenOfTridiagonal(diagonal_, offDiagonal_);
        const std::size_t end = isLargest ? size - 1 : 0;
        const auto first = eigen.vectors.begin() + static_cast<std::ptrdiff_t>(end * size);
        return {eigen.values[end], std::vector<double>(first, first + static_cast<std::ptrdiff_t>(size))};
    }

    const MotionSearch<Real>& search_;
    std::vector<std::vector<Real>> basis_;  ///< one more than there are solutions
    std::vector<double> diagonal_;
    std::vector<double> offDiagonal_;
    std::size_t mostSteps_ = 0;  ///< degrees of freedom: more vectors at right angles there are not
    bool isExhausted_ = false;
};

template <Number Real>
std::size_t LargestEntry(const std::vector<Real>& x)
{
    const auto size = [](const Real& value) { return std::fabs(static_cast<double>(value)); };
    const auto largest =
        std::max_element(x.begin(), x.end(), [&](const Real& a, const Real& b) { return size(a) < size(b); });
    return static_cast<std::size_t>(largest - x.begin());
}

/// From scaled to plain motions and forces: x = D^-1/2 y, f = D^1/2 y.
template <Number Real>
double EnergyOf(const MotionSearch<Real>& search, std::vector<Real> motion, std::vector<Real> force)
{
    for (std::size_t i = 0; i < motion.size(); ++i) {
        if (search.rootOfDiagonal[i] == Real(0))
            continue;
        motion[i] /= search.rootOfDiagonal[i];
        force[i] = force[i] * search.rootOfDiagonal[i];
    }
    return search.energy(motion, force);
}

}  // namespace

template <Number Real>
SoftestMotion FindSoftestMotion(const MotionSearch<Real>& search)
{
    constexpr int kSteps = 3;
    constexpr double kSoft = 1e-10;
    Lanczos<Real> iteration(search);
    SoftestMotion softest;
    for (int step = 0; step < kSteps && iteration.Step(); ++step) {
        auto [force, motion] = iteration.Motion(true);
        softest.place = LargestEntry(motion);
        softest.isFound = true;
        softest.energy = EnergyOf(search, std::move(motion), std::move(force));
        // Stiff enough already: further solutions would only find the softest of the stiff.
        if (!(softest.energy <= kSoft))
            break;
    }
    return softest;
}

template <Number Real>
SoftestMotion FindNegativeMotion(const MotionSearch<Real>& search)
{
    constexpr int kSteps = 40;
    Lanczos<Real> iteration(search);
    int steps = 0;
    while (steps < kSteps && iteration.Step())
        ++steps;
    if (steps == 0)
        return {};
    return {.place = LargestEntry(iteration.Motion(false).first), .isFound = true};
}

template SoftestMotion FindSoftestMotion<double>(const MotionSearch<double>&);
template SoftestMotion FindSoftestMotion<double128>(const MotionSearch<double128>&);
template SoftestMotion FindNegativeMotion<double>(const MotionSearch<double>&);
template SoftestMotion FindNegativeMotion<double128>(const MotionSearch<double128>&);

}  // namespace qvx
