#include "tools/modal_rules.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace qvx {

double ModalCorrelation(double omega1, double omega2, double damping)
{
    assert(omega1 >= 0 && omega2 >= 0);
    if (omega1 == omega2)
        return 1;  // also where the formula is 0/0, without damping
    const double r = std::min(omega1, omega2) / std::max(omega1, omega2);
    const double z2 = damping * damping;
    const double apart = 1 - r * r;
    const double together = 1 + r;
    return 8 * z2 * together * r * std::sqrt(r) / (apart * apart + 4 * z2 * r * together * together);
}

ModalCombiner::ModalCombiner(int rule, std::vector<double> omegas, double damping, int dominant)
    : rule_(rule), modes_(omegas.size()), dominant_(dominant)
{
    assert(dominant >= -1 && dominant < static_cast<int>(omegas.size()));
    if (rule_ != CompleteQuadratic)
        return;
    correlation_.reserve(modes_ * modes_);
    for (const double first : omegas)
        for (const double second : omegas)
            correlation_.push_back(ModalCorrelation(first, second, damping));
}

double ModalCombiner::QuadraticForm(std::span<const double> values) const
{
    double sum = 0;
    for (std::size_t i = 0; i < modes_; ++i) {
        double row = 0;
        for (std::size_t j = 0; j < modes_; ++j)
            row += correlation_[i * modes_ + j] * values[j];
        sum += values[i] * row;
    }
    return sum;
}

double ModalCombiner::Combine(std::span<const double> values) const
{
    assert(values.size() == modes_);
    double magnitude = 0;
    switch (rule_) {
    case CompleteQuadratic:
        magnitude = std::sqrt(std::max(0.0, QuadraticForm(values)));  // rounding may leave a zero sum negative
        break;
    case RootOfSquares:
        for (const double value : values)
            magnitude += value * value;
        magnitude = std::sqrt(magnitude);
        break;
    case AbsoluteSum:
        for (const double value : values)
            magnitude += std::fabs(value);
        break;
    default:
        return 0;
    }
    const bool isNegative = dominant_ >= 0 && values[static_cast<std::size_t>(dominant_)] < 0;
    return isNegative ? -magnitude : magnitude;
}

}  // namespace qvx
