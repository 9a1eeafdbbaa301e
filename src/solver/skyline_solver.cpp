#include "solver/skyline_solver.h"

#include <cassert>
#include <cstdint>

#include "model/jx_struct.h"

namespace qvx {

ColumnHook TellColumns(CjxStruct& model, int nEquations)
{
    return [&model, nEquations, shown = -1](int column) mutable {
        assert(column >= 1 && column <= nEquations && "a column of the matrix");
        // At every column, not at every percent: of a large matrix a percent is minutes, and the user waits for an
        // answer.
        model.peek_msg();
        const int percent = static_cast<int>(std::int64_t{column} * 100 / nEquations);
        if (percent == shown)
            return;
        shown = percent;
        CString text;
        text.Format(L"%d%%", percent);
        model.status_msg(text);
    };
}

template <Number Real>
unsigned SolveSkyline(CjxStruct* model, Real* a, double128* v, const int* maxa, int nEquations, int /*spare*/, int mode,
                      bool allowNonPositivePivot)
{
    if (mode != Factorize) {
        model->status_msg(kReducing);
        ReduceAndBackSubstitute(a, maxa, nEquations, v);
        return 1;
    }
    return FactorizeSkyline(a, maxa, nEquations, allowNonPositivePivot ? Pivots::Any : Pivots::Positive,
                            TellColumns(*model, nEquations));
}

template unsigned SolveSkyline<double>(CjxStruct*, double*, double128*, const int*, int, int, int, bool);
template unsigned SolveSkyline<double128>(CjxStruct*, double128*, double128*, const int*, int, int, int, bool);

}  // namespace qvx
