#pragma once

#include <cstddef>
#include <vector>

namespace qvx {

/// Location table: per element (row, from 1) the equation numbers of its degrees of freedom (column, from 1),
/// 0 where a degree of freedom has no equation.
class RowTable
{
public:
    RowTable() = default;
    RowTable(int rows, int columns)
        : rows_(rows), columns_(columns),
          terms_((static_cast<std::size_t>(rows) + 1) * (static_cast<std::size_t>(columns) + 1))
    {
    }

    int Rows() const { return rows_; }
    int Columns() const { return columns_; }
    /// Row r; its slots 1 to Columns() hold the entries.
    int* operator[](int row) { return terms_.data() + static_cast<std::size_t>(row) * Stride(); }
    const int* operator[](int row) const { return terms_.data() + static_cast<std::size_t>(row) * Stride(); }

private:
    std::size_t Stride() const { return static_cast<std::size_t>(columns_) + 1; }

    int rows_ = 0;
    int columns_ = 0;
    std::vector<int> terms_;
};

}  // namespace qvx
