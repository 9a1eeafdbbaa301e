#include "solver/free_motion.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "platform/host_services.h"
#include "skyline/skyline_kernel.h"
#include "solver/instability.h"

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
constexpr Limits kDoubleLimits{6, 0x1p-49};
constexpr Limits kQuadLimits{15, 1e-25};

constexpr int kSteps = 3;
constexpr double kSoft = 1e-10;  // a free motion shows far below this in the first step

/// Factor of one run and the diagonals before it, which are the stiffness of each freedom by itself.
template <Number Real>
class SoftestMotion
{
public:
    SoftestMotion(const std::vector<Real>& factor, const std::vector<Real>& diagonal, const std::vector<int>& maxa,
                  int n)
        : factor_(factor), diagonal_(diagonal), maxa_(maxa), n_(static_cast<std::size_t>(n))
    {
    }

    int DigitsLost() const
    {
        double smallest = 1;
        for (std::size_t e = 1; e <= n_; ++e)
            smallest = std::min(smallest, static_cast<double>(factor_[Address(e)] / diagonal_[e]));
        return static_cast<int>(-std::log10(smallest));
    }

    /// Inverse iteration on the matrix scaled to a unit diagonal.
    /// @return  equation that takes the largest part; 0 when the motion has more energy than rounding
    int FreeEquation(double rounding) const
    {
        std::vector<double128> x = RandomMotion();
        double energy = 0;
        for (int step = 0; step < kSteps; ++step) {
            energy = Improve(x);
            if (!(energy <= kSoft))
                return 0;
        }
        return energy <= rounding ? LargestPart(x) : 0;
    }

private:
    std::size_t Address(std::size_t e) const { return static_cast<std::size_t>(maxa_[e]); }

    std::vector<double128> RandomMotion() const
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> uniform(-1, 1);
        std::vector<double128> x(n_ + 1);
        for (std::size_t e = 1; e <= n_; ++e)
            x[e] = double128(uniform(random) / std::sqrt(static_cast<double>(diagonal_[e])));
        return x;
    }

    /// x := A^-1 D x, scaled to x^t D x = 1.
    /// @return  x^t A x of the new x
    double Improve(std::vector<double128>& x) const
    {
        std::vector<double128> load(n_ + 1);
        for (std::size_t e = 1; e <= n_; ++e)
            load[e] = x[e] * double128(diagonal_[e]);
        x = load;
        ReduceAndBackSubstitute(factor_.data(), maxa_.data(), static_cast<int>(n_), x.data());
        double128 energy(0), size(0);
        for (std::size_t e = 1; e <= n_; ++e) {
            energy += x[e] * load[e];
            size += x[e] * x[e] * double128(diagonal_[e]);
        }
        const double128 unit(1 / std::sqrt(static_cast<double>(size)));
        for (std::size_t e = 1; e <= n_; ++e)
            x[e] = x[e] * unit;
        return static_cast<double>(energy / size);
    }

    int LargestPart(const std::vector<double128>& x) const
    {
        const auto part = [&](std::size_t e) {
            const auto value = static_cast<double>(x[e]);
            return value * value * static_cast<double>(diagonal_[e]);
        };
        std::size_t largest = 1;
        for (std::size_t e = 2; e <= n_; ++e)
            if (part(e) > part(largest))
                largest = e;
        return static_cast<int>(largest);
    }

    const std::vector<Real>& factor_;
    const std::vector<Real>& diagonal_;
    const std::vector<int>& maxa_;
    std::size_t n_;
};

template <Number Real>
int FreeEquation(const CjxStruct& model, const SoftestMotion<Real>& motion, const Limits& limits)
{
    const int lost = motion.DigitsLost();
    const bool bUserDecides =
        model.bInteractive && Host().IsUserThere() && lost >= DigitLimitsOf(model.solverType).question;
    return lost < limits.digitsLost || bUserDecides ? 0 : motion.FreeEquation(limits.rounding);
}

}  // namespace

int FindFreeEquation(const CjxStruct& model, const jxSolutionData& data)
{
    const int n = model.numberOfEquations;
    if (model.solverType == DoubleSkyline)
        return FreeEquation(model, SoftestMotion<double>(data.K, data.origDiag, data.maxa, n), kDoubleLimits);
    return FreeEquation(model, SoftestMotion<double128>(data.KQ, data.origDiagQ, data.maxa, n), kQuadLimits);
}

}  // namespace qvx
