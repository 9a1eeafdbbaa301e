#pragma once

#include "model/records/load.h"
#include "model/records/property.h"
#include "model/records/unit.h"
#include "platform/export.h"

namespace qvx {

/// Records that stand in where a model has none of a kind: id 1, label "Default", ordinary values in the given units,
/// so that an unused one does not make the model invalid.
///
/// Material: steel with E 29000 ksi, nu 0.3, 490 lb/ft^3, 6.5e-6 per degree F, fy 50 ksi, and concrete of 4 ksi.
/// Section: rectangle 12 in by 12 in, shear areas 5/6 A, J = 0.1406 b^4 (Timoshenko & Goodier, Theory of Elasticity,
/// 3rd ed. (1970), section 109). Thickness: 8 in.
QVXFEM_API jxMat DefaultMaterial(const jxUnit& units);
QVXFEM_API jxSect DefaultSection(const jxUnit& units);
QVXFEM_API jxThick DefaultThickness(const jxUnit& units);
/// Dead load case.
QVXFEM_API jxLoadCase DefaultLoadCase();
/// Combination of factor 1.0 on one load case.
QVXFEM_API jxLoadComb DefaultLoadCombination(const jxLoadCase& loadCase);

}  // namespace qvx
