#include "operations/number_walk.h"

namespace qvx {

const QuantityUnit& UnitOfTerm(const Measure& measure, int number)
{
    int row = kX;
    for (int first = 0; first + kDofCount - row <= number; ++row)
        first += kDofCount - row;
    const int column = number - row * kDofCount + row * (row + 1) / 2;
    assert(row <= column && column < kDofCount);
    if ((row <= kZ) != (column <= kZ))
        return measure.units[2];
    return measure.units[row <= kZ ? 0 : 1];
}

}  // namespace qvx
