#include <cassert>
#include <type_traits>
#include <vector>

#include "model/struct_fields.h"
#include "model/units.h"
#include "tools/list_text.h"

namespace qvx {
namespace {

/// Factors of a conversion, indexed by Quantity: value in to-units = f[quantity] * value in from-units.
using ConversionFactors = const double (&)[kQuantityCount];

double Power(double base, int exponent)
{
    double result = 1;
    for (int i = 0; i < exponent; ++i)
        result *= base;
    return result;
}

// What turns a number of one unit into the new set. A unit that is per quantity alone divides: the reciprocal would be
// rounded once more.
class UnitFactor
{
public:
    UnitFactor(const QuantityUnit& unit, ConversionFactors f) : divides_(unit.of == kQuantityCount && !unit.IsPlain())
    {
        if (unit.IsPlain())
            return;
        factor_ = divides_ ? f[unit.per] : Power(f[unit.of], unit.power);
        if (unit.times != kQuantityCount)
            factor_ *= f[unit.times];
        if (!divides_ && unit.per != kQuantityCount)
            factor_ /= f[unit.per];
    }

    void Convert(double& number) const { number = divides_ ? number / factor_ : number * factor_; }

private:
    bool divides_;
    double factor_ = 1;
};

// Directions 0 to 2 are translations or forces along the axes, 3 to 5 rotations or moments about them.
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

// Unit of term `number` of an upper triangle over the six DOF, counted row by row.
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

template <class Record>
void ConvertNumbers(double* numbers, int count, const Measure& measure, const Record& record, ConversionFactors f)
{
    if (measure.rule == UnitRule::Plain)
        return;
    if (measure.rule == UnitRule::Same) {
        const UnitFactor factor(measure.units[0], f);
        for (int i = 0; i < count; ++i)
            factor.Convert(numbers[i]);
        return;
    }
    for (int i = 0; i < count; ++i)
        UnitFactor(UnitOf(measure, record, i), f).Convert(numbers[i]);
}

// Distances of grid lines: rebuilt with three decimals. A text that is no list stays as it is.
void ConvertListText(CString& text, const UnitFactor& factor)
{
    std::vector<int> counts;
    std::vector<double> values;
    if (!ParseList(counts, values, text))
        return;
    CString rebuilt;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            rebuilt += L",";
        if (counts[i] > 0)
            rebuilt.AppendFormat(L"%d@", counts[i]);
        factor.Convert(values[i]);
        rebuilt.AppendFormat(L"%.3f", values[i]);
    }
    text = rebuilt;
}

template <Described Value>
void ConvertRecord(Value& value, const Measure& ofTheList, ConversionFactors f);

double* FirstNumber(double& number)
{
    return &number;
}
template <class Element, std::size_t N>
double* FirstNumber(Element (&numbers)[N])
{
    return FirstNumber(numbers[0]);
}

/// Numbers in a value: one, or the product of the extents of an array.
template <class Value>
constexpr int kNumbersIn = 1;
template <class Element, std::size_t N>
constexpr int kNumbersIn<Element[N]> = static_cast<int>(N) * kNumbersIn<Element>;

// The value of one field: numbers by the measure of the field, records by their own fields. What holds neither has no
// unit.
template <class Value, class Record>
void ConvertValue(Value& value, const Measure& measure, const Record& record, ConversionFactors f)
{
    using Number = std::remove_all_extents_t<Value>;
    using Element = typename ElementOf<Value>::Type;
    if constexpr (std::is_same_v<Number, double>) {
        ConvertNumbers(FirstNumber(value), kNumbersIn<Value>, measure, record, f);
    } else if constexpr (std::is_same_v<Value, std::vector<double>>) {
        ConvertNumbers(value.data(), static_cast<int>(value.size()), measure, record, f);
    } else if constexpr (std::is_same_v<Value, CString>) {
        if (measure.rule == UnitRule::ListText)
            ConvertListText(value, UnitFactor(measure.units[0], f));
    } else if constexpr (Described<Value>) {
        ConvertRecord(value, measure, f);
    } else if constexpr (Described<Element> || std::is_same_v<Number, CString>) {
        for (auto& element : value)
            ConvertValue(element, measure, record, f);
    } else {
        assert(measure.rule == UnitRule::Plain && "only numbers, grid lists and records are converted");
    }
}

template <Described Value>
void ConvertRecord(Value& value, const Measure& ofTheList, ConversionFactors f)
{
    ForEachField(FieldsOf<Value>::list, [&](const auto& field) {
        const Measure& measure = field.rule.measure;
        ConvertValue(value.*field.member, measure.rule == UnitRule::OfTheList ? ofTheList : measure, value, f);
    });
}

// Displacements by equation. A run converts back after its solves: by then each load vector has become the displacements
// it causes.
void ConvertDisplacements(std::vector<double128>& byEquation, const std::vector<int> (&idTable)[6], ConversionFactors f)
{
    for (int dof = 0; dof < kDofCount; ++dof) {
        const double128 factor = f[dof <= kZ ? kTranslationalDisplacement : kRotationalDisplacement];
        for (const int equation : idTable[dof])
            if (equation > 0 && static_cast<std::size_t>(equation) < byEquation.size())
                byEquation[static_cast<std::size_t>(equation)] *= factor;
    }
}

}  // namespace
}  // namespace qvx

void CjxStruct::ConvertUnits(const jxUnit& from, const jxUnit& to)
{
    double f[kQuantityCount];
    GetConversionFactors(f, from, to);
    qvx::ForEachField(qvx::kConverted,
                      [&](const auto& field) { qvx::ConvertValue(this->*field.member, field.rule.measure, *this, f); });
    for (std::vector<qvx::double128>& vector : loadVectors)
        qvx::ConvertDisplacements(vector, idTable, f);
}
