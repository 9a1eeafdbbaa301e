#pragma once

#include "platform/export.h"

/// Eigenvalues d and eigenvectors (columns of v, orthonormal) of a symmetric 3 x 3 matrix, in no order.
///
/// Cyclic Jacobi rotations: for the first three sweeps only terms above a fifth of the mean off-diagonal one, after
/// four sweeps a term that is lost against both diagonals becomes 0. Ends when all off-diagonal terms are exactly 0;
/// after 50 sweeps it gives up with the message box "Too many iterations in routine jacobi.".
/// @param a  the matrix; its upper triangle is destroyed
/// Source: Press, Teukolsky, Vetterling & Flannery, Numerical Recipes in C, 2nd ed. (1992), section 11.1.
QVXFEM_API void jacobi(double a[3][3], double d[3], double v[3][3]);

namespace qvx {

/// Principal stresses of a solid, descending, with unit directions.
struct PrincipalStresses
{
    double S[3] = {};     ///< S1 >= S2 >= S3 [stress]
    double v[3][3] = {};  ///< v[k]: x, y, z of the direction of S[k]
};

/// @param stress  Sxx, Syy, Szz, Sxy, Syz, Sxz
PrincipalStresses PrincipalStressesOf(const double (&stress)[6]);

/// Von Mises stress of the same six components.
double VonMisesStress(const double (&stress)[6]);

}  // namespace qvx
