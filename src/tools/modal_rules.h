#pragma once

#include <span>
#include <vector>

#include "platform/export.h"

namespace qvx {

/// How the largest responses of the modes, which do not come at one time, make one value.
enum ModalRule : int { CompleteQuadratic = 0, RootOfSquares = 1, AbsoluteSum = 2 };

/// Correlation of two modes of equal damping ratio under a broad excitation.
///
///     rho = 8 z^2 (1 + r) r^1.5 / ((1 - r^2)^2 + 4 z^2 r (1 + r)^2),   r = w1 / w2
/// 1 for equal frequencies, without damping too; 0 for different frequencies without damping. rho(r) = rho(1/r).
/// Source: Wilson, Der Kiureghian & Bayo, A replacement for the SRSS method in seismic analysis (1981); Chopra,
/// Dynamics of Structures, 4th ed. (2012), eq. 13.7.10.
/// @param omega1, omega2  circular frequencies >= 0
QVXFEM_API double ModalCorrelation(double omega1, double omega2, double damping);

/// One rule with the modes it is applied to: combines any number of quantities of these modes.
class ModalCombiner
{
public:
    /// @param rule      a ModalRule; any other makes every combined value zero
    /// @param omegas    circular frequency per mode [rad/s]
    /// @param damping   damping ratio of all modes, for CompleteQuadratic
    /// @param dominant  mode whose value gives the combined value its sign, from 0; -1 for no sign
    ModalCombiner(int rule, std::vector<double> omegas, double damping, int dominant);

    /// @param values  of one quantity, one per mode
    double Combine(std::span<const double> values) const;
    std::size_t Modes() const { return modes_; }

private:
    double QuadraticForm(std::span<const double> values) const;

    int rule_;
    std::size_t modes_;
    int dominant_;
    std::vector<double> correlation_;  ///< row-major, for CompleteQuadratic alone
};

}  // namespace qvx
