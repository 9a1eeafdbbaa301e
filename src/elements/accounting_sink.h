#pragma once

#include <vector>

#include "model/solution_data.h"
#include "quad/double128.h"

namespace qvx {

/// Double store that keeps account of what it rounds away.
template <class Sink>
class AccountingSink
{
public:
    AccountingSink(const Sink& store, std::vector<RoundedTerm>& rounded) : store_(store), rounded_(rounded) {}

    template <Number Value>
    void Add(int row, int column, const Value& value) const
    {
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
