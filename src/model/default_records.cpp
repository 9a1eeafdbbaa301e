#include "model/default_records.h"

#include <cassert>
#include <cmath>

#include "model/records/text_fields.h"
#include "model/units.h"

namespace qvx {

namespace {

constexpr const wchar_t* kDefaultLabel = L"Default";

/// A default record with id and label.
template <class Record>
Record Labelled()
{
    Record record;
    record.id = 1;
    SetText(record.label, kDefaultLabel);
    return record;
}

/// One internal unit (inch, pound, degree F and their compounds) in the units of the model.
double InUnits(const jxUnit& units, Quantity quantity)
{
    assert(UnitFactor(units.unit[quantity]) > 0);
    return 1 / UnitFactor(units.unit[quantity]);
}

}  // namespace

jxMat DefaultMaterial(const jxUnit& units)
{
    const double modulus = InUnits(units, kModulus);
    auto material = Labelled<jxMat>();
    material.E = 29e6 * modulus;
    material.nu = 0.3;
    // Published per cubic foot; the internal unit is pounds per cubic inch.
    material.Wc = 490.0 / (12 * 12 * 12) * InUnits(units, kWeightDensity);
    // Per degree: a smaller degree makes a smaller number, so this one is divided where the others are multiplied.
    material.Tc = 6.5e-6 / InUnits(units, kTemperature);
    material.fc = 4e3 * modulus;
    material.fy = 50e3 * modulus;
    material.fys = 50e3 * modulus;
    return material;
}

jxSect DefaultSection(const jxUnit& units)
{
    // In the unit of dimensions throughout, the fourth powers too: a section's numbers have no quantity of their own.
    const double b = 12 * InUnits(units, kDimension);
    assert(b > 0 && "units convert by positive factors");
    auto section = Labelled<jxSect>();
    section.A = b * b;
    // 5/6 of a rectangle: Timoshenko's shear coefficient for a parabolic shear stress.
    section.Ay = section.Az = 5.0 / 6.0 * section.A;
    section.Iz = section.Iy = std::pow(b, 4) / 12;
    section.J = 0.1406 * std::pow(b, 4);
    return section;
}

jxThick DefaultThickness(const jxUnit& units)
{
    auto thickness = Labelled<jxThick>();
    thickness.t = 8 * InUnits(units, kDimension);
    return thickness;
}

jxLoadCase DefaultLoadCase()
{
    auto loadCase = Labelled<jxLoadCase>();
    SetText(loadCase.type, L"Dead-D");
    return loadCase;
}

jxLoadComb DefaultLoadCombination(const jxLoadCase& loadCase)
{
    jxLoadComb combination;
    SetText(combination.label, kDefaultLabel);
    jxCaseFactor& term = combination.cases.emplace_back();
    SetText(term.label, loadCase.label);
    assert(term.factor == 1.0);
    return combination;
}

}  // namespace qvx
