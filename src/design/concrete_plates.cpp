#include <algorithm>
#include <cmath>
#include <optional>

#include "design/concrete_member.h"
#include "design/design_findings.h"
#include "design/design_rules.h"
#include "design/member_batches.h"
#include "design/rule_difference.h"
#include "model/find_record.h"
#include "rc/concrete_beam.h"

namespace qvx {

namespace {

constexpr double kStrip = 12;  // width that is designed [in]: moments are kip-ft per foot

/// Steel of one layer for its moment per foot, -1 when it fails [in^2/in]. A layer is a strip without compression steel.
double LayerSteel(CConcRectBeam& strip, double d, double moment)
{
    double As = 0;
    double AsComp = 0;
    double AsMin = 0;
    // Moments are per foot: a strip as wide as that carries exactly them.
    strip.SetDim(kStrip, d, 0);
    strip.status = 0;
    strip.CalcAs(As, AsComp, AsMin, std::fabs(moment), 0, true);
    return As < 0 ? -1 : As / kStrip;
}

struct DesignedPlate
{
    jxPlateRcResult result;
    std::wstring difference;  ///< from the consistent rules; empty for none
};

void DesignLayers(const CjxStruct& model, const jxMat& material, double t, const jxPlateRcCrit& criterion,
                  const jxWoodArmer& moments, DesignedPlate& plate)
{
    constexpr const wchar_t* kLayers[] = {L"steel top x", L"steel top y", L"steel bottom x", L"steel bottom y"};
    constexpr const wchar_t* kPoints[] = {L"at the center", L"at node 1", L"at node 2", L"at node 3", L"at node 4"};
    const double covers[4] = {criterion.topCoverX, criterion.topCoverY, criterion.bottomCoverX, criterion.bottomCoverY};
    const bool isUsual = RulesOf(model) == DesignRules::Usual;
    CConcRectBeam strip = ConcreteCalculator<CConcRectBeam>(model, material);
    strip.SetCalcMinAs(false);
    RuleDifference difference;
    for (int point = 0; point < 5; ++point)
        for (int layer = 0; layer < 4; ++layer) {
            const double steel = LayerSteel(strip, t - covers[layer], moments.moments[point][layer]);
            // Layers come top x, top y, bottom x, bottom y: two ratios, for the top and the bottom.
            const double least = model.design.minPlateRho[layer / 2] * t / 100;  // [% of the thickness]
            const double usual = std::max(steel, least);
            const double consistent = steel < 0 ? -1 : usual;
            plate.result.as[point][layer] = isUsual ? usual : consistent;
            plate.result.status[point][layer] |= strip.status;
            if (isUsual)
                difference.Compare(kLayers[layer], L"in^2/in", kPoints[point], usual, consistent);
        }
    plate.difference = difference.Text();
}

std::optional<DesignedPlate> DesignOf(const CjxStruct& model, const jxShell4& shell)
{
    const jxMat& material = FindById(model.materials, shell.material);
    if (shell.bConcreteSkip != 0 || !(material.fc > 0))
        return std::nullopt;
    const jxThick& thickness = FindById(model.thicknesses, shell.thickness);
    const jxPlateRcCrit& criterion = FindById(model.plateRcCriteria, shell.rcCriterion);
    const jxWoodArmer* moments = FindOrNull(model.woodArmer, shell.id);
    if (moments == nullptr)
        ThrowMissingRecord(L"Wood-Armer moment", shell.id);
    DesignedPlate plate;
    plate.result.id = shell.id;
    if (shell.excluded == 0)
        DesignLayers(model, material, thickness.t, criterion, *moments, plate);
    return plate;
}

}  // namespace

}  // namespace qvx

void CjxStruct::PlateConcreteDesign()
{
    constexpr std::size_t kPerThread = 256;
    concretePlates.clear();
    qvx::PlaceFindings differing(findings, qvx::FindingCode::ConcreteRulesDiffer);
    qvx::DesignInBatches(
        *this, shell4s, kPerThread, [this](const jxShell4& shell) { return qvx::DesignOf(*this, shell); },
        [&](const qvx::DesignedPlate& plate) {
            differing.Add(L"shell", plate.result.id, plate.difference);
            concretePlates.push_back(plate.result);
        });
}
