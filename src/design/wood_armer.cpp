#include "model/jx_struct.h"

/// Reinforcement moments of concrete plates are not computed yet: none is left from an earlier run either.
void CjxStruct::CalcRcWoodArmerMoment()
{
    woodArmer.clear();
}
