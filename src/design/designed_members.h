#pragma once

#include "model/jx_struct.h"

namespace qvx {

// Which members have a design of a kind. Null means that the member has one, which stands empty when the member is
// excluded from the analysis; else the reason, half a sentence with the member as its subject: "is a column (design type C)".
// All throw jxException "error finding <name> <id>" for a missing record.

/// Flexural steel of a concrete beam: of f'c above 0, a Rect or a Tee, and no column.
const wchar_t* WhyNoFlexuralDesign(const CjxStruct& model, const jxBm& beam);
/// Bars of a concrete column: of f'c above 0, a Rect or Round, and no beam.
const wchar_t* WhyNoColumnDesign(const CjxStruct& model, const jxBm& beam);
/// Stirrups and ties: beams that are a Rect or a Tee, columns that are a Rect or Round.
const wchar_t* WhyNoShearDesign(const CjxStruct& model, const jxBm& beam);
/// The reason when it is the label alone that keeps a member of steel from a design.
inline constexpr wchar_t kNoShapeOfTheTable[] = L"has a section whose label is no shape of the table";

/// Check of a rolled shape: of a modulus within 10 % of steel's 29000 ksi, with strengths, named in the table.
/// @param ksi  one unit of the model's moduli in ksi: 1 in design units
const wchar_t* WhyNoSteelDesign(const CjxStruct& model, const jxBm& beam, double ksi = 1);

}  // namespace qvx
