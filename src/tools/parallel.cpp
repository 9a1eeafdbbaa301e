#include "tools/parallel.h"

#include <algorithm>
#include <cassert>
#include <system_error>
#include <thread>
#include <vector>

namespace qvx {

namespace {

constexpr std::size_t kLeastPart = 128;  // items below which starting a thread costs more than it saves

ParallelFault DoPart(std::size_t first, std::size_t last, const std::function<void(std::size_t)>& work)
{
    for (std::size_t i = first; i < last; ++i) {
        try {
            work(i);
        } catch (...) {
            // The rest of the part is left: what comes behind a fault is never taken.
            return {.index = i, .what = std::current_exception()};
        }
    }
    return {};
}

}  // namespace

void RunInParallel(int parts, const std::function<void(int)>& work)
{
    std::vector<std::thread> team;
    team.reserve(static_cast<std::size_t>(std::max(parts, 1)));
    for (int part = 1; part < parts; ++part) {
        try {
            team.emplace_back(work, part);
            // No thread to be had: the part is done here, and the result is the same.
        } catch (const std::system_error&) {
            work(part);
        }
    }
    if (parts > 0)
        work(0);
    for (std::thread& member : team)
        member.join();
}

void AddInShares(std::size_t count, int threads, const std::function<void(std::size_t, Share)>& add)
{
    // Every thread walks through all items and takes the numbers of its share: nothing is locked, and a number gets its
    // terms in the order of the items whatever the count of threads.
    const int parts = count < 2 * kLeastPart ? 1 : std::max(threads, 1);
    RunInParallel(parts, [&](int part) {
        for (std::size_t i = 0; i < count; ++i)
            add(i, {.part = part, .parts = parts});
    });
}

ParallelFault ForEachInParallel(std::size_t first, std::size_t last, int threads,
                                const std::function<void(std::size_t)>& work)
{
    assert(first <= last);
    const std::size_t count = last - first;
    const std::size_t wanted = static_cast<std::size_t>(std::max(threads, 1));
    const std::size_t parts = std::clamp<std::size_t>(count / kLeastPart, 1, wanted);
    const auto start = [&](std::size_t part) { return first + count * part / parts; };
    std::vector<ParallelFault> faults(parts);
    RunInParallel(static_cast<int>(parts), [&](int number) {
        const auto part = static_cast<std::size_t>(number);
        faults[part] = DoPart(start(part), start(part + 1), work);
    });
    assert(start(0) == first && start(parts) == last && "the parts are all there is");
    // Parts ascend, so the first part with a fault has the first item with one.
    const auto fault = std::find_if(faults.begin(), faults.end(), [](const ParallelFault& f) { return bool(f); });
    return fault == faults.end() ? ParallelFault{} : *fault;
}

}  // namespace qvx
