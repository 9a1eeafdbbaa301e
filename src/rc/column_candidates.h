#pragma once

#include <vector>

#include "model/records/design_criteria.h"
#include "model/records/design_result.h"

namespace qvx {

/// Shape and material of a column to be reinforced, and how much steel it may have.
struct ColumnShape
{
    int type = jxConcreteSection::kRect;
    double b = 0;  ///< width; of a round section its diameter, as h [in]
    double h = 0;
    double fc = 0;  ///< [ksi]
    double fy = 0;
    double minRho = 0.01;  ///< bounds of bar area over gross area
    double maxRho = 0.08;
};

/// All layouts of equal bars that a criterion allows: every bar size from its start to its end bar, 6 bars or more in a
/// circle, 4 or more in a rectangle, within the bounds of the steel and at a clear distance of one bar diameter or more.
/// @param criterion  its covers in inches, its bars as indices of `bars`
/// Ratios bound the number of bars cut to whole bars; in a circle the lower one does not count.
/// Clear spacing: ACI 318-19, 25.2.3, as far as the bar's diameter goes.
std::vector<jxConcreteSection> ColumnCandidates(const ColumnShape& shape, const jxColRcCrit& criterion,
                                                const jxBarDatabase& bars);

}  // namespace qvx
