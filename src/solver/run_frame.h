#pragma once

#include <chrono>

#include "model/run_context.h"

namespace qvx {

/// What every analysis run begins and ends with.

class WallClock
{
public:
    int Seconds() const
    {
        return static_cast<int>(
            std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start_).count());
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The input check with the words around it.
/// @param mode  of CjxStruct::CheckInputData
/// @return      false when the input was refused: that is told, and the model repaired
bool CheckInput(CjxStruct& model, int mode);

/// Saves the input and takes the model to internal units.
/// @return  the model's units as the source of a conversion, for EndRun
jxUnit BeginRun(const RunContext& context);

/// Takes the model back to its units, restores its input and tells the time. Sets bLockModel when the preference
/// LockModel is 1.
void EndRun(const RunContext& context, const jxUnit& display, const WallClock& clock);

}  // namespace qvx
