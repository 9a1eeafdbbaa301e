#pragma once

#include <vector>

#include "model/records/comb_result.h"
#include "model/records/design_criteria.h"
#include "model/records/envelope.h"
#include "model/records/load.h"
#include "model/records/property.h"
#include "model/records/spring.h"
#include "platform/cstring.h"
#include "quad/double128.h"
#include "tools/jx_point.h"

namespace qvx {

/// Factors of a conversion, indexed by Quantity: value in to-units = f[quantity] * value in from-units.
using ConversionFactors = const double (&)[18];

/// Each function multiplies the dimensional numbers of its records by their factors, in place. Ids, flags, angles
/// and ratios stay as they are.
void ConvertCoordinates(jxPoint& point, ConversionFactors f);
/// Distances of grid lines "count@value,...": rebuilt with three decimals. A text that is no list stays as it is.
void ConvertListText(CString& text, ConversionFactors f);
void ConvertRecord(jxMat& material, ConversionFactors f);
void ConvertRecord(jxSect& section, ConversionFactors f);
void ConvertRecord(jxCoupledSpring& spring, ConversionFactors f);
void ConvertRecord(jxBmRcCrit& criterion, ConversionFactors f);
void ConvertRecord(jxColRcCrit& criterion, ConversionFactors f);
void ConvertRecord(jxPlateRcCrit& criterion, ConversionFactors f);
void ConvertRecord(jxSteelCrit& criterion, ConversionFactors f);

void ConvertLoads(jxCaseLoad& loads, ConversionFactors f);

void ConvertResults(jxCombResult& result, ConversionFactors f);
void ConvertResults(jxMaxBmVMD& envelope, ConversionFactors f);
void ConvertResults(jxWoodArmer& moments, ConversionFactors f);
/// Modal displacements and forces; eigenvalue and participation have no unit of the sets.
void ConvertResults(jxResponseSpectrumResult& mode, ConversionFactors f);
/// Displacements by equation, as a solve leaves them in the load vectors.
/// @param idTable  per DOF the equation by 1-based node position, 0 where there is none
void ConvertDisplacements(std::vector<double128>& byEquation, const std::vector<int> (&idTable)[6],
                          ConversionFactors f);

}  // namespace qvx
