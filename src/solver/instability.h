#pragma once

#include <cassert>

#include "model/jx_struct.h"

namespace qvx {

/// What the user reads when the structure is a mechanism, or close to one.
inline constexpr wchar_t kUnstableText[] =
    L"Structure is unstable. See log file for details.\n"
    L"If you believe the model is correct, try the quad-precision solver in Run | Analysis Options...";

/// Lost digits from which a run warns, and from which it asks.
///
/// Digits are lost where a pivot comes out small beside the diagonal term that it began as: log10 of their ratio. A
/// double has 16 of them and a double128 31.
struct DigitLimits
{
    int warning;
    int question;
};
constexpr DigitLimits DigitLimitsOf(int solverType)
{
    // A double with 10 digits lost still has six. In double128 the geometry of the model, which is double, is no better
    // than 15 digits: from there on more digits of the factor do not make a better answer.
    return solverType == DoubleSkyline ? DigitLimits{10, 13} : DigitLimits{15, 25};
}

/// Log text that names the place of an instability.
/// @param node  node id
/// @param dof   from 1
inline CString InstabilityText(int node, int dof)
{
    assert(dof >= 1 && dof <= kDofCount && "directions of a message count from 1");
    CString text;
    text.Format(L"\nInstability %s at Node %d", kDofNames[dof - 1], node);
    return text;
}

}  // namespace qvx
