#pragma once

#include <cassert>
#include <vector>

#include "model/solution_data.h"
#include "quad/double128.h"

namespace qvx {

/// Double store that keeps account of what it rounds away.
///
/// Exactly: the sum of the stored term and the value is formed in double128, and its difference from what the store holds
/// afterwards goes to the list as a RoundedTerm when it is not 0. A solution refined with residuals of K plus these terms
/// is then one of the sums as they would be without rounding. The store and the list outlive the sink; terms may repeat.
template <class Sink>
class AccountingSink
{
public:
    AccountingSink(const Sink& store, std::vector<RoundedTerm>& rounded) : store_(store), rounded_(rounded) {}

    /// As the store does, row <= column, from 1.
    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
        assert(row >= 1 && row <= column && "upper triangle only");
        const double128 exact = double128(store_.Term(row, column)) + double128(value);
        store_.Add(row, column, value);
        const auto lost = static_cast<double>(exact - double128(store_.Term(row, column)));
        if (lost != 0)
            rounded_.push_back({row, column, lost});
    }

private:
    const Sink& store_;
    std::vector<RoundedTerm>& rounded_;
};

}  // namespace qvx
