#pragma once

#include <vector>

#include "model/records/element.h"
#include "model/records/load.h"
#include "platform/export.h"

// Loads of a member that is cut into pieces go to the pieces they act on. All take the loads of one member, its length
// before the cut, the lengths of the pieces from its start, and the pieces themselves as members, the first of which
// keeps the id. A load within 5e-7 of the length behind a cut counts as standing before it. Fractions of a length stay
// fractions, of the piece; lengths stay lengths, from its start.

/// Moves point loads, in place. One of value 0 and one beyond the last piece stay as they are.
/// @param moved  receives whether a load came to another piece than the first: the list is then out of order
QVXFEM_API void split_ptload(bool& moved, std::vector<jxPtLoad>::iterator first, std::vector<jxPtLoad>::iterator last,
                             double length, const std::vector<double>& pieces, const std::vector<jxBm>& newBeams);

/// Appends the parts of line loads, one for each piece that they act on, on the slope of the whole. Loads that are 0 at
/// both ends have none; what acts beyond the last piece is left out.
QVXFEM_API void split_lnload(std::vector<jxLnLoad>& out, std::vector<jxLnLoad>::const_iterator first,
                             std::vector<jxLnLoad>::const_iterator last, double length,
                             const std::vector<double>& pieces, const std::vector<jxBm>& newBeams);

/// Appends each thermal load once for every piece; those of 0 are left out.
QVXFEM_API void split_memberthermalload(std::vector<jxThermalLoad>& out,
                                        std::vector<jxThermalLoad>::const_iterator first,
                                        std::vector<jxThermalLoad>::const_iterator last, double length,
                                        const std::vector<double>& pieces, const std::vector<jxBm>& newBeams);
