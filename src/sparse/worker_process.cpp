#include "sparse/worker_process.h"

#include <cassert>
#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

#include "platform/process_memory.h"

namespace qvx {

namespace {

// The child of a process with threads has but one of them. A library that keeps a team of threads for each of its
// callers would wait here for the team that stayed behind; a thread made in the child has none yet.
[[noreturn]] void Live(const std::function<void(int)>& serve, int line, pid_t parent)
{
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    std::signal(SIGINT, SIG_IGN);  // Ctrl-C reaches the whole group: the parent decides
    const auto live = [&] {
        try {
            serve(line);
        } catch (...) {  // the end of the process tells it
        }
    };
    // The parent may have ended between the fork and the wish to die with it; then nobody waits for a reply.
    if (getppid() == parent)
        std::thread(live).join();
    _exit(0);
}

}  // namespace

bool WorkerProcess::Start(const std::function<void(int)>& serve)
{
    Kill();
    int line[2];
    // Packets, not a stream: a reply arrives whole or not at all, and the end of either side shows as the end of the
    // line.
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, line) != 0)
        return false;
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child == 0) {
        close(line[0]);
        Live(serve, line[1], self);
    }
    close(line[1]);
    if (child < 0) {
        close(line[0]);
        return false;
    }
    process_ = child;
    line_ = line[0];
    return true;
}

void WorkerProcess::Dismiss()
{
    if (!IsRunning())
        return;
    Await();
    kill(process_, SIGKILL);
    close(line_);
    dismissed_ = std::exchange(process_, 0);
    line_ = -1;
}

void WorkerProcess::Await()
{
    // Waited for by its number and not by any child's: the host may have children of its own.
    if (dismissed_ == 0)
        return;
    rusage usage{};
    while (wait4(dismissed_, nullptr, 0, &usage) < 0 && errno == EINTR) {
    }
    CountWorkerPeak(static_cast<std::uint64_t>(usage.ru_maxrss) * 1024);
    dismissed_ = 0;
}

void WorkerProcess::Kill()
{
    Dismiss();
    Await();
}

WorkerProcess::Arrival WorkerProcess::Receive(void* packet, std::size_t size, int milliseconds) const
{
    assert(IsRunning() && "a worker to hear from");
    pollfd watched{.fd = line_, .events = POLLIN, .revents = 0};
    const int ready = poll(&watched, 1, milliseconds);
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return Arrival::Nothing;
    return ready > 0 && Receive(line_, packet, size) ? Arrival::Packet : Arrival::Gone;
}

bool WorkerProcess::Send(int line, const void* packet, std::size_t size)
{
    ssize_t sent = -1;
    do
        sent = send(line, packet, size, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(size);
}

bool WorkerProcess::Receive(int line, void* packet, std::size_t size)
{
    ssize_t received = -1;
    do
        received = recv(line, packet, size, 0);
    while (received < 0 && errno == EINTR);
    return received == static_cast<ssize_t>(size);
}

bool SharedMemory::Allocate(std::size_t nDoubles)
{
    assert(nDoubles > 0 && "the system maps no memory of size 0");
    Release();
    const std::size_t bytes = nDoubles * sizeof(double);
    void* data = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (data == MAP_FAILED)
        return false;
    data_ = static_cast<double*>(data);
    bytes_ = bytes;
    return true;
}

void SharedMemory::Release()
{
    if (data_ != nullptr)
        munmap(data_, bytes_);
    data_ = nullptr;
    bytes_ = 0;
}

}  // namespace qvx
