#include "design/design_findings.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

#include "model/find_record.h"

namespace qvx {

namespace {

/// Unit vector from a node of a member to its other end.
jxPoint DirectionFrom(const CjxStruct& model, const jxBm& beam, int node)
{
    const jxNd& a = FindById(model.nodes, node);
    const jxNd& b = FindById(model.nodes, node == beam.node1 ? beam.node2 : beam.node1);
    const double L = std::hypot(b.x - a.x, b.y - a.y, b.z - a.z);
    return {(b.x - a.x) / L, (b.y - a.y) / L, (b.z - a.z) / L};
}

bool GoesOnAt(const CjxStruct& model, const jxBm& beam, int node)
{
    constexpr double kInLine = -0.9962;  // cosine: within 5 degrees
    const auto meeting = model.nodeBeams.find(node);
    if (meeting == model.nodeBeams.end() || meeting->second.size() != 2 || FindOrNull(model.supports, node) != nullptr)
        return false;
    const int id = meeting->second[0] == beam.id ? meeting->second[1] : meeting->second[0];
    const jxBm& other = FindById(model.beams, id);
    if (other.id == beam.id || other.section != beam.section || other.excluded != 0)
        return false;
    const jxPoint u = DirectionFrom(model, beam, node), v = DirectionFrom(model, other, node);
    return u.x * v.x + u.y * v.y + u.z * v.z < kInLine;
}

}  // namespace

PlaceFindings::PlaceFindings(FindingList& findings, FindingCode code)
    : findings_(findings), code_(code), rest_(MakeFinding(code, {}))
{
}

PlaceFindings::~PlaceFindings()
{
    if (rest_.count == 0)
        return;
    rest_.text = L"The same of " + std::to_wstring(rest_.count) + L" more";
    findings_.Add(std::move(rest_));
}

void PlaceFindings::Add(const wchar_t* kind, int id, const std::wstring& text, int comb)
{
    if (text.empty())
        return;
    if (told_ == Finding::kMostRecords) {
        rest_.About(kind, id);
        return;
    }
    ++told_;
    std::wstring subject = kind;
    subject[0] = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(subject[0])));
    Finding finding = MakeFinding(code_, subject + L" " + std::to_wstring(id) + L": " + text);
    finding.About(kind, id);
    finding.combination = comb;
    findings_.Add(std::move(finding));
}

bool IsPieceOfMember(const CjxStruct& model, const jxBm& beam)
{
    return GoesOnAt(model, beam, beam.node1) || GoesOnAt(model, beam, beam.node2);
}

LargestTorsion LargestTorsionOf(const CjxStruct& model, int member, bool (*isMarked)(const jxLoadComb&))
{
    LargestTorsion largest;
    for (std::size_t comb = 0; comb < model.combResults.size() && comb < model.loadCombs.size(); ++comb) {
        const jxBmVMD* curve =
            isMarked(model.loadCombs[comb]) ? FindOrNull(model.combResults[comb].beamCurves, member) : nullptr;
        if (curve == nullptr)
            continue;
        for (const jxVMD& station : curve->vmd)
            if (std::fabs(station.Mx) > largest.torsion)
                largest = {std::fabs(station.Mx), static_cast<int>(comb)};
    }
    return largest;
}

}  // namespace qvx
