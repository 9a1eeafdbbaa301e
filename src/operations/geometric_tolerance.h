#pragma once

namespace qvx {

/// Geometric tolerance of the operations, relative to the length or the size of what is looked at.
inline constexpr double kRelativeTolerance = 5e-7;

}  // namespace qvx
