#pragma once

#include <filesystem>

#include "platform/export.h"

namespace qvx {

/// File of the machine settings: the one named by the environment variable QVXFEM_PREFERENCES, else
/// qvxfem/preferences.ini in the user's configuration folder ($XDG_CONFIG_HOME, ~/.config, %APPDATA%).
/// Empty when there is no such folder.
QVXFEM_API std::filesystem::path PreferencesFile();

}  // namespace qvx
