#include "tools/parallel.h"

#include <algorithm>
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
            return {.index = i, .what = std::current_exception()};
        }
    }
    return {};
}

}  // namespace

ParallelFault ForEachInParallel(std::size_t first, std::size_t last, int threads,
                                const std::function<void(std::size_t)>& work)
{
    const std::size_t count = last - first;
    const std::size_t wanted = static_cast<std::size_t>(std::max(threads, 1));
    const std::size_t parts = std::clamp<std::size_t>(count / kLeastPart, 1, wanted);
    const auto start = [&](std::size_t part) { return first + count * part / parts; };
    std::vector<ParallelFault> faults(parts);
    std::vector<std::thread> team;
    team.reserve(parts);
    for (std::size_t part = 1; part < parts; ++part) {
        const auto doPart = [&, part] { faults[part] = DoPart(start(part), start(part + 1), work); };
        try {
            team.emplace_back(doPart);
        } catch (const std::system_error&) {
            doPart();
        }
    }
    faults[0] = DoPart(first, start(1), work);
    for (std::thread& member : team)
        member.join();
    const auto fault = std::find_if(faults.begin(), faults.end(), [](const ParallelFault& f) { return bool(f); });
    return fault == faults.end() ? ParallelFault{} : *fault;
}

}  // namespace qvx
