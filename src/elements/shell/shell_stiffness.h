#pragma once

#include "elements/shell/shell_axes.h"
#include "elements/shell/shell_membrane.h"
#include "elements/shell/shell_mitc4.h"
#include "elements/shell/shell_thin_plate.h"

namespace qvx {

/// Which forms the shells of a model take.
struct ShellOptions
{
    bool isThinPlateWanted = false;  ///< twelve-term thin plate where the shape is a rectangle, MITC4 elsewhere
    bool isIncompatible = true;      ///< membrane with incompatible modes
    ShearDirections shearDirections = ShearDirections::Unsigned;
};

/// A four-node flat shell ready for use: membrane and plate in the plane of its stiffness axes, without coupling.
/// Corners off that plane are projected on it; there is no correction for warping.
template <Number Real>
struct ShellElement
{
    ShellFrame<Real> frame;  ///< stiffness axes: x along side 3-4, or along side 1-2 of a thin plate
    double referenceAngle;   ///< of stiffness x from user x at angle 0 [rad]
    ShellRigidity<Real> rigidity;
    ShearDirections shearDirections;
    MembraneElement<Real> membrane;  ///< ux, uy per node
    Matrix12<Real> plate;            ///< stiffness, order w, thx, thy per node
    bool isThinPlate;
    Real a;  ///< sides of a thin plate along local x and y, else 0 [length]
    Real b;
};

/// Forms both parts of a shell in its stiffness axes.
/// @param corners  four corners around the shell; a double one or three in line gives numbers that are no numbers
/// @throws jxException "Singular matrix in routine ludcmp" when the incompatible modes have no stiffness
template <Number Real>
ShellElement<Real> FormShell(const QuadCorners& corners, const ShellRigidity<Real>& rigidity,
                             const ShellOptions& options);

/// Drilling stiffness of a node: ozFactor times the smallest of the 20 diagonal terms of membrane and plate; so 0 when
/// one of them is 0.
template <Number Real>
Real DrillingStiffness(const ShellElement<Real>& element, double ozFactor);

/// Stiffness in global axes, per node X, Y, Z, OX, OY, OZ.
///
/// The rotation about the local normal takes no part in membrane or plate. A small spring to the ground about it, alone
/// on the diagonal, keeps the matrix regular where all shells of a node lie in one plane.
template <Number Real>
Matrix24<Real> ShellStiffness(const ShellElement<Real>& element, double ozFactor);

}  // namespace qvx
