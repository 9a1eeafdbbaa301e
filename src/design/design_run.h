#pragma once

#include <chrono>

#include "model/jx_struct.h"

namespace qvx {

/// Units of a design run, in which the formulas of the codes stand: inch, kip, kip-inch for springs, kip-ft for moments,
/// ksi, square inches of bars, degree F. Every quantity is fixed: no result hangs on the model's own units.
jxUnit DesignUnits();

/// Shows a fault of a design run in a message box, interactive or not, and returns 0, the result of a refused run.
int RefuseDesign(const wchar_t* text);

/// Frame of a design run: from here the model is in design units, with bInSolution up and its input saved, until
/// Finish. A refused check and an exception leave it so; RestoreInputData then brings the input back.
class DesignRun
{
public:
    explicit DesignRun(CjxStruct& model);
    DesignRun(const DesignRun&) = delete;
    DesignRun& operator=(const DesignRun&) = delete;

    /// Back to the model's units and input.
    void Leave();
    /// Leaves and lists "total time spent on <kind> design <n> seconds".
    void Finish(const wchar_t* kind);

private:
    CjxStruct& model_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace qvx
