#include "elements/link/link_stiffness.h"

#include <cassert>
#include <cmath>

#include "tools/geometry.h"

namespace qvx {

template <Number Real>
MemberParts<Real> LinkParts(const LinkProperties& link)
{
    assert(!(link.E < 0 || link.A < 0 || link.I < 0 || link.factor < 0) && "a link is stiff");
    // No shear area: a link is as long as the floor is wide, and its bending rigidity is fictitious already. The
    // inertia is that of the stiffest section of the model, so the whole web grows with the structure that it binds.
    const Real E = link.E;
    const Real f = link.factor;
    const Real L = link.L;
    return PartsOf(MemberTerms<Real>{.axial = E * Real(link.A) * f / L,
                                     .torsion = Real(0),
                                     .inXy = {},
                                     .inXz = MemberBendingTerms<Real>(E * Real(link.I) * f, Real(0), L)});
}

void LinkAxes(double c[3][3], const jxPoint& start, const jxPoint& end, const jxPoint& normal)
{
    assert(std::fabs(dot(normal, normal) - 1) < 1e-9 && "the normal of a floor is a unit vector");
    // z = x x y, so that bending about the normal, the only one a link has, is that of the local x-z plane (LinkParts).
    jxPoint axes[3] = {end - start, normal, {}};
    cross(axes[2], axes[0], axes[1]);
    for (jxPoint& axis : axes)
        normalize(axis);
    calc_cos(c, axes);
}

template MemberParts<double> LinkParts<double>(const LinkProperties&);
template MemberParts<double128> LinkParts<double128>(const LinkProperties&);

}  // namespace qvx
