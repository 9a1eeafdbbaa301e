#pragma once

#include <string>
#include <vector>

#include "model/records/design_result.h"

/// Design strength at one strain state: phi Pn, phi Mn3, phi Mn2.
struct P_M_Point
{
    double P = 0;   ///< compression positive [kip]
    double M3 = 0;  ///< positive: compression at the face of positive local y [kip-ft]
    double M2 = 0;  ///< positive: compression at the face of positive local z [kip-ft]
};

namespace qvx {

/// Circular cone from the origin that holds a run of patches: a ray outside meets none of them.
struct RayCone
{
    double axis[3] = {};      ///< unit vector in (P, M3, M2)
    double leastCosine = -1;  ///< of a ray inside with the axis
};

}  // namespace qvx

/// Interaction curve of one direction of the neutral axis, from pure compression to pure tension.
struct P_M_Int
{
    double angle = 0;  ///< of the compression side from +y towards +z [rad]
    double cap = 0;    ///< largest phi Pn of the section [kip]
    std::vector<P_M_Point> points;
    std::vector<qvx::RayCone> cones;  ///< of the patches to the next curve, kPatchesPerCone at a time; may be empty
};

/// Interaction surface of a section.
struct P_M_Sect
{
    std::wstring name;
    double cap = 0;  ///< largest phi Pn [kip]
    std::vector<P_M_Int> curves;
};

/// Factored load of a column, compression positive, moments as in P_M_Point.
struct jxSectionLoad
{
    double P = 0;   ///< [kip]
    double M3 = 0;  ///< [kip-ft]
    double M2 = 0;
};

namespace qvx {

inline constexpr std::size_t kPatchesPerCone = 8;

/// How finely surfaces are sampled and by which rules.
struct SurfaceRules
{
    int code = 6;
    int steps[3] = {16, 50, 20};      ///< angles; strains down to the tension-controlled limit; and from there on
    bool isDisplacedExcluded = true;  ///< the concrete that bars displace carries nothing
};

/// Place of one bar from the middle of the section: z along the width, y along the depth [in].
struct BarPlace
{
    double z = 0;
    double y = 0;
};

/// Rectangle: nx bars at equal steps along top and bottom, ny along each side, corners shared, centres `cover` from the
/// faces. Round: the first bar on +y, the others at equal angles on the circle of D/2 - `cover`.
std::vector<BarPlace> BarPlaces(const jxConcreteSection& section);

/// Interaction surface by strain compatibility: plane strains of 0.003 at the extreme fibre, bars elastic up to fy, the
/// rectangular block under 0.85 f'c, each point times its strength reduction factor.
///
/// One curve per angle, and along it equal steps of u = dt/c, c the depth of the neutral axis and dt that of the extreme
/// tension bar: u = 0 (pure compression) to that of the limit strain, then down to c = 0 (all bars at -fy). The points are
/// not cut at the cap 0.80 (spiral 0.85) phi Po, Po = 0.85 f'c (Ag - Ast) + fy Ast.
/// Source: ACI 318-19, 22.2, 22.4, 21.2; 318-11, 10.2, 10.3, 9.3.
P_M_Sect InteractionSurface(const jxConcreteSection& section, const SurfaceRules& rules);

/// Ratio of a load to the strength on the ray through it; 0 without load, 999.9 when the ray meets no patch.
///
/// A patch between two curves and two of their points is four triangles from its corners to their mean. The cap counts
/// beside the surface: the ratio is P/cap where that is larger.
double CapacityRatio(const std::vector<P_M_Int>& curves, const jxSectionLoad& load);

inline constexpr double kNoCapacity = 999.9;

/// Forms the cones of all curves, so that CapacityRatio looks at a few patches instead of all.
void FormCones(std::vector<P_M_Int>& curves);

}  // namespace qvx
