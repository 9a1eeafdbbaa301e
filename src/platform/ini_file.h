#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/export.h"

namespace qvx {

/// "key = value" of an INI file, without the blanks around both.
struct IniEntry
{
    std::wstring key;
    std::wstring value;
};

/// "[name]" and the entries below it, in the order of the file.
struct IniSection
{
    std::wstring name;
    std::vector<IniEntry> entries;

    /// Value of the first entry with this key, without regard to case; null when there is none.
    QVXFEM_API const std::wstring* Find(const std::wstring& key) const;
};

/// Sections of an INI file in UTF-8; nothing when the file cannot be read. Lines that begin with ; or # are comments,
/// lines before the first section and lines that are no entry are passed over.
QVXFEM_API std::optional<std::vector<IniSection>> ReadIniFile(const std::filesystem::path& file);

/// First section with this name, without regard to case; null when there is none.
QVXFEM_API const IniSection* FindSection(const std::vector<IniSection>& sections, const std::wstring& name);

}  // namespace qvx
