#pragma once

#include <string>
#include <vector>

#include "model/records/unit.h"
#include "operations/area_load.h"
#include "platform/export.h"

namespace qvx {

/// Picture of converted area loads as an SVG document, one panel each: the footprint, the sub-areas with their areas, the
/// members, the line loads drawn from their members into the area that they carry, and the totals. What got no load
/// stays hatched. Seen along the normal of the footprint, its edge AB to the right.
QVXFEM_API std::string AreaLoadPicture(const std::vector<AreaLoadOutcome>& outcomes, const jxUnit& units);

}  // namespace qvx
