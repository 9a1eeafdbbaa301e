#include "rc/rc_manager.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "platform/cstring.h"
#include "platform/wide_path.h"
#include "rc/bar_file.h"
#include "tools/parallel.h"

void CjxRcManager::SetCallbacks(Message status, ListMessage list)
{
    status_ = std::move(status);
    list_ = std::move(list);
}

void CjxRcManager::SetSolverSteps(int angleSteps, int upperSteps, int lowerSteps)
{
    rules_.steps[0] = angleSteps;
    rules_.steps[1] = upperSteps;
    rules_.steps[2] = lowerSteps;
}

void CjxRcManager::SetCurrentBarDatabase(int current, const std::vector<jxBarDatabase>& databases)
{
    bars_ = databases.at(static_cast<std::size_t>(current));
}

void CjxRcManager::TakeBarAreas()
{
    for (jxConcreteSection& section : sections_) {
        // Candidates name bars by size; the table may have been changed since they were made.
        const auto bar = std::find_if(bars_.bars.begin(), bars_.bars.end(),
                                      [&](const jxBar& b) { return b.size == section.barSize; });
        if (bar == bars_.bars.end())
            continue;
        section.barArea = bar->area;
        section.steelArea = section.barCount * bar->area;
    }
}

void CjxRcManager::Execute()
{
    const auto told = [&](const wchar_t* outcome) {
        if (list_)
            list_(L"FORMING COLUMN INTERACTION SURFACES", outcome);
    };
    told(L"...");
    TakeBarAreas();
    surfaces_.assign(sections_.size(), {});
    // Short batches: a wish to stop is heard within a fraction of a second.
    constexpr std::size_t kBatch = 256;
    for (std::size_t first = 0; first < sections_.size(); first += kBatch) {
        const std::size_t last = std::min(first + kBatch, sections_.size());
        if (status_) {
            CString text;
            text.Format(L"Interaction surface %d of %d", static_cast<int>(first + 1),
                        static_cast<int>(sections_.size()));
            status_(text);
        }
        const qvx::ParallelFault fault = qvx::ForEachInParallel(first, last, threads_, [&](std::size_t i) {
            surfaces_[i] = qvx::InteractionSurface(sections_[i], rules_);
        });
        if (fault)
            std::rethrow_exception(fault.what);
    }
    told(L"OK");
}

bool CjxRcManager::CheckCapacity(double& ratio, const std::vector<P_M_Int>& surface, const jxSectionLoad& load)
{
    ratio = qvx::CapacityRatio(surface, load);
    // On the surface is within it.
    return ratio <= 1;
}

bool CjxRcManager::bLoadBarDatabase(std::vector<jxBarDatabase>& databases, int& current, const wchar_t* path)
{
    std::ifstream file(qvx::PathOf(path), std::ios::binary);
    if (!file)
        return false;
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::optional<qvx::BarTables> tables = file.bad() ? std::nullopt : qvx::ReadBarTables(text);
    if (!tables)
        return false;
    databases = std::move(tables->databases);
    current = tables->current;
    return true;
}
