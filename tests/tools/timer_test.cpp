#include "tools/timer.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace {

TEST(Stopwatch, CountsMillisecondsSinceItsRestart)
{
    timer(1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const double first = timer(0);
    EXPECT_GE(first, 20);
    EXPECT_LT(first, 10000);

    EXPECT_GE(timer(0), first);
    timer(1);
    EXPECT_LT(timer(0), first);
}

TEST(Stopwatch, EachThreadHasItsOwn)
{
    timer(1);
    double elsewhere = -1;
    std::thread([&] { elsewhere = timer(0); }).join();
    EXPECT_EQ(elsewhere, 0);
}

}  // namespace
