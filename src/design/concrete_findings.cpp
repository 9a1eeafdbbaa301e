#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

#include "design/column_search.h"
#include "design/concrete_member.h"
#include "design/design_findings.h"
#include "design/designed_members.h"
#include "design/rule_difference.h"
#include "model/find_record.h"
#include "rc/concrete_code.h"

namespace qvx {

namespace {

constexpr const wchar_t* kMember = L"member";
constexpr const wchar_t* kShell = L"shell";

void FindFailedBeams(CjxStruct& model)
{
    PlaceFindings failing(model.findings, FindingCode::BeamFails);
    for (const jxBmRcResult& beam : model.concreteBeams)
        for (const jxBmRcStation& station : beam.stations)
            if (station.asTop < 0 || station.asBottom < 0) {
                CString text;
                text.Format(L"fails in bending at the %s %s under %.5g kip-ft (flags 0x%x)",
                            station.asBottom < 0 ? L"bottom" : L"top", AtDistance(station.distance).c_str(),
                            station.asBottom < 0 ? station.momentPos : station.momentNeg, beam.flags);
                failing.Add(kMember, beam.id, text.Text());
                break;
            }
}

void FindFailedColumns(CjxStruct& model)
{
    PlaceFindings failing(model.findings, FindingCode::ColumnFails);
    for (const jxColRcResult& column : model.concreteColumns)
        if (column.ratio > 1) {
            CString text;
            text.Format(L"ratio %.5g %s, section %s", column.ratio, AtDistance(column.distance).c_str(),
                        column.section);
            failing.Add(kMember, column.id, text.Text(), column.comb);
        }
}

void FindFailedShear(CjxStruct& model)
{
    PlaceFindings failing(model.findings, FindingCode::ShearFails);
    for (const jxRcShearResult& member : model.concreteShear)
        for (const jxRcShearStation& station : member.stations)
            if (station.spacing < 0) {
                CString text;
                text.Format(L"fails in shear %s under %.5g kip (status 0x%x)", AtDistance(station.distance).c_str(),
                            station.V, member.status);
                failing.Add(kMember, member.id, text.Text(), static_cast<int>(station.comb));
                break;
            }
}

/// First layer of a plate that fails, said with its point; empty when none does.
std::wstring FailedLayer(const jxPlateRcResult& plate)
{
    constexpr const wchar_t* kPoints[] = {L"the center", L"node 1", L"node 2", L"node 3", L"node 4"};
    constexpr const wchar_t* kLayers[] = {L"top x", L"top y", L"bottom x", L"bottom y"};
    for (int point = 0; point < 5; ++point)
        for (int layer = 0; layer < 4; ++layer)
            if (plate.status[point][layer] != 0) {  // a layer has no other fault than its failure
                CString text;
                text.Format(L"layer %s fails in bending at %s (status 0x%x)", kLayers[layer], kPoints[point],
                            plate.status[point][layer]);
                return text.Text();
            }
    return L"";
}

void FindFailedPlates(CjxStruct& model)
{
    PlaceFindings failing(model.findings, FindingCode::PlateFails);
    for (const jxPlateRcResult& plate : model.concretePlates)
        failing.Add(kShell, plate.id, FailedLayer(plate));
}

// Also where no column has a candidate, and none of them a result.
void FindWithoutCandidates(CjxStruct& model)
{
    PlaceFindings without(model.findings, FindingCode::NoColumnCandidates);
    std::map<std::vector<int>, bool> isEmpty;  // by ids of material, section, criterion
    for (const jxBm& beam : model.beams) {
        if (beam.excluded != 0 || WhyNoColumnDesign(model, beam) != nullptr)
            continue;
        const auto [at, isNew] = isEmpty.try_emplace({beam.material, beam.section, beam.rcCriterion});
        if (isNew)
            at->second = ColumnSectionsOf(model, FindById(model.materials, beam.material),
                                          FindById(model.sections, beam.section),
                                          FindById(model.columnRcCriteria, beam.rcCriterion))
                             .empty();
        if (at->second)
            without.Add(kMember, beam.id, L"its criterion allows no layout of bars");
    }
}

void FindInColumns(CjxStruct& model)
{
    PlaceFindings pieces(model.findings, FindingCode::ColumnInPieces);
    PlaceFindings twice(model.findings, FindingCode::ColumnMagnifiedTwice);
    for (const jxColRcResult& column : model.concreteColumns) {
        const jxBm& beam = FindById(model.beams, column.id);
        const jxColRcCrit& criterion = FindById(model.columnRcCriteria, beam.rcCriterion);
        if (column.comb < 0)
            continue;
        if ((criterion.lu3 <= 0 || criterion.lu2 <= 0) && IsPieceOfMember(model, beam))
            pieces.Add(kMember, beam.id, L"goes on in line, and its unbraced length is its own");
        const double delta = std::max(column.delta3, column.delta2);
        if (model.loadCombs[static_cast<std::size_t>(column.comb)].bPDelta != 0 && delta > 1) {
            CString text;
            text.Format(L"moments of a P-Delta combination magnified by %.4g", delta);
            twice.Add(kMember, beam.id, text.Text(), column.comb);
        }
    }
}

/// Cracking torsion of a section [kip-in]: 4 lambda sqrt(f'c) Acp^2/pcp (ACI 318-19, 22.7.5.1).
double CrackingTorsion(const CjxStruct& model, const ConcreteMember& member)
{
    constexpr double kPi = 3.14159265358979323846;
    const double(&dim)[4] = member.section.dim;
    double area = dim[0] * dim[1];
    double perimeter = 2 * (dim[0] + dim[1]);
    if (member.shape == kRegularRound) {
        area = kPi * dim[0] * dim[0] / 4;
        perimeter = kPi * dim[0];
    } else if (member.shape == kRegularTee) {
        area = dim[3] * dim[1] + (dim[0] - dim[3]) * dim[2];
    }
    const double lambda =
        model.design.shearOption != 0 ? LightweightFactor(model.design.concreteCode, member.material.Wc) : 1;
    return 4 * lambda * CappedSqrtFc(member.material.fc) * area * area / perimeter;
}

void FindTorsion(CjxStruct& model)
{
    constexpr double kWorthDesigning = 0.05;
    PlaceFindings torsion(model.findings, FindingCode::ConcreteTorsionLeftOut);
    for (const jxBm& beam : model.beams) {
        if (beam.excluded != 0 || WhyNoShearDesign(model, beam) != nullptr)
            continue;
        const LargestTorsion largest =
            LargestTorsionOf(model, beam.id, [](const jxLoadComb& comb) { return comb.bConcrete != 0; });
        const double cracking = CrackingTorsion(model, ConcreteMemberOf(model, beam)) / 12;
        if (!(largest.torsion > kWorthDesigning * cracking))
            continue;
        CString text;
        text.Format(L"torsion %.4g kip-ft, its cracking torsion is %.4g kip-ft", largest.torsion, cracking);
        torsion.Add(kMember, beam.id, text.Text(), largest.comb);
    }
}

template <class Criterion>
void FindUnused(CjxStruct& model, const std::vector<Criterion>& criteria, const std::set<int>& used)
{
    for (const Criterion& criterion : criteria) {
        if (used.contains(criterion.id))
            continue;
        CString text;
        text.Format(L"No member or shell is designed by criterion %d \"%s\" of the %s", criterion.id, criterion.label,
                    Criterion::name());
        Finding finding = MakeFinding(FindingCode::ConcreteCriterionUnused, text.Text());
        finding.About(Criterion::name(), criterion.id);
        model.findings.Add(std::move(finding));
    }
}

void FindUnusedCriteria(CjxStruct& model)
{
    std::set<int> beams, columns, plates;
    for (const jxBm& beam : model.beams) {
        if (WhyNoFlexuralDesign(model, beam) == nullptr)
            beams.insert(beam.rcCriterion);
        if (WhyNoColumnDesign(model, beam) == nullptr)
            columns.insert(beam.rcCriterion);
    }
    for (const jxShell4& shell : model.shell4s)
        if (shell.bConcreteSkip == 0 && FindById(model.materials, shell.material).fc > 0)
            plates.insert(shell.rcCriterion);
    FindUnused(model, model.beamRcCriteria, beams);
    FindUnused(model, model.columnRcCriteria, columns);
    FindUnused(model, model.plateRcCriteria, plates);
}

}  // namespace

void FindInConcreteDesign(CjxStruct& model)
{
    FindFailedBeams(model);
    FindFailedColumns(model);
    FindFailedShear(model);
    FindFailedPlates(model);
    FindWithoutCandidates(model);
    FindInColumns(model);
    FindTorsion(model);
    FindUnusedCriteria(model);
}

}  // namespace qvx
