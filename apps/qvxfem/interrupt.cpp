#include "interrupt.h"

#include <atomic>
#include <csignal>

namespace qvx::app {
namespace {

std::atomic<int> received{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch lock-free atomics only");

extern "C" void OnInterrupt(int signalNumber)
{
    received.store(signalNumber);
    std::signal(signalNumber, SIG_DFL);
}

void Catch(int signalNumber)
{
    if (std::signal(signalNumber, OnInterrupt) == SIG_IGN)
        std::signal(signalNumber, SIG_IGN);
}

}  // namespace

void CatchInterrupt()
{
    Catch(SIGINT);
#ifdef SIGHUP
    Catch(SIGTERM);
    Catch(SIGHUP);
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool IsInterrupted()
{
    return received.load() != 0;
}

int InterruptExitCode()
{
    constexpr int kSignal = 128;
    return kSignal + received.load();
}

}  // namespace qvx::app
