// Work that is shared among threads and told in order.
#include <atomic>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tools/parallel.h"

namespace {

using qvx::FormAndTakeInOrder;
using qvx::kBatchSize;

constexpr std::size_t kCounts[] = {0, 1, 255, 256, 1000, kBatchSize, kBatchSize + 1, 5000};

// Sums of doubles depend on their order: equal bits tell that the order did not change.
double SumByThreads(std::size_t count, int threads)
{
    std::vector<double> slots(kBatchSize);
    double sum = 0;
    FormAndTakeInOrder(
        count, threads, [](std::size_t) {},
        [&](std::size_t i, std::size_t slot) { slots[slot] = 1.0 / (3.0 + static_cast<double>(i)); },
        [&](std::size_t, std::size_t slot) { sum += slots[slot]; });
    return sum;
}

TEST(Parallel, EveryItemIsDoneOnce)
{
    for (const std::size_t count : kCounts)
        for (const int threads : {-1, 1, 2, 7}) {
            std::vector<std::atomic<int>> done(count);

            const auto fault = qvx::ForEachInParallel(0, count, threads, [&](std::size_t i) { ++done[i]; });

            EXPECT_FALSE(fault);
            for (const std::atomic<int>& times : done)
                ASSERT_EQ(times, 1);
        }
}

TEST(Parallel, SumsRepeatBitForBitWhateverTheNumberOfThreads)
{
    for (const std::size_t count : kCounts)
        for (const int threads : {2, 3, 8})
            EXPECT_EQ(SumByThreads(count, threads), SumByThreads(count, 1));
}

// Two items fail, the later one perhaps first: only the earlier is told, after all that comes before it.
TEST(Parallel, FaultComesInThePlaceOfItsItem)
{
    for (const int threads : {1, 2, 5}) {
        std::vector<std::string> told, expected;
        for (int i = 0; i <= 1700; ++i) {
            expected.push_back("before " + std::to_string(i));
            expected.push_back(i < 1700 ? "take " + std::to_string(i) : "fault 1700");
        }

        try {
            FormAndTakeInOrder(
                3000, threads, [&](std::size_t i) { told.push_back("before " + std::to_string(i)); },
                [](std::size_t i, std::size_t) {
                    if (i == 1700 || i == 1990)
                        throw std::runtime_error("fault " + std::to_string(i));
                },
                [&](std::size_t i, std::size_t) { told.push_back("take " + std::to_string(i)); });
        } catch (const std::runtime_error& fault) {
            told.push_back(fault.what());
        }

        EXPECT_EQ(told, expected);
    }
}

// Every item is added in order to every number it concerns, whichever share that number is in.
TEST(Parallel, SharesHoldEachNumberOnceAndKeepTheOrderOfSums)
{
    constexpr int kNumbers = 100;
    const auto sums = [&](std::size_t count, int threads) {
        std::vector<double> sum(kNumbers);
        qvx::AddInShares(count, threads, [&](std::size_t i, qvx::Share share) {
            for (int number = 0; number < kNumbers; ++number)
                if (share.Has(number))
                    sum[static_cast<std::size_t>(number)] += 1.0 / (3.0 + static_cast<double>(i) + number);
        });
        return sum;
    };
    for (const std::size_t count : kCounts)
        for (const int threads : {-1, 2, 3, 8})
            EXPECT_EQ(sums(count, threads), sums(count, 1));
}

}  // namespace
