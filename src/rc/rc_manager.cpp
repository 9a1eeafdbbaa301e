#include "rc/rc_manager.h"

#include <optional>
#include <string>

#include "model/records/text_fields.h"
#include "platform/cstring.h"
#include "platform/ini_file.h"
#include "platform/wide_path.h"
#include "tools/list_text.h"

namespace {

using qvx::CompareNoCase;
using qvx::IniEntry;
using qvx::IniSection;

constexpr const wchar_t* kHeadSection = L"RcSections";

// "size = diameter, area"; nothing when it is not that.
std::optional<jxBar> ReadBar(const IniEntry& entry)
{
    std::vector<int> counts;
    std::vector<double> numbers;
    if (!ParseList(counts, numbers, entry.value.c_str()) || numbers.size() != 2 || !(numbers[0] > 0) ||
        !(numbers[1] > 0))
        return std::nullopt;
    jxBar bar;
    SetText(bar.size, entry.key);
    bar.diameter = numbers[0];
    bar.area = numbers[1];
    return bar;
}

std::optional<jxBarDatabase> ReadDatabase(const IniSection& section)
{
    jxBarDatabase database;
    database.name = section.name;
    for (const IniEntry& entry : section.entries) {
        if (CompareNoCase(entry.key.c_str(), L"unit") == 0) {
            database.unit = entry.value;
            continue;
        }
        const std::optional<jxBar> bar = ReadBar(entry);
        if (!bar)
            return std::nullopt;
        database.bars.push_back(*bar);
    }
    const bool isKnownUnit = database.unit == L"in" || database.unit == L"mm";
    return isKnownUnit && !database.bars.empty() ? std::optional(database) : std::nullopt;
}

}  // namespace

bool CjxRcManager::bLoadBarDatabase(std::vector<jxBarDatabase>& databases, int& current, const wchar_t* path)
{
    const auto sections = qvx::ReadIniFile(qvx::PathOf(path));
    if (!sections)
        return false;
    const IniSection* head = qvx::FindSection(*sections, kHeadSection);
    const std::wstring* named = head == nullptr ? nullptr : head->Find(L"current");
    std::vector<jxBarDatabase> read;
    int index = 0;
    for (const IniSection& section : *sections) {
        if (&section == head)
            continue;
        const std::optional<jxBarDatabase> database = ReadDatabase(section);
        if (!database)
            return false;
        if (named != nullptr && CompareNoCase(named->c_str(), section.name.c_str()) == 0)
            index = static_cast<int>(read.size());
        read.push_back(*database);
    }
    if (read.empty())
        return false;
    databases = std::move(read);
    current = index;
    return true;
}
