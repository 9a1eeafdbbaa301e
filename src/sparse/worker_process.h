#pragma once

#include <cstddef>
#include <functional>

#include <sys/types.h>

namespace qvx {

/// A child process that works for this one and can be ended at any moment, in the middle of a library's routine: the
/// system takes back its memory and nothing of this process is touched. It sees the memory of this process as it was at
/// its start and dies with the thread that started it.
class WorkerProcess
{
public:
    enum class Arrival { Packet, Nothing, Gone };

    WorkerProcess() = default;
    ~WorkerProcess() { Kill(); }
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// @param serve  runs in the child on a thread of its own, over the child's end of the line; its end ends the child
    /// @return       false when the system gives no process
    bool Start(const std::function<void(int line)>& serve);
    bool IsRunning() const { return process_ > 0; }
    /// Ends the worker and waits until nothing is left of it.
    void Kill();
    /// Ends the worker; the wait, while the system takes back its memory, is left to Kill(), Start() or the end.
    void Dismiss();

    /// One packet to the worker; false when it is gone.
    bool Send(const void* packet, std::size_t size) const { return Send(line_, packet, size); }
    /// Waits for a packet of the worker.
    Arrival Receive(void* packet, std::size_t size, int milliseconds) const;

    /// The same for the worker's end of the line.
    static bool Send(int line, const void* packet, std::size_t size);
    static bool Receive(int line, void* packet, std::size_t size);

private:
    void Await();

    pid_t process_ = 0;
    pid_t dismissed_ = 0;  ///< told to end, not awaited yet
    int line_ = -1;
};

/// Memory that a process shares with the workers it starts afterwards; pages cost nothing until they are used.
class SharedMemory
{
public:
    SharedMemory() = default;
    ~SharedMemory() { Release(); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    /// @return  false when there is no such memory
    bool Allocate(std::size_t nDoubles);
    void Release();
    double* Data() const { return data_; }

private:
    double* data_ = nullptr;
    std::size_t bytes_ = 0;
};

}  // namespace qvx
