#include "platform/process_memory.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <fstream>

#include <sys/mman.h>
#include <sys/resource.h>

namespace qvx {

namespace {

std::atomic<std::uint64_t>& WorkerPeak()
{
    static std::atomic<std::uint64_t> peak{0};
    return peak;
}

}  // namespace

std::uint64_t KernelTableBytes(const char* file, const std::string& name)
{
    std::ifstream in(file);
    std::string word;
    while (in >> word) {
        std::uint64_t kilobytes = 0;
        if (word == name && in >> kilobytes)
            return kilobytes * 1024;
        // The rest of the line holds the value and its unit; lines of these tables are short.
        in.ignore(256, '\n');
    }
    return 0;
}

std::uint64_t PeakMemory()
{
    return std::max(KernelTableBytes("/proc/self/status", "VmHWM:"), WorkerPeak().load());
}

void CountWorkerPeak(std::uint64_t bytes)
{
    // Raised by whoever is higher at that moment: a plain "if" could lose the larger of two workers that end together.
    std::uint64_t peak = WorkerPeak();
    while (bytes > peak && !WorkerPeak().compare_exchange_weak(peak, bytes)) {
    }
}

bool IsAddressSpaceLimited()
{
    rlimit limit{};
    return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

bool HasAddressSpace(std::size_t bytes)
{
    assert(bytes > 0 && "the system maps no empty piece");
    void* trial = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (trial == MAP_FAILED)
        return false;
    munmap(trial, bytes);
    return true;
}

}  // namespace qvx
