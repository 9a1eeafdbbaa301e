#include "design_summary.h"

#include <algorithm>
#include <cassert>

#include <fmt/format.h>

#include "model/find_record.h"
#include "model/units.h"

namespace qvx::app {
namespace {

void Line(std::FILE* out, const char* label, const std::string& text)
{
    assert(label != nullptr && out != nullptr);
    fmt::print(out, "  {:<20}{}\n", label, text);
}

std::string Unit(const CjxStruct& model, Quantity quantity)
{
    return ToUtf8(UnitName(model.units.unit[quantity]));
}

std::string Combination(const CjxStruct& model, int comb)
{
    // Between two stations of an envelope no single combination governs.
    if (comb < 0 || static_cast<std::size_t>(comb) >= model.loadCombs.size())
        return "no single combination";
    return fmt::format("combination {} \"{}\"", comb + 1,
                       ToUtf8(model.loadCombs[static_cast<std::size_t>(comb)].label));
}

std::string FailuresOnly(std::size_t count)
{
    return fmt::format("{} FAIL", count);
}

std::string Failures(std::size_t count)
{
    return count == 0 ? "" : FailuresOnly(count) + "; ";
}

/// Combination of the moment that a face of a beam is designed for; none where the envelope is interpolated.
int CombinationOf(const CjxStruct& model, int member, double distance, bool isTop)
{
    constexpr int kM3 = 5;  // of the six values of an envelope station
    const jxMaxBmVMD* envelope = FindOrNull(model.concreteEnvelope, member);
    if (envelope == nullptr)
        return -1;
    for (const jxMaxVMD& station : envelope->vmd)
        if (station.x == distance)
            return isTop ? station.minComb[kM3] : station.maxComb[kM3];
    return -1;
}

void PrintBeams(std::FILE* out, const CjxStruct& model)
{
    std::size_t failed = 0;
    const jxBmRcResult* beam = nullptr;
    const jxBmRcStation* worst = nullptr;
    double most = -1;
    for (const jxBmRcResult& result : model.concreteBeams) {
        const auto fails = [](const jxBmRcStation& s) { return s.asTop < 0 || s.asBottom < 0; };
        failed += std::any_of(result.stations.begin(), result.stations.end(), fails);
        for (const jxBmRcStation& station : result.stations)
            if (const double As = std::max(station.asTop, station.asBottom); As > most) {
                most = As;
                beam = &result;
                worst = &station;
            }
    }
    assert(worst == nullptr || beam != nullptr);
    // A member that fails has no steel to be listed; one that governs is told beside the number of those.
    if (worst == nullptr) {
        if (failed > 0)
            Line(out, "concrete beams", FailuresOnly(failed));
        return;
    }
    const bool isTop = worst->asTop >= worst->asBottom;
    const int comb = CombinationOf(model, beam->id, worst->distance, isTop);
    Line(out, "concrete beams",
         fmt::format("{}most steel {:.4g} {} at the {} of member {}{} at {:.4g}", Failures(failed), most,
                     Unit(model, kReinforcementArea), isTop ? "top" : "bottom", beam->id,
                     comb < 0 ? "" : ", " + Combination(model, comb) + ",", worst->distance));
}

void PrintColumns(std::FILE* out, const CjxStruct& model)
{
    const auto byRatio = [](const jxColRcResult& a, const jxColRcResult& b) { return a.ratio < b.ratio; };
    // The first of equal ratios, so that two runs name the same column.
    const auto worst = std::max_element(model.concreteColumns.begin(), model.concreteColumns.end(), byRatio);
    if (worst == model.concreteColumns.end())
        return;
    const auto failed = std::count_if(model.concreteColumns.begin(), model.concreteColumns.end(),
                                      [](const jxColRcResult& c) { return c.ratio > 1 || c.comb < 0; });
    Line(out, "concrete columns",
         fmt::format("{}worst ratio {:.4g}, member {}, {}, at {:.4g}, section {}",
                     Failures(static_cast<std::size_t>(failed)), worst->ratio, worst->id,
                     Combination(model, worst->comb), worst->distance, ToUtf8(worst->section)));
}

void PrintShear(std::FILE* out, const CjxStruct& model)
{
    std::size_t failed = 0;
    const jxRcShearResult* member = nullptr;
    const jxRcShearStation* closest = nullptr;
    for (const jxRcShearResult& result : model.concreteShear) {
        const auto fails = [](const jxRcShearStation& s) { return s.spacing < 0; };
        failed += std::any_of(result.stations.begin(), result.stations.end(), fails);
        for (const jxRcShearStation& station : result.stations)
            if (station.spacing > 0 && (closest == nullptr || station.spacing < closest->spacing)) {
                member = &result;
                closest = &station;
            }
    }
    assert(closest == nullptr || member != nullptr);
    if (closest != nullptr)
        Line(out, "concrete shear",
             fmt::format("{}closest stirrups {:.4g} {}, member {}, {}, at {:.4g}", Failures(failed), closest->spacing,
                         Unit(model, kDimension), member->id, Combination(model, static_cast<int>(closest->comb)),
                         closest->distance));
    else if (!model.concreteShear.empty())
        Line(out, "concrete shear", failed > 0 ? FailuresOnly(failed) : "no stirrups needed");
}

/// Center or corner of a shell, as a part of the line.
std::string PlaceOf(int point)
{
    return point == 0 ? " at its center, " : fmt::format(" at its corner {}, ", point);
}

void PrintPlates(std::FILE* out, const CjxStruct& model)
{
    constexpr const char* kLayers[] = {"top x", "top y", "bottom x", "bottom y"};
    std::size_t failed = 0;
    int shell = 0;
    int layer = 0;
    int point = 0;
    double most = -1;
    for (const jxPlateRcResult& result : model.concretePlates) {
        bool fails = false;
        for (int p = 0; p < 5; ++p)
            for (int k = 0; k < 4; ++k) {
                fails = fails || result.status[p][k] != 0;  // a layer has no other fault than its failure
                if (result.as[p][k] > most) {
                    most = result.as[p][k];
                    shell = result.id;
                    layer = k;
                    point = p;
                }
            }
        failed += fails;
    }
    if (most < 0) {
        if (failed > 0)
            Line(out, "concrete plates", FailuresOnly(failed));
        return;
    }
    const jxWoodArmer* moments = FindOrNull(model.woodArmer, shell);
    Line(out, "concrete plates",
         fmt::format("{}most steel {:.4g} {}/{} {} of shell {}{}", Failures(failed), most,
                     Unit(model, kReinforcementArea), Unit(model, kDimension), kLayers[layer], shell,
                     moments == nullptr ? "" : PlaceOf(point) + Combination(model, moments->combs[point][layer])));
}

}  // namespace

void PrintConcreteDesign(std::FILE* out, const CjxStruct& model)
{
    if (model.concreteBeams.empty() && model.concreteColumns.empty() && model.concreteShear.empty() &&
        model.concretePlates.empty())
        return;
    fmt::print(out, "\nConcrete design\n");
    PrintBeams(out, model);
    PrintColumns(out, model);
    PrintShear(out, model);
    PrintPlates(out, model);
}

}  // namespace qvx::app
