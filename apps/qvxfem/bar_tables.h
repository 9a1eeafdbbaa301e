#pragma once

#include <string>

#include "model/jx_struct.h"

namespace qvx::app {

/// The tables of bars compiled into the library, for a model that found no file of them.
void TakeBuiltInBars(CjxStruct& model);

/// Whether a message tells that the file of bars cannot be opened, and none stands beside the program: the built-in tables
/// take its place without a word. A file that stands there and cannot be read is worth telling.
bool IsAboutMissingBarFile(const std::wstring& message);

}  // namespace qvx::app
