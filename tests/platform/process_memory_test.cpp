// What the summary of a run calls its memory.
#include "platform/process_memory.h"

#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temporary_folder.h"

namespace qvx {
namespace {

constexpr std::uint64_t kMegabyte = 1 << 20;

// Memory is not taken before it is written to.
void Take(std::size_t megabytes)
{
    std::vector<char> memory(megabytes * kMegabyte, 1);
    volatile char last = memory.back();
    (void)last;
}

TEST(ProcessMemory, TablesOfTheKernelAreReadByName)
{
    const test::TemporaryFolder folder;
    folder.Write("table", "Name:\tqvxfem\nVmHWM:\t  12345 kB\nVmRSS:\t   1000 kB\nPerCent: 5\n");
    const std::string file = (folder.Path() / "table").string();

    EXPECT_EQ(KernelTableBytes(file.c_str(), "VmHWM:"), 12345u * 1024);
    EXPECT_EQ(KernelTableBytes(file.c_str(), "VmRSS:"), 1000u * 1024);
    EXPECT_EQ(KernelTableBytes(file.c_str(), "VmSwap:"), 0u);
    EXPECT_EQ(KernelTableBytes((folder.Path() / "none").string().c_str(), "VmHWM:"), 0u);
}

TEST(ProcessMemory, PeakStaysWhenTheMemoryIsGivenBack)
{
    Take(64);
    const std::uint64_t peak = PeakMemory();
    EXPECT_GE(peak, 64 * kMegabyte);
    Take(peak / kMegabyte + 64);
    EXPECT_GE(PeakMemory(), peak + 64 * kMegabyte);
}

TEST(ProcessMemory, OtherChildrenDoNotCount)
{
    const std::uint64_t peak = PeakMemory();
    const pid_t child = fork();
    if (child == 0) {
        Take(peak / kMegabyte + 256);
        _exit(0);
    }
    ASSERT_GT(child, 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);

    EXPECT_LT(PeakMemory(), peak + 128 * kMegabyte);
}

TEST(ProcessMemory, TheLargestWorkerCounts)
{
    const std::uint64_t peak = PeakMemory() + 512 * kMegabyte;
    CountWorkerPeak(peak);
    CountWorkerPeak(kMegabyte);

    EXPECT_EQ(PeakMemory(), peak);
}

}  // namespace
}  // namespace qvx
