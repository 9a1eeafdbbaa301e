#include "model/records/finding.h"

#include <algorithm>
#include <utility>

namespace qvx {

void Finding::About(const wchar_t* kind, int id)
{
    if (++count <= kMostRecords)
        records.push_back({kind, id});
}

void FindingList::Add(Finding finding)
{
    const auto isLater = [&](const Finding& other) { return other.stage > finding.stage; };
    findings_.insert(std::find_if(findings_.begin(), findings_.end(), isLater), std::move(finding));
}

void FindingList::Drop(FindingStage stage)
{
    std::erase_if(findings_, [stage](const Finding& finding) { return finding.stage == stage; });
}

std::size_t FindingList::Count(Severity severity) const
{
    return static_cast<std::size_t>(
        std::count_if(begin(), end(), [severity](const Finding& finding) { return finding.severity == severity; }));
}

}  // namespace qvx
