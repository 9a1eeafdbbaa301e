#pragma once

#include <cstddef>
#include <exception>
#include <functional>

namespace qvx {

/// The first item, in their order, whose work threw.
struct ParallelFault
{
    std::size_t index = 0;
    std::exception_ptr what;

    /// Whether something was thrown.
    explicit operator bool() const { return what != nullptr; }
};

/// Calls work(0) to work(parts - 1) on as many threads, work(0) on this one. Where the system gives no thread a part
/// is done here. work must not throw.
void RunInParallel(int parts, const std::function<void(int)>& work);

/// One of several threads' share of what is numbered: runs of 16 in turn, so that neighbours mostly stay together.
struct Share
{
    int part = 0;
    int parts = 1;

    /// Whether a number from 0 on belongs to this part; every number belongs to exactly one.
    bool Has(int number) const { return parts == 1 || (number / 16) % parts == part; }
};

/// Calls add(i, share) for all i < count in their order, once for each share of what they are added to: the shares
/// side by side, so that every sum is that of one thread.
void AddInShares(std::size_t count, int threads, const std::function<void(std::size_t, Share)>& add);

/// Calls work(i) for first <= i < last: consecutive parts on as many threads, this one among them. All items before the
/// first one that throws are done; what it threw is returned.
ParallelFault ForEachInParallel(std::size_t first, std::size_t last, int threads,
                                const std::function<void(std::size_t)>& work);

/// Items that are formed side by side but told and taken one after the other, so that messages, sums and faults come as
/// from a loop over one item at a time, whatever the number of threads.
/// @param before  before(i), in order: progress and the wish to stop
/// @param form    form(i, slot), on any thread: no two items of a batch share a slot, slot < kBatchSize
/// @param take    take(i, slot), in order; an exception of form(i) comes in its place
/// @param finish  finish(first, last), once a batch is taken: what it may do with slots 0 to last - first on threads
template <class Before, class Form, class Take, class Finish>
void FormAndTakeInOrder(std::size_t count, int threads, const Before& before, const Form& form, const Take& take,
                        const Finish& finish);

/// Items that are formed before the first of them is taken: enough to keep threads busy, few enough that what they form
/// stays in the cache of the processor.
inline constexpr std::size_t kBatchSize = 1024;

template <class Before, class Form, class Take, class Finish>
void FormAndTakeInOrder(std::size_t count, int threads, const Before& before, const Form& form, const Take& take,
                        const Finish& finish)
{
    for (std::size_t first = 0; first < count; first += kBatchSize) {
        const std::size_t last = count - first < kBatchSize ? count : first + kBatchSize;
        const ParallelFault fault = ForEachInParallel(first, last, threads, [&](std::size_t i) { form(i, i - first); });
        for (std::size_t i = first; i < last; ++i) {
            before(i);
            if (fault && fault.index == i)
                std::rethrow_exception(fault.what);
            take(i, i - first);
        }
        finish(first, last);
    }
}

/// The same with nothing to do at the end of a batch.
template <class Before, class Form, class Take>
void FormAndTakeInOrder(std::size_t count, int threads, const Before& before, const Form& form, const Take& take)
{
    FormAndTakeInOrder(count, threads, before, form, take, [](std::size_t, std::size_t) {});
}

}  // namespace qvx
