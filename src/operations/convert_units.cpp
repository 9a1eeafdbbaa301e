#include <vector>

#include "model/units.h"
#include "operations/number_walk.h"
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

// Turns every number that it is handed into the new set of units.
struct Conversion
{
    template <class Record>
    void Numbers(double* numbers, int count, const Measure& measure, const Record& record) const
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
    void ListText(CString& text, const Measure& measure) const
    {
        ConvertListText(text, UnitFactor(measure.units[0], f));
    }

    ConversionFactors f;
};

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

// f1 u1 = f2 u2 between displacements in units of their own: with u = g u' the relation keeps when f2 becomes f2 g1 / g2 and
// f1 stays. Displacements of one kind keep both factors to the last bit.
void ConvertConstraints(std::vector<jxMultiDofConstraint>& constraints, ConversionFactors f)
{
    const auto factorOf = [&](int dof) { return f[dof <= kZ ? kTranslationalDisplacement : kRotationalDisplacement]; };
    for (jxMultiDofConstraint& constraint : constraints)
        if ((constraint.dof[0] <= kZ) != (constraint.dof[1] <= kZ))
            constraint.factor[1] *= factorOf(constraint.dof[0]) / factorOf(constraint.dof[1]);
}

}  // namespace
}  // namespace qvx

void CjxStruct::ConvertUnits(const jxUnit& from, const jxUnit& to)
{
    double f[kQuantityCount];
    GetConversionFactors(f, from, to);
    const qvx::Conversion conversion{f};
    qvx::ForEachField(qvx::kConverted, [&](const auto& field) {
        qvx::WalkNumbers(this->*field.member, field.rule.measure, *this, conversion);
    });
    if (bConsistentMechanics != 0)
        qvx::ConvertConstraints(multiDofConstraints, f);
    for (std::vector<qvx::double128>& vector : loadVectors)
        qvx::ConvertDisplacements(vector, idTable, f);
}
