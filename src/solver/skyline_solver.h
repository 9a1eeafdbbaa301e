#pragma once

#include "quad/double128.h"
#include "skyline/skyline_kernel.h"

class CjxStruct;

namespace qvx {

enum SkylineMode : int { Factorize = 1, Substitute = 2 };  ///< any value but 1 substitutes

/// Status line of a substitution.
inline constexpr wchar_t kReducing[] = L"reducing load vector";

/// Hook of one factorization on behalf of a model: the abort key at every column, and "%d%%" by status_msg at every
/// whole percent of the columns.
/// @throws jxException "SOLUTION ABORTED!" from peek_msg
ColumnHook TellColumns(CjxStruct& model, int nEquations);

/// The skyline kernels on behalf of a model, which is asked for the abort key and told the progress.
///
/// Factorize: before each column peek_msg, then, when column * 100 / nEquations has changed, "%d%%" by status_msg.
/// Substitute: "reducing load vector" by status_msg, then v is overwritten by the displacements.
/// Arrays count from 1; contracts as in skyline_kernel.h.
/// @param spare  unused
/// @return 1; 0 when a non-positive pivot was met and tolerated
/// @throws int  the equation of the first non-positive pivot, unless allowNonPositivePivot
/// @throws jxException "SOLUTION ABORTED!" from peek_msg
template <Number Real>
unsigned SolveSkyline(CjxStruct* model, Real* a, double128* v, const int* maxa, int nEquations, int spare, int mode,
                      bool allowNonPositivePivot);

}  // namespace qvx
