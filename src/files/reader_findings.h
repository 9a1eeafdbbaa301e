#pragma once

#include <vector>

#include "files/json_document.h"
#include "model/jx_struct.h"

namespace qvx {

/// What only the text of a model file tells: which keys were left out.

/// Quantities composed of a length and a force for which the object "units" of the file names no unit; none where it
/// names a system or is no object.
std::vector<Quantity> QuantitiesLeftOut(const Json& units);

/// Length or Force in a unit of choice, and quantities composed of them left at inch and pound though the model holds
/// numbers of them: 210000 as the modulus of a model in metres and kN is then one of lb/in^2.
/// @param left   what QuantitiesLeftOut gave
/// @param model  read to the end
void FindUnitsLeftOut(const std::vector<Quantity>& left, CjxStruct& model);

/// Line loads whose value1 is given and whose value2 is not: it is 0, and the load a triangle.
/// @param caseLoad  the object of the file
/// @param path      of the object
void FindValuesLeftOut(const Json& caseLoad, const JsonPath& path, CjxStruct& model);

/// A model without combinations gets one for each load case, of its label and factor 1.
void AddMissingCombinations(CjxStruct& model);

}  // namespace qvx
