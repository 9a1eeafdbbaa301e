#pragma once

#include "model/records/load.h"

namespace qvx {

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

inline bool IsZero(const jxPtLoad& load)
{
    return load.value == 0;
}
inline bool IsZero(const jxLnLoad& load)
{
    return load.value1 == 0 && load.value2 == 0;
}

}  // namespace qvx
