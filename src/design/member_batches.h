#pragma once

#include <algorithm>
#include <cassert>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "elements/progress.h"
#include "model/jx_struct.h"
#include "tools/parallel.h"

namespace qvx {

/// Designs items on the threads of the solver and hands their results on in the order of the items: the results of one
/// thread. Between batches the user may stop the run.
/// A fault of a member is thrown when its turn comes, after the results of all members before it were taken: the same
/// one with any number of threads.
/// @param perThread  items of a batch for each thread: as many as take a fraction of a second
/// @param design     design(item) on any thread: std::optional of a result
/// @param take       take(result), in order, on this thread
template <class Item, class Design, class Take>
void DesignInBatches(CjxStruct& model, const std::vector<Item>& items, std::size_t perThread, const Design& design,
                     const Take& take)
{
    assert(perThread > 0 && "a batch has items");
    const int threads = std::max(1, model.SolverThreads());
    const std::size_t batch = perThread * static_cast<std::size_t>(threads);
    std::vector<decltype(design(items.front()))> results(batch);
    PercentCounter progress(model, items.size());
    for (std::size_t first = 0; first < items.size(); first += batch) {
        const std::size_t last = std::min(items.size(), first + batch);
        model.peek_msg();
        const ParallelFault fault =
            ForEachInParallel(first, last, threads, [&](std::size_t i) { results[i - first] = design(items[i]); });
        for (std::size_t i = first; i < last; ++i) {
            progress.Show(i + 1);
            if (fault && fault.index == i)
                std::rethrow_exception(fault.what);
            if (results[i - first])
                take(std::move(*results[i - first]));
        }
    }
}

}  // namespace qvx
