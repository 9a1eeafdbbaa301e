#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace qvx {

/// File of the machine settings: the one named by the environment variable QVXFEM_PREFERENCES, else
/// qvxfem/preferences.ini in the user's configuration folder ($XDG_CONFIG_HOME, ~/.config, %APPDATA%).
/// Empty when there is no such folder.
QVXFEM_API std::filesystem::path PreferencesFile();

/// Integer of "key = value" under "[section]" of an INI file in UTF-8; names compare without regard to case, lines
/// that begin with ; or # are comments. The default when file, section or key is missing or the value is no integer.
QVXFEM_API int ReadIniInteger(const std::filesystem::path& file, const std::wstring& section, const std::wstring& key,
                              int defaultValue);

}  // namespace qvx
