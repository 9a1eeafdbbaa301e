#include "interrupt.h"

#include <atomic>
#include <csignal>

namespace qvx::app {
namespace {

std::atomic<int> received{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch lock-free atomics only");

extern "C" void OnInterrupt(int signalNumber)
{
    // All that a handler may do. The second signal has the system's own effect: a user who presses twice means it.
    received.store(signalNumber);
    std::signal(signalNumber, SIG_DFL);
}

void Catch(int signalNumber)
{
    // A parent that has this process ignore a signal (nohup) keeps its say.
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
    // A full quota and a closed pipe come back as errors of the write, which are told with the file's name.
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
    // As shells have it: 128 and the number of the signal, 130 for Ctrl-C.
    return kSignal + received.load();
}

}  // namespace qvx::app
