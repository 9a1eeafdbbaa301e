#include "files/id_ranges.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include <fmt/format.h>

namespace qvx {
namespace {

// A line stays readable on a terminal.
constexpr int kMostRuns = 8;

}  // namespace

std::string IdRanges(const std::vector<int>& ids)
{
    assert(std::is_sorted(ids.begin(), ids.end()));
    std::string text;
    int nRuns = 0;
    for (auto first = ids.begin(); first != ids.end(); ++nRuns) {
        // Ids that were made in one go are a run or two; a list of a thousand gaps helps nobody.
        if (nRuns == kMostRuns)
            return fmt::format("{}, ... to {}", text, ids.back());
        auto last = first;
        while (std::next(last) != ids.end() && *std::next(last) - *last <= 1)
            ++last;
        text += text.empty() ? "" : ", ";
        text += *first == *last ? fmt::format("{}", *first) : fmt::format("{} to {}", *first, *last);
        first = std::next(last);
    }
    return text;
}

}  // namespace qvx
