#include "report/report_layout.h"

#include <cassert>
#include <numeric>

namespace qvx {
namespace {

constexpr int kNameWidth = 30;  // a column of text from here on holds names

int SharesOf(int textWidth)
{
    return textWidth >= kNameWidth ? 3 : 1;
}

}  // namespace

std::vector<int> TableShares(std::span<const int> textWidths)
{
    assert(!textWidths.empty() && "a table has columns");
    int total = 0;
    for (const int width : textWidths)
        total += SharesOf(width);
    std::vector<int> percent;
    for (const int width : textWidths)
        percent.push_back(100 * SharesOf(width) / total);
    // Rounding down leaves less than one percent a column: the last columns take it, one each.
    int rest = 100 - std::accumulate(percent.begin(), percent.end(), 0);
    for (std::size_t i = percent.size(); rest > 0 && i > 0; --rest)
        ++percent[--i];
    assert(std::accumulate(percent.begin(), percent.end(), 0) == 100 && "shares of a whole");
    return percent;
}

std::string RuleLine(std::span<const int> textWidths, PerLine perLine)
{
    std::string record;
    for (const int width : textWidths) {
        assert(width > 0 && "a column has room for something");
        record += record.empty() ? "" : " ";
        record.append(static_cast<std::size_t>(width), '-');
    }
    return perLine == PerLine::One ? record : record + std::string(kRecordGap, ' ') + record;
}

}  // namespace qvx
