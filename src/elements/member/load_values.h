#pragma once

#include "model/records/load.h"

// The values of loads of any kind under one name each, for code that is the same for all of them.

namespace qvx {

/// Multiplies what a load brings by a factor of a combination or a cosine; positions and directions stay.
inline void Scale(jxPtLoad& load, double factor)
{
    load.value *= factor;
}
inline void Scale(jxLnLoad& load, double factor)
{
    load.value1 *= factor;
    load.value2 *= factor;
}
inline void Scale(jxThermalLoad& load, double factor)
{
    load.dT *= factor;
}
inline void Scale(jxSurfaceLoad& load, double factor)
{
    load.value *= factor;
}

/// Whether a load brings nothing: it is then left out of sums and stations, exactly, and not within a tolerance.
inline bool IsZero(const jxPtLoad& load)
{
    return load.value == 0;
}
inline bool IsZero(const jxLnLoad& load)
{
    return load.value1 == 0 && load.value2 == 0;
}

}  // namespace qvx
