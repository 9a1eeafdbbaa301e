#include "model/records/finding.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace qvx {

void Finding::About(const wchar_t* kind, int id)
{
    assert(kind != nullptr && "a record is named by its kind");
    // Counted beyond what is kept: a fault of every element is one finding with a few names and a number.
    if (++count <= kMostRecords)
        records.push_back({kind, id});
    assert(records.size() <= kMostRecords && records.size() <= count);
}

void FindingList::Add(Finding finding)
{
    // Behind those of its own stage: reading, check and run stand in the order in which they happened, and within each
    // in that of their telling.
    const auto isLater = [&](const Finding& other) { return other.stage > finding.stage; };
    findings_.insert(std::find_if(findings_.begin(), findings_.end(), isLater), std::move(finding));
    assert(std::is_sorted(findings_.begin(), findings_.end(),
                          [](const Finding& a, const Finding& b) { return a.stage < b.stage; }) &&
           "stages stand in their order");
}

void FindingList::Drop(FindingStage stage)
{
    std::erase_if(findings_, [stage](const Finding& finding) { return finding.stage == stage; });
    assert(std::is_sorted(findings_.begin(), findings_.end(),
                          [](const Finding& a, const Finding& b) { return a.stage < b.stage; }) &&
           "stages stand in their order");
}

std::size_t FindingList::Count(Severity severity) const
{
    return static_cast<std::size_t>(
        std::count_if(begin(), end(), [severity](const Finding& finding) { return finding.severity == severity; }));
}

}  // namespace qvx
