#include "record_counts.h"

#include <algorithm>
#include <cassert>

#include <fmt/format.h>

namespace qvx::app {
namespace {

// A line stays readable on a terminal.
constexpr int kMostRuns = 8;

template <class Record>
void AddCount(std::vector<std::string>& lines, const std::vector<Record>& records, const char* one, const char* many)
{
    if (records.empty())
        return;
    std::vector<int> ids;
    ids.reserve(records.size());
    for (const Record& record : records)
        ids.push_back(record.id);
    lines.push_back(fmt::format("{} {}: {}", ids.size(), ids.size() == 1 ? one : many, IdRanges(ids)));
}

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

std::vector<std::string> RecordCounts(const CjxStruct& model)
{
    std::vector<std::string> lines;
    AddCount(lines, model.nodes, "node", "nodes");
    AddCount(lines, model.supports, "support", "supports");
    AddCount(lines, model.beams, "member", "members");
    AddCount(lines, model.shell3s, "three-node shell", "three-node shells");
    AddCount(lines, model.shell4s, "shell", "shells");
    AddCount(lines, model.bricks, "brick", "bricks");
    return lines;
}

}  // namespace qvx::app
