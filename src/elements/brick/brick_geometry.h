#pragma once

#include <array>
#include <cstddef>

#include "quad/double128.h"
#include "tools/jx_point.h"

namespace qvx {

/// Corners of a solid in the order of its nodes, global axes.
///
///            8--------7        r, s, t of the nodes: 1 (-1,-1,-1), 2 (1,-1,-1), 3 (1,1,-1), 4 (-1,1,-1),
///     t     /|       /|                              5 (-1,-1,1),  6 (1,-1,1),  7 (1,1,1),  8 (-1,1,1)
///     | s  5--------6 |
///     |/   | 4------|-3        Turning r into s points along t: otherwise the solid is inside out and every
///     +--r |/       |/         volume in it is negative.
///          1--------2
using BrickCorners = std::array<jxPoint, 8>;

inline constexpr int kBrickModes = 3;                      ///< incompatible modes 1 - r^2, 1 - s^2, 1 - t^2
inline constexpr std::size_t kBrickFunctions = 8 + 3 + 1;  ///< shape functions, modes, one of zero to fill up

/// Point in natural coordinates, each from -1 to 1.
template <Number Real>
struct BrickPoint
{
    Real r;
    Real s;
    Real t;
};

/// Gradients of the eight shape functions (slots 0 to 7) and of the three modes (8 to 10) at a point [1/length].
/// The last slot is 0: loops over whole arrays then have even length.
template <Number Real>
struct BrickGradients
{
    std::array<Real, kBrickFunctions> x;
    std::array<Real, kBrickFunctions> y;
    std::array<Real, kBrickFunctions> z;
    Real det;  ///< of the Jacobian: volume per natural volume
};

/// Exact for the stiffness of a parallelepiped: its Jacobian is constant, and products of two gradients, of the modes
/// too, are of the second degree in each natural coordinate where the rule is right to the third.
/// Gauss points of the 2 x 2 x 2 rule, all weights 1: r, s, t = -+sqrt(3) / 3.
template <Number Real>
const std::array<BrickPoint<Real>, 8>& BrickGaussPoints();

/// Where stresses are given: the centre, then the eight nodes.
template <Number Real>
const std::array<BrickPoint<Real>, 9>& BrickStressPoints();

/// Trilinear shape functions at a point; their sum is 1.
template <Number Real>
std::array<Real, 8> BrickShapeFunctions(const BrickPoint<Real>& at);

/// Number of the functions in a gradient: 0 to 7 the nodes, 8 to 10 the modes. Their derivatives along r, s, t depend
/// on the point only and are made once per number type; per element only the Jacobian and its inverse are formed.
///
/// Gradients at the Gauss points; modes without the correction by their mean.
template <Number Real>
std::array<BrickGradients<Real>, 8> GradientsAtGaussPoints(const BrickCorners& corners);

/// Gradients at the stress points; modes without the correction by their mean.
template <Number Real>
std::array<BrickGradients<Real>, 9> GradientsAtStressPoints(const BrickCorners& corners);

}  // namespace qvx
