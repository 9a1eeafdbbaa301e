#include "platform/preferences_file.h"

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "platform/cstring.h"

namespace qvx {

namespace {

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsSameName(std::string_view utf8, const std::wstring& name)
{
    return CompareNoCase(FromUtf8(utf8).c_str(), name.c_str()) == 0;
}

// Folder named by an environment variable, with a folder below it; empty when the variable is not set.
std::filesystem::path FolderFromEnvironment(const char* variable, const char* below)
{
    const char* value = std::getenv(variable);
    return value == nullptr || *value == 0 ? std::filesystem::path() : std::filesystem::path(value) / below;
}

int IntegerOr(std::string_view text, int defaultValue)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : defaultValue;
}

}  // namespace

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

int ReadIniInteger(const std::filesystem::path& file, const std::wstring& section, const std::wstring& key,
                   int defaultValue)
{
    std::ifstream in(file);
    bool isInSection = false;
    for (std::string line; std::getline(in, line);) {
        const std::string_view text = Trimmed(line);
        if (text.empty() || text.front() == ';' || text.front() == '#')
            continue;
        if (text.front() == '[') {
            isInSection = text.back() == ']' && IsSameName(Trimmed(text.substr(1, text.size() - 2)), section);
            continue;
        }
        const auto equals = text.find('=');
        if (isInSection && equals != std::string_view::npos && IsSameName(Trimmed(text.substr(0, equals)), key))
            return IntegerOr(Trimmed(text.substr(equals + 1)), defaultValue);
    }
    return defaultValue;
}

}  // namespace qvx
