#include "tools/timer.h"

#include <chrono>
#include <optional>

double timer(int mode)
{
    using Clock = std::chrono::steady_clock;
    // One per thread: two models that run at once do not stop each other's watch.
    thread_local std::optional<Clock::time_point> start;
    if (mode == 1)
        start = Clock::now();
    if (mode == 1 || !start)
        return 0;
    return std::chrono::duration<double, std::milli>(Clock::now() - *start).count();
}
