#include "solver/skyline_kernel.h"

#include "solver/skyline_columns.h"

namespace qvx {

template <Number Real>
unsigned FactorizeSkyline(Real* a, const int* maxa, int nEquations, bool allowNonPositivePivot,
                          const ColumnHook& columnHook)
{
    const SkylineView<Real> k{a, maxa};
    unsigned result = 1;
    for (int column = 2; column <= nEquations; ++column) {
        columnHook(column);
        FactorizeColumn(k, column, 1);
        if (k(column, column) <= Real(0)) {
            if (!allowNonPositivePivot)
                throw column;
            result = 0;
        }
    }
    return result;
}

template unsigned FactorizeSkyline<double>(double*, const int*, int, bool, const ColumnHook&);
template unsigned FactorizeSkyline<double128>(double128*, const int*, int, bool, const ColumnHook&);

}  // namespace qvx
