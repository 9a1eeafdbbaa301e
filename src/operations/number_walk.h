#pragma once

#include <cassert>
#include <type_traits>
#include <vector>

#include "model/struct_fields.h"

// One walk over the numbers of records with the unit of each, by the catalogue of fields: the conversion of units and
// whatever asks which quantities a model holds are its visitors.

namespace qvx {

/// Whether a number that goes by its record's direction is of translation kind: directions 0 to 2 are translations or
/// forces along the axes, 3 to 5 rotations or moments about them.
template <class Record>
bool IsOfTranslation(const Record& record, [[maybe_unused]] int number)
{
    if constexpr (requires { record.dir; })
        return record.dir <= kZ;
    else if constexpr (requires { record.dof[0]; })
        return record.dof[number] <= kZ;
    else if constexpr (requires { record.dof; })
        return record.dof <= kZ;
    assert(false && "a record whose units go by its direction has dir or dof");
    return true;
}

/// Unit of term `number` of an upper triangle over the six DOF, counted row by row.
const QuantityUnit& UnitOfTerm(const Measure& measure, int number);

/// Unit of number `number`, from 0, of a field of this measure in this record.
template <class Record>
QuantityUnit UnitOf(const Measure& measure, const Record& record, int number)
{
    switch (measure.rule) {
    case UnitRule::Plain:
        return {};
    case UnitRule::Same:
    case UnitRule::ListText:
        return measure.units[0];
    case UnitRule::Periodic:
        return measure.units[number % measure.period < measure.nFirst ? 0 : 1];
    case UnitRule::ByDof:
        return measure.units[IsOfTranslation(record, number) ? 0 : 1];
    case UnitRule::OfAbsolute:
        if constexpr (requires { record.bAbsoluteDistance; })
            return record.bAbsoluteDistance != 0 ? measure.units[0] : QuantityUnit{};
        break;
    case UnitRule::SpringMatrix:
        return UnitOfTerm(measure, number);
    case UnitRule::PerPosition:
        return measure.units.at(static_cast<std::size_t>(number));
    case UnitRule::OfTheList:
        break;
    }
    assert(false && "the list of such records says the unit");
    return {};
}

inline const double* FirstNumber(const double& number)
{
    return &number;
}
inline double* FirstNumber(double& number)
{
    return &number;
}
template <class Element, std::size_t N>
auto* FirstNumber(Element (&numbers)[N])
{
    return FirstNumber(numbers[0]);
}

/// Numbers in a value: one, or the product of the extents of an array.
template <class Value>
constexpr int kNumbersIn = 1;
template <class Element, std::size_t N>
constexpr int kNumbersIn<Element[N]> = static_cast<int>(N) * kNumbersIn<Element>;

/// Walks the fields of a record; the records of a list that says their unit are of the list's measure.
template <class Value, class Visitor>
requires Described<std::remove_const_t<Value>>
void WalkRecord(Value& value, const Measure& ofTheList, const Visitor& visitor);

/// Hands the numbers of one field to visitor.Numbers(first, count, measure, record), a text that lists lengths to
/// visitor.ListText(text, measure). Records of a field are walked by their own fields. What holds neither has no unit.
template <class Value, class Record, class Visitor>
void WalkNumbers(Value& value, const Measure& measure, const Record& record, const Visitor& visitor)
{
    using Plain = std::remove_const_t<Value>;
    using Number = std::remove_cv_t<std::remove_all_extents_t<Value>>;
    using Element = typename ElementOf<Plain>::Type;
    if constexpr (std::is_same_v<Number, double>) {
        visitor.Numbers(FirstNumber(value), kNumbersIn<Value>, measure, record);
    } else if constexpr (std::is_same_v<Plain, std::vector<double>>) {
        visitor.Numbers(value.data(), static_cast<int>(value.size()), measure, record);
    } else if constexpr (std::is_same_v<Plain, CString>) {
        if (measure.rule == UnitRule::ListText)
            visitor.ListText(value, measure);
    } else if constexpr (Described<Plain>) {
        WalkRecord(value, measure, visitor);
    } else if constexpr (Described<std::remove_const_t<Element>> || std::is_same_v<Number, CString>) {
        for (auto& element : value)
            WalkNumbers(element, measure, record, visitor);
    } else {
        assert(measure.rule == UnitRule::Plain && "only numbers, grid lists and records have units");
    }
}

template <class Value, class Visitor>
requires Described<std::remove_const_t<Value>>
void WalkRecord(Value& value, const Measure& ofTheList, const Visitor& visitor)
{
    ForEachField(FieldsOf<std::remove_const_t<Value>>::list, [&](const auto& field) {
        const Measure& measure = field.rule.measure;
        WalkNumbers(value.*field.member, measure.rule == UnitRule::OfTheList ? ofTheList : measure, value, visitor);
    });
}

}  // namespace qvx
