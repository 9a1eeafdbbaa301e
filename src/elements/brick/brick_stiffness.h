#pragma once

#include <array>

#include "elements/brick/brick_geometry.h"
#include "tools/fixed_matrix.h"

namespace qvx {

/// Isotropic elasticity in the strains ex, ey, ez, gxy, gyz, gzx.
///
///   | direct    coupling  coupling            |     A = E / ((1 - 2 nu)(1 + nu))
///   | coupling  direct    coupling            |     direct = (1 - nu) A, coupling = nu A
///   | coupling  coupling  direct              |     shear = (0.5 - nu) A = E / (2 (1 + nu))
///   |                          shear on 4..6  |
template <Number Real>
struct SolidElasticity
{
    Real direct;
    Real coupling;
    Real shear;
};

/// @param E   Young's modulus [stress]
/// @param nu  Poisson's ratio, below 0.5
template <Number Real>
SolidElasticity<Real> SolidElasticityOf(double E, double nu);

/// Eight-node solid: three displacements ux, uy, uz at each node, global axes, 2 x 2 x 2 Gauss points.
///
/// The plain form is the trilinear isoparametric element. The incompatible form adds the modes 1 - r^2, 1 - s^2,
/// 1 - t^2 to all three displacements, which lets a rectangular solid bend without parasitic shear, and eliminates
/// their nine amplitudes. Gradients of the modes count from their mean over the element, so that a constant stress does
/// no work on them and the patch test is passed on any shape.
/// Source: Wilson, Taylor, Doherty & Ghaboussi, Incompatible displacement models (1973); Taylor, Beresford & Wilson,
/// Int. J. Num. Meth. Eng. 10 (1976), 1211, for the patch test.
template <Number Real>
struct BrickElement
{
    BrickCorners corners;
    SolidElasticity<Real> elasticity;
    Matrix24<Real> stiffness;             ///< order ux, uy, uz per node [force/length]
    FixedMatrix<Real, 9, 24> amplitudes;  ///< ux, uy, uz of each mode per nodal displacement; 0 when plain
    std::array<std::array<Real, 3>, kBrickModes> meanGradients;  ///< x, y, z of each mode over the element
};

/// @throws jxException "Singular matrix in routine ludcmp" when the modes have no stiffness
template <Number Real>
BrickElement<Real> FormBrick(const BrickCorners& corners, const SolidElasticity<Real>& elasticity, bool isIncompatible);

}  // namespace qvx
