#include "operations/held_quantities.h"

#include "operations/number_walk.h"

namespace qvx {
namespace {

// Marks the quantities of every number that it is handed.
struct Marking
{
    template <class Record>
    void Numbers(const double* numbers, int count, const Measure& measure, const Record& record) const
    {
        if (measure.rule == UnitRule::Plain)
            return;
        for (int i = 0; i < count; ++i)
            if (numbers[i] != 0)
                Mark(UnitOf(measure, record, i));
    }
    void ListText(const CString&, const Measure&) const {}  // of the host's drawing grid: nothing is computed with it

    void Mark(const QuantityUnit& unit) const
    {
        for (const Quantity quantity : {unit.of, unit.times, unit.per})
            if (quantity != kQuantityCount)
                held[quantity] = true;
    }

    std::array<bool, kQuantityCount>& held;
};

}  // namespace

std::array<bool, kQuantityCount> HeldQuantities(const CjxStruct& model)
{
    std::array<bool, kQuantityCount> held{};
    const Marking marking{held};
    ForEachField(kModelLists,
                 [&](const auto& list) { WalkNumbers(model.*list.member, list.rule.measure, model, marking); });
    return held;
}

}  // namespace qvx
