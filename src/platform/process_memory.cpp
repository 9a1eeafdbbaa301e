#include "platform/process_memory.h"

#include <algorithm>
#include <atomic>
#include <fstream>

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

}  // namespace qvx
