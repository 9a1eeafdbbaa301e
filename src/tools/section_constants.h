#pragma once

#include "platform/export.h"

/// Torsion constant of a rectangle with sides a and b, in either order [length^4]; 0 unless both are positive.
/// With a >= b: a b^3 (1/3 - 0.21 (b/a) (1 - b^4 / (12 a^4))), within 0.5 % of the exact series.
/// Source: Young & Budynas, Roark's Formulas for Stress and Strain, 7th ed. (2002), table 10.1, case 4.
QVXFEM_API double calc_rect_J(double a, double b);
