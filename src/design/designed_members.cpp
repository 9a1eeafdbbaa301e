#include "design/designed_members.h"

#include <cmath>

#include "elements/member/beam_stress_calculator.h"
#include "model/find_record.h"
#include "steel/steel_design_manager.h"

namespace qvx {

namespace {

constexpr double kSteelE = 29000, kTolerance = 2900;  // moduli that are taken for steel [ksi]

constexpr const wchar_t* kLeftOut = L"is left out of concrete design (bConcreteSkip)";
constexpr const wchar_t* kNoConcrete = L"is not of concrete: its material has no fc";

RegularSection ShapeOf(const CjxStruct& model, const jxBm& beam)
{
    return RegularSectionOf(FindById(model.sections, beam.section).label);
}

bool IsOfConcrete(const CjxStruct& model, const jxBm& beam)
{
    return FindById(model.materials, beam.material).fc > 0;
}

bool IsBeamShape(RegularSection shape)
{
    return shape == kRegularRect || shape == kRegularTee;
}

bool IsColumnShape(RegularSection shape)
{
    return shape == kRegularRect || shape == kRegularRound;
}

}  // namespace

const wchar_t* WhyNoFlexuralDesign(const CjxStruct& model, const jxBm& beam)
{
    if (beam.bConcreteSkip != 0)
        return kLeftOut;
    if (beam.designType == L'C')
        return L"is a column (designType C)";
    if (!IsOfConcrete(model, beam))
        return kNoConcrete;
    return IsBeamShape(ShapeOf(model, beam)) ? nullptr : L"has a section that is neither Rect nor Tee";
}

const wchar_t* WhyNoColumnDesign(const CjxStruct& model, const jxBm& beam)
{
    if (beam.bConcreteSkip != 0)
        return kLeftOut;
    if (beam.designType == L'B')
        return L"is a beam (designType B)";
    if (!IsOfConcrete(model, beam))
        return kNoConcrete;
    return IsColumnShape(ShapeOf(model, beam)) ? nullptr : L"has a section that is neither Rect nor Round";
}

const wchar_t* WhyNoShearDesign(const CjxStruct& model, const jxBm& beam)
{
    if (beam.bConcreteSkip != 0)
        return kLeftOut;
    if (!IsOfConcrete(model, beam))
        return kNoConcrete;
    if (beam.designType == L'B')
        return IsBeamShape(ShapeOf(model, beam)) ? nullptr : L"is a beam whose section is neither Rect nor Tee";
    if (beam.designType == L'C')
        return IsColumnShape(ShapeOf(model, beam)) ? nullptr : L"is a column whose section is neither Rect nor Round";
    return L"is neither a beam nor a column (designType)";
}

const wchar_t* WhyNoSteelDesign(const CjxStruct& model, const jxBm& beam, double ksi)
{
    if (beam.bSteelSkip != 0)
        return L"is left out of steel design (bSteelSkip)";
    const jxMat& material = FindById(model.materials, beam.material);
    if (!(std::fabs(material.E * ksi - kSteelE) <= kTolerance))
        return L"is not of steel: its modulus is not within 10 % of 29000 ksi";
    if (!(material.fy > 0) || !(material.fys > 0))
        return L"is of a material without fy or fys";
    const wchar_t* label = FindById(model.sections, beam.section).label;
    return CSteelDesignManager::Instance().IsValidAiscSection(label) ? nullptr : kNoShapeOfTheTable;
}

}  // namespace qvx
