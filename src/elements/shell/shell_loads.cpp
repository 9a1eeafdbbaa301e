#include "elements/shell/shell_loads.h"

#include <cassert>
#include <cmath>

#include "elements/invariants.h"
#include "elements/shell/shell_membrane.h"
#include "tools/geometry.h"

namespace qvx {

void AddAreaLoad(AreaLoad& load, const std::array<jxPoint, 3>& axes, int dir, double value, bool isLocal)
{
    if (dir < 0 || dir > 5)
        return;
    const auto component = static_cast<std::size_t>(dir);
    if (!isLocal) {
        load[component] += value;
        return;
    }
    const jxPoint& along = axes[component % 3];
    const std::size_t first = component - component % 3;  // forces or moments
    load[first] += value * along.x;
    load[first + 1] += value * along.y;
    load[first + 2] += value * along.z;
}

double ShellArea(const ShellFrame<double>& frame)
{
    std::array<jxPoint, 4> p;
    for (std::size_t i = 0; i < 4; ++i)
        p[i] = {frame.corners.x[i], frame.corners.y[i], 0};
    // Gauss's area of the polygon; its sign tells the sense of the corners, which a load does not ask for.
    return std::fabs(area(p.data(), 4));
}

template <Number Real>
std::array<Real, 24> ShellThermalForces(const ShellFrame<Real>& frame, const ShellRigidity<Real>& rigidity,
                                        const Real& e)
{
    const std::array<Real, 8> inPlane = MembraneThermalForces(frame.corners, rigidity.membrane, e);
    // In the plane of the shell alone; corners off that plane get their forces in it too, and no moment from the
    // offset.
    std::array<Real, 24> f{};
    for (std::size_t node = 0; node < 4; ++node) {
        f[6 * node] = inPlane[2 * node];
        f[6 * node + 1] = inPlane[2 * node + 1];
    }
    const std::array<Real, 24> global = ToGlobalAxes(f, frame.c);
    assert(IsBalanced(global, 6) && "heat moves nothing as a whole");
    return global;
}

template std::array<double, 24> ShellThermalForces<double>(const ShellFrame<double>&, const ShellRigidity<double>&,
                                                           const double&);
template std::array<double128, 24> ShellThermalForces<double128>(const ShellFrame<double128>&,
                                                                 const ShellRigidity<double128>&, const double128&);

}  // namespace qvx
