#pragma once

#include <array>
#include <cassert>
#include <cstddef>

#include "quad/double128.h"

namespace qvx {

/// Dense row-major matrix of fixed size on the stack, zero at construction.
template <class Real, int Rows, int Columns>
class FixedMatrix
{
public:
    constexpr Real& operator()(int row, int column)
    {
        assert(row >= 0 && row < Rows && column >= 0 && column < Columns);
        return terms_[static_cast<std::size_t>(row * Columns + column)];
    }
    constexpr const Real& operator()(int row, int column) const
    {
        assert(row >= 0 && row < Rows && column >= 0 && column < Columns);
        return terms_[static_cast<std::size_t>(row * Columns + column)];
    }
    constexpr Real* data() { return terms_.data(); }
    constexpr const Real* data() const { return terms_.data(); }

private:
    std::array<Real, static_cast<std::size_t>(Rows* Columns)> terms_{};
};

template <Number Real>
using Matrix3 = FixedMatrix<Real, 3, 3>;
template <Number Real>
using Matrix12 = FixedMatrix<Real, 12, 12>;
template <Number Real>
using Matrix24 = FixedMatrix<Real, 24, 24>;

}  // namespace qvx
