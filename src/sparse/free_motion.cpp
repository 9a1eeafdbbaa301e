#include "sparse/free_motion.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>

#include "sparse/lanczos.h"

namespace qvx {

namespace {

using Vector = std::vector<double>;

struct Energy
{
    double sum;        ///< x^t A x
    double magnitude;  ///< |x|^t |A| |x|
};

Energy EnergyOf(const SymmetricMatrix& a, const Vector& x)
{
    Energy energy{};
    for (int i = 0; i < a.n; ++i)
        for (int k = a.rowStart[i] - 1; k < a.rowStart[i + 1] - 1; ++k) {
            const int j = a.column[k] - 1;
            const double term =
                (j == i ? 1 : 2) * x[static_cast<std::size_t>(i)] * a.value[k] * x[static_cast<std::size_t>(j)];
            energy.sum += term;
            energy.magnitude += std::fabs(term);
        }
    return energy;
}

// Roots of the diagonal: multiplied with them, displacements and rotations of soft and stiff parts compare.
Vector Scale(const SymmetricMatrix& a)
{
    Vector scale(static_cast<std::size_t>(a.n));
    for (int i = 0; i < a.n; ++i)
        scale[static_cast<std::size_t>(i)] = std::sqrt(std::fabs(a.value[a.rowStart[i] - 1]));
    return scale;
}

void Multiply(Vector& x, const Vector& factor)
{
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] *= factor[i];
}

void ShrinkToUnit(Vector& x)
{
    double square = 0;
    for (const double value : x)
        square += value * value;
    const double length = std::sqrt(square);
    for (double& value : x)
        value /= length;
}

}  // namespace

SoftestMotion FindSoftestMotion(const SymmetricMatrix& a, int roundings, const std::function<bool(Vector&)>& solve)
{
    constexpr int kSteps = 3;
    constexpr double kSoft = 1e-10;  // a free motion shows far below this in the first step
    const double none = roundings * std::numeric_limits<double>::epsilon();
    const Vector scale = Scale(a);
    Vector x(scale.size());
    std::mt19937 random(1);
    std::uniform_real_distribution<double> uniform(-1, 1);
    for (double& value : x)
        value = uniform(random);

    SoftestMotion motion;
    for (int step = 0; step < kSteps; ++step) {
        Multiply(x, scale);
        if (!solve(x))
            return motion;
        Vector scaled = x;
        Multiply(scaled, scale);
        ShrinkToUnit(scaled);
        const Energy energy = EnergyOf(a, x);
        motion = {.equation = LargestComponent(scaled), .isFree = energy.sum <= none * energy.magnitude};
        if (energy.sum > kSoft * energy.magnitude)
            break;
        x = scaled;
    }
    return motion;
}

}  // namespace qvx
