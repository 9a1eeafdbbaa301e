#pragma once

namespace qvx {

/// Iterations beyond this are not begun, whatever the model's own limit says.
inline constexpr int kIterationCeiling = 10000;

/// Calls step(1), step(2), ... until it answers true or the ceiling is reached.
/// @return  number of steps made
template <class Step>
int IterateUntilStop(Step&& step)
{
    // The step itself knows its limit from the model; the ceiling is for a step that never says stop.
    int iteration = 1;
    while (iteration < kIterationCeiling && !step(iteration))
        ++iteration;
    return iteration < kIterationCeiling ? iteration : kIterationCeiling - 1;
}

}  // namespace qvx
