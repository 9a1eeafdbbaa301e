#pragma once

#include <string>

#include "platform/export.h"

namespace qvx {

/// JSON Schema (draft 2020-12) of the model file and of the results file, formed from the catalogue of fields. No key
/// beyond those listed may stand in a file. Beside the keywords of the draft a property has, where they apply,
///   unit      the quantity of its numbers ("Dimension^4"; by number or by direction where they differ)
///   refersTo  what its number or text names ("node")
///   written   when the model file holds it, if not always
/// A results file has all keys but those that are written only where they say something.
QVXFEM_API std::string ModelFileSchema();
QVXFEM_API std::string ResultsFileSchema();

}  // namespace qvx
