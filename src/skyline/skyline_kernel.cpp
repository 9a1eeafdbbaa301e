#include "skyline/skyline_kernel.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <vector>

#include "skyline/skyline_blocks.h"
#include "skyline/skyline_columns.h"
#include "skyline/skyline_panel.h"

namespace qvx {

namespace {

/// Right-looking factorization by nested panels: a panel is factorized panel by smaller panel, each carried into the
/// rest of its parent at once and into all columns right of the parent together with its sisters. The smallest panels
/// go column by column, so pivots appear in column order.
template <Number Real>
class BlockedFactorization
{
public:
    BlockedFactorization(const SkylineView<Real>& k, int nEquations, Pivots pivots, const ColumnHook& hook,
                         const TileKernels<Real>& tiles)
        : k_(k), nEquations_(nEquations), pivots_(pivots), hook_(hook), update_(k, tiles),
          lastReaching_(static_cast<std::size_t>(nEquations) + 1)
    {
        assert(nEquations >= 0 && "a matrix of no equations is factorized by nothing");
        FindLastReachingColumns();
    }

    unsigned Run()
    {
        FactorizePanel(1, nEquations_ + 1, 0);
        return result_;
    }

private:
    static constexpr int kLevels = 3;

    /// lastReaching_[row]: the last column that has a stored term in this row or above it.
    void FindLastReachingColumns()
    {
        for (int column = 1; column <= nEquations_; ++column)
            LastReaching(k_.FirstRow(column)) = column;
        for (int row = 2; row <= nEquations_; ++row)
            LastReaching(row) = std::max(LastReaching(row), LastReaching(row - 1));
    }
    int& LastReaching(int row)
    {
        assert(row >= 1 && row <= nEquations_ && "a column stands between row 1 and its diagonal");
        return lastReaching_[static_cast<std::size_t>(row)];
    }

    /// Wide panels load each term of the rest less often, but leave more of the work inside themselves, where tiles are
    /// small. An eighth of the columns to the right is the best of both by measurement.
    int PanelWidth(int first, int level)
    {
        if (level == kLevels - 1)
            return kSmallestPanel;
        const int reach = LastReaching(std::min(first + kSmallestPanel, nEquations_)) - first;
        return std::clamp(reach / 8 / kSmallestPanel * kSmallestPanel, kSmallestPanel, kLargestPanel);
    }

    /// Columns first .. end - 1, to which all rows above first have been applied.
    /// @return whether a pivot forbids blocks; all columns up to end are factorized then too
    bool FactorizePanel(int first, int end, int level)
    {
        assert(first >= 1 && first < end && end <= nEquations_ + 1);
        if (level == kLevels - 1)
            return FactorizeColumns(first, end, first);
        for (int begin = first, next = first; begin < end; begin = next) {
            next = std::min(end, begin + PanelWidth(begin, level + 1));
            if (FactorizePanel(begin, next, level + 1)) {
                // A block update would divide by this pivot in padded lanes too. What is left of the panel goes on
                // column by column, and the parent finds the panel complete.
                FactorizeColumns(next, end, begin);
                return true;
            }
            update_.Apply(begin, next, std::min(end - 1, LastReaching(next - 1)));
        }
        return false;
    }

    /// Column by column, rows above firstRow having been applied.
    /// @return whether a pivot was irregular: dividing padding by it would give NaN, or its reciprocal is infinite
    bool FactorizeColumns(int first, int end, int firstRow)
    {
        bool isIrregular = false;
        for (int column = first; column < end; ++column) {
            if (column > 1)
                hook_(column);
            FactorizeColumn(k_, column, firstRow);
            Real& pivot = *k_.Diagonal(column);
            if (pivots_ == Pivots::Counted && pivot == Real(0))
                pivot = Real(kInsteadOfZero);
            // A NaN is let pass: it comes from the numbers of an element, and is no matter of the structure's
            // stability.
            if (column > 1 && pivot <= Real(0)) {
                if (pivots_ == Pivots::Positive)
                    throw column;
                result_ = 0;
            }
            const double size = std::fabs(static_cast<double>(pivot));
            // Beyond these bounds a reciprocal or a product in double would leave the range of the number type.
            isIrregular = isIrregular || !(size > 0x1p-900 && size < 0x1p900);
        }
        return isIrregular;
    }

    static constexpr int kSmallestPanel = 16;
    static constexpr int kLargestPanel = 128;
    static constexpr double kInsteadOfZero = -1e-16;

    SkylineView<Real> k_;
    int nEquations_;
    Pivots pivots_;
    const ColumnHook& hook_;
    PanelUpdate<Real> update_;
    std::vector<int> lastReaching_;
    unsigned result_ = 1;
};

}  // namespace

template <Number Real>
unsigned FactorizeByBlocks(Real* a, const int* maxa, int nEquations, Pivots pivots, const ColumnHook& columnHook,
                           const TileKernels<Real>& tiles)
{
    return BlockedFactorization<Real>({a, maxa}, nEquations, pivots, columnHook, tiles).Run();
}

template <Number Real>
unsigned FactorizeSkyline(Real* a, const int* maxa, int nEquations, Pivots pivots, const ColumnHook& columnHook)
{
    return FactorizeByBlocks(a, maxa, nEquations, pivots, columnHook, *AvailableTileKernels<Real>().front());
}

template unsigned FactorizeByBlocks<double>(double*, const int*, int, Pivots, const ColumnHook&,
                                            const TileKernels<double>&);
template unsigned FactorizeByBlocks<double128>(double128*, const int*, int, Pivots, const ColumnHook&,
                                               const TileKernels<double128>&);
template unsigned FactorizeSkyline<double>(double*, const int*, int, Pivots, const ColumnHook&);
template unsigned FactorizeSkyline<double128>(double128*, const int*, int, Pivots, const ColumnHook&);

}  // namespace qvx
