#include "model/records/node.h"
#include "model/records/unit.h"
#include "operations/convert_units.h"

namespace qvx {
namespace {

// Directions 0 to 2 are forces along the axes, 3 to 5 moments about them.
bool IsForce(int direction)
{
    return direction <= kZ;
}

void ConvertThermal(std::vector<jxThermalLoad>& loads, ConversionFactors f)
{
    for (jxThermalLoad& load : loads)
        load.dT *= f[kTemperature];
}

void ConvertSurface(std::vector<jxSurfaceLoad>& loads, ConversionFactors f)
{
    for (jxSurfaceLoad& load : loads)
        load.value *= f[kSurfacePressure];
}

}  // namespace

// A distance given as a fraction of the member's length has no unit; an absolute one is a length.
void ConvertLoads(jxCaseLoad& loads, ConversionFactors f)
{
    for (jxNdLoad& load : loads.ndLoads)
        load.value *= f[IsForce(load.dof) ? kForce : kMoment];
    for (jxPtLoad& load : loads.ptLoads) {
        load.value *= f[IsForce(load.dir) ? kForce : kMoment];
        if (load.bAbsoluteDistance != 0)
            load.distance *= f[kLength];
    }
    for (jxLnLoad& load : loads.lnLoads) {
        const double perLength = f[IsForce(load.dir) ? kLinearForce : kLinearMoment];
        load.value1 *= perLength;
        load.value2 *= perLength;
        if (load.bAbsoluteDistance != 0) {
            load.distance1 *= f[kLength];
            load.distance2 *= f[kLength];
        }
    }
    ConvertThermal(loads.bmThermalLoads, f);
    ConvertThermal(loads.shell4ThermalLoads, f);
    ConvertThermal(loads.brickThermalLoads, f);
    ConvertSurface(loads.shell3SurfaceLoads, f);
    ConvertSurface(loads.shell4SurfaceLoads, f);
    for (jxAreaload& load : loads.areaLoads)
        load.value *= f[kSurfacePressure];
}

}  // namespace qvx
