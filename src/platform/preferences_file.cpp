#include "platform/preferences_file.h"

#include <cstdlib>

namespace qvx {

namespace {

/// Folder named by an environment variable, with a folder below it; empty when the variable is not set.
std::filesystem::path FolderFromEnvironment(const char* variable, const char* below)
{
    const char* value = std::getenv(variable);
    return value == nullptr || *value == 0 ? std::filesystem::path() : std::filesystem::path(value) / below;
}

}  // namespace

/// The order is that of the XDG base directory specification (freedesktop.org, 0.8), then the folder of other systems.
std::filesystem::path PreferencesFile()
{
    if (const char* named = std::getenv("QVXFEM_PREFERENCES"); named != nullptr && *named != 0)
        return named;
    for (const auto& folder :
         {FolderFromEnvironment("XDG_CONFIG_HOME", "qvxfem"), FolderFromEnvironment("HOME", ".config/qvxfem"),
          FolderFromEnvironment("APPDATA", "qvxfem")})
        if (!folder.empty())
            return folder / "preferences.ini";
    return {};
}

}  // namespace qvx
