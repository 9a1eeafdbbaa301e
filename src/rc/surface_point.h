#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "rc/interaction_surface.h"
#include "tools/design_trace.h"

namespace qvx {

/// One point of the surface, told with the strains and forces of its bars.
/// @param angle  of its curve
/// @param i      its place on the curve
P_M_Point SurfacePoint(const jxConcreteSection& section, const SurfaceRules& rules, double angle, std::size_t i,
                       DesignTrace* trace);

/// Largest phi Pn of a section, told: 0.80 (spiral 0.85) phi Po.
double LargestAxialStrength(const jxConcreteSection& section, const SurfaceRules& rules, DesignTrace* trace);

/// Where the ray through a load leaves a surface: the triangle from two corners of a patch to its middle.
struct SurfaceHit
{
    std::size_t curve = 0;  ///< the patch lies between this curve and the next
    std::size_t point = 0;  ///< and between this point and the next
    int side = 0;  ///< of the patch, whose corners are (curve, point), (next, point), (next, next), (curve, next)
    P_M_Point corners[3];    ///< both ends of the side and the middle of the patch
    double weights[3] = {};  ///< of the corners; their sum is 1
    double reach = 0;        ///< strength over load
};

/// @return  nothing for no load and for a ray that meets no patch
std::optional<SurfaceHit> FindHit(const std::vector<P_M_Int>& curves, const jxSectionLoad& load);

}  // namespace qvx
