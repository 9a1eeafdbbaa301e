#include "sparse/worker_process.h"

#include <vector>

#include <gtest/gtest.h>

#include "platform/process_memory.h"

namespace qvx {
namespace {

TEST(WorkerProcess, ItsMemoryCountsOnceItHasEnded)
{
    constexpr std::uint64_t kMore = 256u << 20;
    const std::uint64_t before = PeakMemory();
    WorkerProcess worker;
    ASSERT_TRUE(worker.Start([&](int line) {
        const std::vector<char> memory(before + kMore, 1);
        char packet = memory.back();
        WorkerProcess::Send(line, &packet, 1);
        WorkerProcess::Receive(line, &packet, 1);
    }));
    char packet = 0;
    ASSERT_EQ(worker.Receive(&packet, 1, 60000), WorkerProcess::Arrival::Packet);
    worker.Kill();

    EXPECT_GE(PeakMemory(), before + kMore);
}

}  // namespace
}  // namespace qvx
