#include "rc/bar_file.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

#include "platform/cstring.h"
#include "rc/built_in_bars.h"

namespace qvx {
namespace {

constexpr double kMillimeter = 0.03937007874015748;  // in inches

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsSame(std::string_view a, std::string_view b)
{
    return CompareNoCase(FromUtf8(a).c_str(), FromUtf8(b).c_str()) == 0;
}

/// The number that the text is, no more and no less.
template <class Value>
std::optional<Value> NumberOf(std::string_view text)
{
    Value value{};
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    return fault == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

struct Entry
{
    std::string_view key;
    std::string_view value;
};

std::optional<Entry> EntryOf(std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return std::nullopt;
    return Entry{Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1))};
}

/// Reads line by line; a line that cannot be read ends it.
class BarFileReader
{
public:
    bool Take(std::string_view line);
    std::optional<BarTables> Finish();

private:
    bool TakeHeading(std::string_view name);
    bool TakeHead(const Entry& entry);
    bool TakeUnit(std::string_view name);
    bool TakeBar(const Entry& entry);
    bool IsTableWhole() const { return !isInTable_ || !tables_.databases.back().bars.empty(); }

    BarTables tables_;
    std::string_view current_;
    bool isInHead_ = false;
    bool isInTable_ = false;
    double unit_ = 0;  ///< of the table in inches; 0 until it is told
};

bool BarFileReader::Take(std::string_view line)
{
    // A comment goes to the end of its line, behind an entry too.
    const std::string_view text = Trimmed(line.substr(0, line.find(';')));
    if (text.empty())
        return true;
    if (text.front() == '[')
        return text.back() == ']' && TakeHeading(Trimmed(text.substr(1, text.size() - 2)));
    const std::optional<Entry> entry = EntryOf(text);
    if (!entry)
        return false;
    if (isInHead_)
        return TakeHead(*entry);
    if (!isInTable_)
        return false;
    return IsSame(entry->key, "unit") ? TakeUnit(entry->value) : TakeBar(*entry);
}

bool BarFileReader::TakeHeading(std::string_view name)
{
    // A table without a bar is an unfinished file: it ends the reading as a bad line does.
    if (name.empty() || !IsTableWhole())
        return false;
    isInHead_ = IsSame(name, "RcSections");
    isInTable_ = !isInHead_;
    unit_ = 0;
    if (isInTable_)
        tables_.databases.push_back({.name = FromUtf8(name), .bars = {}});
    return true;
}

bool BarFileReader::TakeHead(const Entry& entry)
{
    if (IsSame(entry.key, "version"))
        return entry.value == "1";
    if (!IsSame(entry.key, "current"))
        return false;
    current_ = entry.value;
    return true;
}

bool BarFileReader::TakeUnit(std::string_view name)
{
    if (unit_ != 0)
        return false;
    unit_ = name == "in" ? 1 : name == "mm" ? kMillimeter : 0;
    return unit_ != 0;
}

bool BarFileReader::TakeBar(const Entry& entry)
{
    const std::size_t comma = entry.value.find(',');
    if (unit_ == 0 || comma == std::string_view::npos)
        return false;
    const auto size = NumberOf<int>(entry.key);
    const auto diameter = NumberOf<double>(Trimmed(entry.value.substr(0, comma)));
    const auto area = NumberOf<double>(Trimmed(entry.value.substr(comma + 1)));
    const auto isUsable = [](const std::optional<double>& value) {
        return value && *value > 0 && std::isfinite(*value);
    };
    if (!size || !isUsable(diameter) || !isUsable(area))
        return false;
    std::vector<jxBar>& bars = tables_.databases.back().bars;
    // Sorted by size: criteria name bars by their place in the table, and a later search by size is binary.
    const auto place =
        std::lower_bound(bars.begin(), bars.end(), *size, [](const jxBar& bar, int key) { return bar.size < key; });
    // Two bars of one size would make the choice depend on the order of the lines.
    if (place != bars.end() && place->size == *size)
        return false;
    bars.insert(place, {.size = *size, .diameter = *diameter * unit_, .area = *area * unit_ * unit_});
    return true;
}

std::optional<BarTables> BarFileReader::Finish()
{
    if (!IsTableWhole())
        return std::nullopt;
    const std::wstring current = FromUtf8(current_);
    const auto& databases = tables_.databases;
    const auto found = std::find_if(databases.begin(), databases.end(), [&](const jxBarDatabase& database) {
        return CompareNoCase(database.name.c_str(), current.c_str()) == 0;
    });
    if (!databases.empty())
        tables_.current = found == databases.end() ? 0 : static_cast<int>(found - databases.begin());
    return tables_;
}

}  // namespace

std::optional<BarTables> ReadBarTables(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    BarFileReader reader;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (!reader.Take(text.substr(0, end)))
            return std::nullopt;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return reader.Finish();
}

const BarTables& BuiltInBarTables()
{
    static const BarTables tables = [] {
        const std::optional<BarTables> read = ReadBarTables(BuiltInBarFile());
        assert(read.has_value() && "the file of the source tree is read by a test");
        return *read;
    }();
    return tables;
}

}  // namespace qvx
