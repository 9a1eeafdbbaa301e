#include "elements/shell_loads.h"

#include <cmath>

#include "elements/shell_membrane.h"
#include "tools/geometry.h"

namespace qvx {

void AddAreaLoad(AreaLoad& load, const ShellFrame<double>& frame, int dir, double value, bool isLocal)
{
    if (dir < 0 || dir > 5)
        return;
    AreaLoad added{};
    added[static_cast<std::size_t>(dir)] = value;
    if (isLocal)
        added = ToGlobalAxes(added, frame.c);
    for (std::size_t k = 0; k < load.size(); ++k)
        load[k] += added[k];
}

double ShellArea(const ShellFrame<double>& frame)
{
    std::array<jxPoint, 4> p;
    for (std::size_t i = 0; i < 4; ++i)
        p[i] = {frame.corners.x[i], frame.corners.y[i], 0};
    return std::fabs(area(p.data(), 4));
}

template <Number Real>
std::array<Real, 24> ShellThermalForces(const ShellFrame<Real>& frame, const ShellRigidity<Real>& rigidity,
                                        const Real& e)
{
    const std::array<Real, 8> inPlane = MembraneThermalForces(frame.corners, rigidity.membrane, e);
    std::array<Real, 24> f{};
    for (std::size_t node = 0; node < 4; ++node) {
        f[6 * node] = inPlane[2 * node];
        f[6 * node + 1] = inPlane[2 * node + 1];
    }
    return ToGlobalAxes(f, frame.c);
}

template std::array<double, 24> ShellThermalForces<double>(const ShellFrame<double>&, const ShellRigidity<double>&,
                                                           const double&);
template std::array<double128, 24> ShellThermalForces<double128>(const ShellFrame<double128>&,
                                                                 const ShellRigidity<double128>&, const double128&);

}  // namespace qvx
