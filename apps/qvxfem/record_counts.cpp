#include "record_counts.h"

#include <fmt/format.h>

#include "files/id_ranges.h"

namespace qvx::app {
namespace {

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
