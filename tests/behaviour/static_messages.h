#pragma once

#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "support/static_model.h"

namespace qvx::test {

using Lines = std::vector<std::pair<std::wstring, std::wstring>>;

/// A text with the numbers that differ from run to run or machine to machine replaced by #.
inline std::wstring Steady(const std::wstring& text)
{
    static const std::wregex kSeconds(LR"(\d[\d.e+-]* seconds)");
    static const std::wregex kDigits(LR"(^\d+ DIGITS)");
    return std::regex_replace(std::regex_replace(text, kSeconds, L"# seconds"), kDigits, L"# DIGITS");
}

/// List lines of a run from the end of its input check on.
inline Lines LinesAfterCheck(const RecordingWindow& window)
{
    Lines lines;
    bool isAfter = false;
    for (const RecordingWindow::Line& line : window.lines) {
        isAfter = isAfter || line.text == L"FINISHED CHECKING INPUT";
        if (isAfter)
            lines.emplace_back(Steady(line.text), line.status);
    }
    return lines;
}

/// Log entries of a run from the end of its input check on.
inline std::vector<std::string> LogAfterCheck(ModelLog& log)
{
    std::vector<std::string> entries;
    bool isAfter = false;
    for (const std::string& entry : log.Entries()) {
        isAfter = isAfter || entry == "FINISHED CHECKING INPUT - OK";
        if (isAfter)
            entries.push_back(ToUtf8(Steady(FromUtf8(entry))));
    }
    return entries;
}

/// Both lines of an operation that is announced and closed.
inline void AppendBracket(Lines& lines, const std::wstring& text)
{
    lines.emplace_back(text, L"...");
    lines.emplace_back(text, L"OK");
}

}  // namespace qvx::test
