#pragma once

#include "files/json_document.h"
#include "model/jx_struct.h"

namespace qvx {

/// What only the text of a model file tells: which keys were left out.

/// Length or Force in a unit of choice, and quantities composed of them left at inch and pound.
/// @param units  the object of the file, read into the model already
void FindUnitsLeftOut(const Json& units, CjxStruct& model);

/// Line loads whose value1 is given and whose value2 is not: it is 0, and the load a triangle.
/// @param caseLoad  the object of the file
/// @param path      of the object
void FindValuesLeftOut(const Json& caseLoad, const JsonPath& path, CjxStruct& model);

/// A model without combinations gets one for each load case, of its label and factor 1.
void AddMissingCombinations(CjxStruct& model);

}  // namespace qvx
