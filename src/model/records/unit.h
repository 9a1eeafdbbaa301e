#pragma once

#include "platform/export.h"

/// The 18 physical quantities, in the order of the columns of jxUnit. Length is of coordinates and distances, dimension
/// of sections and thicknesses: a model may have its frame in feet and its sections in inches.
enum Quantity : int {
    kLength = 0,
    kDimension,
    kForce,
    kLinearForce,
    kMoment,
    kLinearMoment,
    kSurfacePressure,
    kTranslationalDisplacement,
    kRotationalDisplacement,
    kTemperature,
    kModulus,
    kWeightDensity,
    kReinforcementArea,
    kStress,
    kNodalTranslationalSpring,
    kNodalRotationalSpring,
    kLineTranslationalSpring,
    kSurfaceTranslationalSpring,
    kQuantityCount
};

/// Units and number formats of a model. Default: the internal set of the solver (inch, pound, radian, degree F).
struct QVXFEM_API jxUnit
{
    /// The internal set, one number format for all, flags 0.
    jxUnit();

    int unit[kQuantityCount];    ///< index into the unit name table, per quantity
    int format[kQuantityCount];  ///< index into the number format table, per quantity
    int flags[kQuantityCount];   ///< 0 by default; 1 in the source of a driver's conversion
};
