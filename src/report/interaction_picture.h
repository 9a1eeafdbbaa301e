#pragma once

#include <filesystem>
#include <string>

#include "design/explanation.h"
#include "platform/export.h"

namespace qvx {

/// Interaction diagram of a column as an SVG document: P over M3, P over M2 and the slice at the governing P, each with the
/// loads of all combinations and stations, the governing one marked.
///
/// The curves are the surface's own: those of the directions in which the section bends about one axis, and in the slice
/// the points of all directions at that P. Axial strength above the cap of the code is dashed.
/// @param title  one line above the diagrams
QVXFEM_API std::string InteractionPicture(const ColumnPicture& picture, const std::string& title);

/// The same into a file that appears when it is whole. Throws FileError.
QVXFEM_API void WriteInteractionPicture(const std::filesystem::path& path, const ColumnPicture& picture,
                                        const std::string& title);

}  // namespace qvx
