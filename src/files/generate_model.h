#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/jx_struct.h"
#include "platform/export.h"
#include "platform/file_error.h"

namespace qvx {

/// Names of the generators: "frame", "shell", "arc", "circular-frame", "submesh".
QVXFEM_API std::vector<std::string> GeneratorKinds();

/// Each generator with its arguments, their kinds and meanings, a line each.
QVXFEM_API std::string GeneratorUsage();

/// Makes a regular structure as a model of its own: the records of a generator (operations/generators.h), sorted by id,
/// a default material, section or thickness for each id that they name, and the default records of RepaireData.
/// What was in the model before is gone, but for its units.
/// @param kind       one of GeneratorKinds
/// @param arguments  a JSON object, by the parameter names of the generator; what is left out has its default
/// @throws FileError    an unknown kind, bad syntax, an unknown argument, a value of the wrong kind, or arguments whose
///                      records would share an id or name a node that is not there
/// @throws jxException  more records than ids
/// A failure leaves the model as it was.
QVXFEM_API void GenerateModel(std::string_view kind, std::string_view arguments, CjxStruct& model);

}  // namespace qvx
