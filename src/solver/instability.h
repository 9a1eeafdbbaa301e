#pragma once

#include "model/jx_struct.h"

namespace qvx {

/// What the user reads when the structure is a mechanism, or close to one.
inline constexpr wchar_t kUnstableText[] =
    L"Structure is unstable. See log file for details.\n"
    L"If you believe the model is correct, try the quad-precision solver in Run | Analysis Options...";

/// Lost digits from which a run warns, and from which it asks.
struct DigitLimits
{
    int warning;
    int question;
};
constexpr DigitLimits DigitLimitsOf(int solverType)
{
    return solverType == DoubleSkyline ? DigitLimits{10, 13} : DigitLimits{15, 25};
}

/// Log text that names the place of an instability.
/// @param node  node id
/// @param dof   from 1
inline CString InstabilityText(int node, int dof)
{
    CString text;
    text.Format(L"\nInstability %s at Node %d", kDofNames[dof - 1], node);
    return text;
}

}  // namespace qvx
