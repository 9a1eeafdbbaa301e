#include "platform/ini_file.h"

#include <algorithm>
#include <fstream>

#include "platform/cstring.h"

namespace qvx {

namespace {

std::wstring Trimmed(const std::wstring& text)
{
    return CString(text).Trim().Text();
}

bool IsSameName(const std::wstring& a, const std::wstring& b)
{
    return CompareNoCase(a.c_str(), b.c_str()) == 0;
}

}  // namespace

const std::wstring* IniSection::Find(const std::wstring& key) const
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const IniEntry& e) { return IsSameName(e.key, key); });
    return found == entries.end() ? nullptr : &found->value;
}

std::optional<std::vector<IniSection>> ReadIniFile(const std::filesystem::path& file)
{
    std::ifstream in(file);
    if (!in)
        return std::nullopt;
    std::vector<IniSection> sections;
    for (std::string line; std::getline(in, line);) {
        const std::wstring text = Trimmed(FromUtf8(line));
        if (text.empty() || text.front() == L';' || text.front() == L'#')
            continue;
        const auto equals = text.find(L'=');
        if (text.front() == L'[' && text.back() == L']')
            sections.push_back({Trimmed(text.substr(1, text.size() - 2)), {}});
        // What is no entry is passed over: these files are written by hand.
        else if (!sections.empty() && equals != std::wstring::npos)
            sections.back().entries.push_back({Trimmed(text.substr(0, equals)), Trimmed(text.substr(equals + 1))});
    }
    return sections;
}

/// A file has few sections and is read once: a search through all of them is the shortest.
const IniSection* FindSection(const std::vector<IniSection>& sections, const std::wstring& name)
{
    const auto found =
        std::find_if(sections.begin(), sections.end(), [&](const IniSection& s) { return IsSameName(s.name, name); });
    return found == sections.end() ? nullptr : &*found;
}

}  // namespace qvx
