#pragma once

namespace qvx {

/// Standard gravity of every analysis [inch/s^2].
inline constexpr double kGravity = 386.09;

/// 2 pi between period and circular frequency, to the digits that every program of the host has: results that are told
/// twice agree.
inline constexpr double kTwoPi = 6.283185308;

}  // namespace qvx
