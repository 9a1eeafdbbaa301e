#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/find_record.h"
#include "model/findings.h"
#include "model/units.h"
#include "operations/area_load.h"
#include "tools/geometry.h"

namespace {

using qvx::AreaLoadOutcome;
using qvx::UnitName;

const wchar_t* LengthUnit(const CjxStruct& model)
{
    return UnitName(model.units.unit[kLength]);
}

// What a pressure times a length of the model is to be multiplied by to be a line load of the model.
double LineLoadFactor(const jxUnit& units)
{
    double f[kQuantityCount];
    GetConversionFactors(f, units, jxUnit());
    return f[kLength] * f[kSurfacePressure] / f[kLinearForce];
}

jxPoint PlaceOf(const qvxAreaLoad& converter, int node)
{
    return qvx::FindById(converter.Nodes(), node).Point();
}

AreaLoadOutcome OutcomeOf(qvxAreaLoad& converter, const CjxStruct& model, const jxAreaload& load)
{
    converter.SetAreaLoad(&model, load);
    std::vector<qvxSubArea> subAreas;
    converter.FindSubAreas(subAreas);
    AreaLoadOutcome outcome;
    outcome.load = load;
    std::copy(std::begin(converter.Corners()), std::end(converter.Corners()), outcome.corners);
    for (const jxBm& member : converter.Members())
        outcome.members[member.id] = {PlaceOf(converter, member.node1), PlaceOf(converter, member.node2)};
    for (const qvxSubArea& subArea : subAreas) {
        AreaLoadOutcome::SubArea& part = outcome.subAreas.emplace_back();
        converter.ConvertSubArea(part.loads, outcome.loadedArea, subArea);
        for (const int node : subArea.nodes)
            part.points.push_back(PlaceOf(converter, node));
        part.area = std::fabs(area(part.points.data(), static_cast<int>(part.points.size())));
    }
    outcome.footprintArea = converter.FootprintArea();
    outcome.openSubArea = converter.HasOpenSubArea();
    outcome.duplicateNode = converter.HasDuplicateNode();
    return outcome;
}

void TellStart(CjxStruct& model, const jxAreaload& load, const jxLoadCase& loadCase)
{
    CString text;
    text.Format(L"CONVERTING AREA LOAD (%d, %d, %d, %d) in load case %s", load.node[0], load.node[1], load.node[2],
                load.node[3], loadCase.label);
    model.list_msg_and_log(text, L"...");
}

void TellOutcome(CjxStruct& model, const AreaLoadOutcome& outcome)
{
    CString text;
    text.Format(L"  area load footprint: %.4g %s^2, actual loaded area: %.4g %s^2", outcome.footprintArea,
                LengthUnit(model), outcome.loadedArea, LengthUnit(model));
    model.list_msg_and_log(text, outcome.IsWhole() ? L"OK" : L"WARNING");
    text.Format(L"  %d enclosed subarea(s) generated", static_cast<int>(outcome.subAreas.size()));
    model.list_msg_and_log(text, L"");
    if (outcome.openSubArea)
        model.list_msg_and_log(L"  open sub-area(s) detected within the footprint of area load", L"WARNING");
    if (outcome.duplicateNode)
        model.list_msg_and_log(L"  duplicate node detected while constructing subareas", L"WARNING");
}

// An area that no walk closes round has no member to carry it: its load is lost unless somebody is told.
void FindUnloadedArea(CjxStruct& model, const AreaLoadOutcome& outcome, const jxLoadCase& loadCase)
{
    if (outcome.IsWhole())
        return;
    const int(&node)[4] = outcome.load.node;
    const double missing = outcome.footprintArea - outcome.loadedArea;
    CString text;
    text.Format(L"area load (%d, %d, %d, %d) of load case %s: %.4g of %.4g %s^2 %s", node[0], node[1], node[2], node[3],
                loadCase.label, std::fabs(missing), outcome.footprintArea, LengthUnit(model),
                missing > 0 ? L"got no load" : L"are loaded twice");
    qvx::Finding finding = qvx::MakeFinding(qvx::FindingCode::AreaWithoutLoad, text.Text());
    for (const int corner : node)
        finding.About(jxNd::name(), corner);
    model.findings.Add(finding);
}

}  // namespace

namespace qvx {

bool AreaLoadOutcome::IsWhole() const
{
    return std::fabs(footprintArea - loadedArea) <= 0.001 * footprintArea;
}

jxPoint AreaLoadOutcome::Resultant(const jxUnit& units) const
{
    double f[kQuantityCount];
    GetConversionFactors(f, units, jxUnit());
    const double toForce = f[kLinearForce] * f[kLength] / f[kForce];
    double sum[3] = {};
    for (const SubArea& part : subAreas)
        for (const jxLnLoad& line : part.loads) {
            const auto& [start, end] = members.at(line.id);
            sum[line.dir] += (line.value1 + line.value2) / 2 * (line.distance2 - line.distance1) *
                             calc_distance(start, end) * toForce;
        }
    return {sum[0], sum[1], sum[2]};
}

std::vector<AreaLoadOutcome> ConvertedAreaLoads(const CjxStruct& model, int loadCase)
{
    assert(loadCase >= 0 && static_cast<std::size_t>(loadCase) < model.caseLoads.size());
    qvxAreaLoad converter(LineLoadFactor(model.units));
    std::vector<AreaLoadOutcome> outcomes;
    for (const jxAreaload& load : model.caseLoads[static_cast<std::size_t>(loadCase)].areaLoads)
        outcomes.push_back(OutcomeOf(converter, model, load));
    return outcomes;
}

}  // namespace qvx

bool CjxStruct::HasAreaLoads() const
{
    return std::any_of(caseLoads.begin(), caseLoads.end(), [](const jxCaseLoad& l) { return !l.areaLoads.empty(); });
}

bool CjxStruct::ConvertAreaLoads(int loadCase, bool removeAreaLoads, bool mergeFirst)
{
    if (mergeFirst)
        Merge();
    if (loadCase < 0 || static_cast<std::size_t>(loadCase) >= std::min(loadCases.size(), caseLoads.size()))
        return false;
    const jxLoadCase& ofCase = loadCases[static_cast<std::size_t>(loadCase)];
    jxCaseLoad& loads = caseLoads[static_cast<std::size_t>(loadCase)];
    qvxAreaLoad converter(LineLoadFactor(units));
    std::vector<jxLnLoad> lines = loads.lnLoads;
    bool isWhole = true;
    for (const jxAreaload& load : loads.areaLoads) {
        TellStart(*this, load, ofCase);
        const AreaLoadOutcome outcome = OutcomeOf(converter, *this, load);
        TellOutcome(*this, outcome);
        FindUnloadedArea(*this, outcome, ofCase);
        isWhole = isWhole && outcome.IsWhole() && !outcome.openSubArea && !outcome.duplicateNode;
        for (const AreaLoadOutcome::SubArea& part : outcome.subAreas)
            lines.insert(lines.end(), part.loads.begin(), part.loads.end());
    }
    if (removeAreaLoads)
        loads.areaLoads.clear();
    std::stable_sort(lines.begin(), lines.end());
    loads.lnLoads = lines;
    return isWhole;
}
