#include <algorithm>
#include <cmath>
#include <optional>

#include "design/concrete_member.h"
#include "design/member_batches.h"
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

void DesignLayers(const CjxStruct& model, const jxMat& material, double t, const jxPlateRcCrit& criterion,
                  const jxWoodArmer& moments, jxPlateRcResult& result)
{
    const double covers[4] = {criterion.topCoverX, criterion.topCoverY, criterion.bottomCoverX, criterion.bottomCoverY};
    CConcRectBeam strip = ConcreteCalculator<CConcRectBeam>(model, material);
    strip.SetCalcMinAs(false);
    for (int point = 0; point < 5; ++point)
        for (int layer = 0; layer < 4; ++layer) {
            const double steel = LayerSteel(strip, t - covers[layer], moments.moments[point][layer]);
            // Layers come top x, top y, bottom x, bottom y: two ratios, for the top and the bottom.
            const double least = model.design.minPlateRho[layer / 2] * t / 100;  // [% of the thickness]
            const bool isFailureKept = model.design.bConsistentDesign != 0 && steel < 0;
            result.as[point][layer] = isFailureKept ? -1 : std::max(steel, least);
            result.status[point][layer] |= strip.status;
        }
}

std::optional<jxPlateRcResult> DesignOf(const CjxStruct& model, const jxShell4& shell)
{
    const jxMat& material = FindById(model.materials, shell.material);
    if (shell.bConcreteSkip != 0 || !(material.fc > 0))
        return std::nullopt;
    const jxThick& thickness = FindById(model.thicknesses, shell.thickness);
    const jxPlateRcCrit& criterion = FindById(model.plateRcCriteria, shell.rcCriterion);
    const jxWoodArmer* moments = FindOrNull(model.woodArmer, shell.id);
    if (moments == nullptr)
        ThrowMissingRecord(L"Wood-Armer moment", shell.id);
    jxPlateRcResult result;
    result.id = shell.id;
    if (shell.excluded == 0)
        DesignLayers(model, material, thickness.t, criterion, *moments, result);
    return result;
}

}  // namespace

}  // namespace qvx

void CjxStruct::PlateConcreteDesign()
{
    constexpr std::size_t kPerThread = 256;
    concretePlates.clear();
    qvx::DesignInBatches(
        *this, shell4s, kPerThread, [this](const jxShell4& shell) { return qvx::DesignOf(*this, shell); },
        [this](const jxPlateRcResult& result) { concretePlates.push_back(result); });
}
