#pragma once

#include <cassert>
#include <cstddef>
#include <vector>

namespace qvx {

/// Location table: per element (row, from 1) the equation numbers of its degrees of freedom (column, from 1),
/// 0 where a degree of freedom has no equation.
class RowTable
{
public:
    /// An empty table: an element kind that the model does not have.
    RowTable() = default;
    /// All entries 0.
    /// @param rows     records of one kind
    /// @param columns  degrees of freedom of one element
    RowTable(int rows, int columns)
        : rows_(rows), columns_(columns),
          terms_((static_cast<std::size_t>(rows) + 1) * (static_cast<std::size_t>(columns) + 1))
    {
    }

    int Rows() const { return rows_; }
    int Columns() const { return columns_; }
    /// Row r; its slots 1 to Columns() hold the entries.
    int* operator[](int row)
    {
        assert(row >= 0 && row <= rows_ && "rows count from 1");
        return terms_.data() + static_cast<std::size_t>(row) * Stride();
    }
    const int* operator[](int row) const
    {
        assert(row >= 0 && row <= rows_ && "rows count from 1");
        return terms_.data() + static_cast<std::size_t>(row) * Stride();
    }

private:
    // Slot 0 of a row stays unused, as row 0 does: positions of the mechanics count from 1, and no subtraction is
    // needed.
    std::size_t Stride() const { return static_cast<std::size_t>(columns_) + 1; }

    int rows_ = 0;
    int columns_ = 0;
    std::vector<int> terms_;
};

}  // namespace qvx
