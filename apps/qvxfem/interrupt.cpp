#include "interrupt.h"

#include <atomic>
#include <csignal>

namespace qvx::app {
namespace {

std::atomic<bool> isInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may touch lock-free atomics only");

extern "C" void OnInterrupt(int signalNumber)
{
    isInterrupted.store(true);
    std::signal(signalNumber, SIG_DFL);
}

}  // namespace

void CatchInterrupt()
{
    std::signal(SIGINT, OnInterrupt);
}

bool IsInterrupted()
{
    return isInterrupted.load();
}

}  // namespace qvx::app
