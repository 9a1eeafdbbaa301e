#include "files/reader_findings.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "model/findings.h"
#include "model/units.h"
#include "operations/held_quantities.h"
#include "platform/cstring.h"

namespace qvx {
namespace {

// Quantities whose unit is composed of a length and a force; their internal units are composed of inch and pound.
constexpr Quantity kComposed[] = {kDimension,
                                  kLinearForce,
                                  kMoment,
                                  kLinearMoment,
                                  kSurfacePressure,
                                  kTranslationalDisplacement,
                                  kModulus,
                                  kWeightDensity,
                                  kStress,
                                  kNodalTranslationalSpring,
                                  kNodalRotationalSpring,
                                  kLineTranslationalSpring,
                                  kSurfaceTranslationalSpring};

bool IsNamed(const Json& units, Quantity quantity)
{
    return units.contains(ToUtf8(QuantityLabel(quantity)));
}

}  // namespace

std::vector<Quantity> QuantitiesLeftOut(const Json& units)
{
    std::vector<Quantity> left;
    if (units.is_object() && !units.contains("system"))
        std::copy_if(std::begin(kComposed), std::end(kComposed), std::back_inserter(left),
                     [&](Quantity quantity) { return !IsNamed(units, quantity); });
    return left;
}

void FindUnitsLeftOut(const std::vector<Quantity>& left, CjxStruct& model)
{
    // Who changes the length or the force and leaves moduli in psi did so unawares more often than on purpose.
    const jxUnit internal;
    const bool isOwn =
        model.units.unit[kLength] != internal.unit[kLength] || model.units.unit[kForce] != internal.unit[kForce];
    if (!isOwn || left.empty())
        return;
    const std::array<bool, kQuantityCount> isHeld = HeldQuantities(model);
    std::wstring names;
    for (const Quantity quantity : left)
        if (isHeld[quantity])
            names += std::wstring(names.empty() ? L"" : L", ") + QuantityLabel(quantity) + L" (" +
                     UnitName(internal.unit[quantity]) + L")";
    if (names.empty())
        return;
    Finding finding =
        MakeFinding(FindingCode::UnitsLeftOut,
                    std::wstring(L"Length is ") + UnitName(model.units.unit[kLength]) + L" and Force is " +
                        UnitName(model.units.unit[kForce]) +
                        L", and these quantities, of which the model has numbers, stay in inch and pound: " + names);
    finding.field = "units";
    model.findings.Add(std::move(finding));
}

void FindValuesLeftOut(const Json& caseLoad, const JsonPath& path, CjxStruct& model)
{
    if (!caseLoad.contains("lnLoads"))
        return;
    const Json& loads = caseLoad["lnLoads"];
    Finding finding =
        MakeFinding(FindingCode::Value2LeftOut, L"line loads have a value1 and no value2: they fall to 0 at their end");
    // Looked at in the text of the file, as the record cannot tell a 0 that was written from one that was left out.
    for (std::size_t i = 0; i < loads.size(); ++i) {
        const Json& load = loads[i];
        if (load.contains("value2") || load.value("value1", 0.0) == 0)
            continue;
        if (finding.count == 0)
            finding.field = path.Member("lnLoads").Element(i).Member("value2").Text();
        finding.About(L"member", load.value("id", 0));
    }
    if (finding.count > 0)
        model.findings.Add(std::move(finding));
}

void AddMissingCombinations(CjxStruct& model)
{
    if (!model.loadCombs.empty() || model.loadCases.empty())
        return;
    // With the factor 1 of a fresh term: the combination is the load case.
    for (const jxLoadCase& loadCase : model.loadCases) {
        jxLoadComb& comb = model.loadCombs.emplace_back();
        SetText(comb.label, loadCase.label);
        jxCaseFactor& term = comb.cases.emplace_back();
        SetText(term.label, loadCase.label);
    }
    Finding finding = MakeFinding(FindingCode::CombinationsAdded,
                                  L"the model has no load combinations: each load case is solved by itself");
    finding.field = "loadCombs";
    model.findings.Add(std::move(finding));
}

}  // namespace qvx
