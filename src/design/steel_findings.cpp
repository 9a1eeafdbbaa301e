#include <algorithm>
#include <cmath>
#include <set>

#include "design/design_findings.h"
#include "design/designed_members.h"
#include "design/rule_difference.h"
#include "design/steel_members.h"
#include "model/find_record.h"
#include "steel/aisc_basis.h"
#include "steel/steel_design_manager.h"

namespace qvx {

namespace {

constexpr const wchar_t* kMember = L"member";

/// Plastic torsion of a shape [kip-in], shear stress 0.6 Fy throughout: closed walls by their enclosed area, open ones by
/// the sand heap over their plates, b t^2/2 each (Boresi & Schmidt, Advanced Mechanics of Materials, ch. 6).
double PlasticTorsion(const jxSect_AISC& s, double Fy)
{
    constexpr double kPi = 3.14159265358979323846;
    double modulus = 0;
    if (IsRoundTube(s.shape))
        modulus = kPi * (s.d - s.t) * (s.d - s.t) * s.t / 2;
    else if (IsBox(s.shape))
        modulus = 2 * (s.d - s.t) * (s.b - s.t) * s.t;
    else if (s.shape == kShapeL || s.shape == kShape2L)
        modulus = (s.shape == kShape2L ? 2 : 1) * (s.d + s.b - s.t) * s.t * s.t / 2;
    else if (IsTee(s.shape))
        modulus = (s.b * s.tf * s.tf + (s.d - s.tf) * s.tw * s.tw) / 2;
    else
        modulus = (2 * s.b * s.tf * s.tf + (s.d - 2 * s.tf) * s.tw * s.tw) / 2;
    return 0.6 * Fy * modulus;
}

bool IsFamilyAsked(const jxSteelCrit& criterion)
{
    return !IsDefaultFamily(criterion.family);
}

void FindFailed(CjxStruct& model)
{
    PlaceFindings failing(model.findings, FindingCode::SteelMemberFails);
    PlaceFindings without(model.findings, FindingCode::NoSteelCandidate);
    for (const jxSteelResult& member : model.steelResults) {
        if (member.sections.empty() || member.sections.front().comb < 0)
            continue;
        const jxSteelSectionResult& own = member.sections.front();
        if (own.ratio > 1) {
            CString text;
            text.Format(L"ratio %.5g of %s %s", own.ratio, own.label, AtDistance(own.distance).c_str());
            failing.Add(kMember, member.id, text.Text(), own.comb);
        }
        const jxSteelCrit& criterion = FindById(model.steelCriteria, FindById(model.beams, member.id).steelCriterion);
        if (IsFamilyAsked(criterion) && own.ratio > criterion.maxRatio && member.sections.size() == 1) {
            CString text;
            text.Format(L"no shape of family %s%s has a ratio of at most %.4g", criterion.family,
                        model.design.bUseSectionPool != 0 ? L" in the pool" : L"", criterion.maxRatio);
            without.Add(kMember, member.id, text.Text());
        }
    }
}

void FindUnknown(CjxStruct& model)
{
    for (const jxSteelCrit& criterion : model.steelCriteria) {
        std::vector<jxSect_AISC> shapes;
        if (IsFamilyAsked(criterion))
            CSteelDesignManager::Instance().GenerateSections(shapes, criterion.family);
        if (!IsFamilyAsked(criterion) || !shapes.empty())
            continue;
        CString text;
        text.Format(L"The table has no family \"%s\" (steel criterion %d)", criterion.family, criterion.id);
        Finding finding = MakeFinding(FindingCode::UnknownSteelFamily, text.Text());
        finding.About(jxSteelCrit::name(), criterion.id);
        model.findings.Add(std::move(finding));
    }
    PlaceFindings unknown(model.findings, FindingCode::SteelSectionUnknown);
    for (const jxBm& beam : model.beams)
        if (WhyNoSteelDesign(model, beam) == kNoShapeOfTheTable)
            unknown.Add(kMember, beam.id,
                        std::wstring(L"the table has no shape \"") + FindById(model.sections, beam.section).label +
                            L"\"");
}

void FindInMembers(CjxStruct& model)
{
    constexpr double kWorthChecking = 0.01;
    PlaceFindings pieces(model.findings, FindingCode::SteelMemberInPieces);
    PlaceFindings twice(model.findings, FindingCode::SteelMagnifiedTwice);
    PlaceFindings torsion(model.findings, FindingCode::SteelTorsionLeftOut);
    const SteelMemberDesign design(model);
    for (const jxSteelResult& member : model.steelResults) {
        if (member.sections.empty() || member.sections.front().comb < 0)
            continue;
        const jxBm& beam = FindById(model.beams, member.id);
        const jxSteelCrit& c = FindById(model.steelCriteria, beam.steelCriterion);
        const bool takesItsLength = c.L3 == 0 || c.L2 == 0 || c.Lz == 0 || (c.Lb == 0 && c.bContinuous == 0);
        if (takesItsLength && IsPieceOfMember(model, beam))
            pieces.Add(kMember, beam.id, L"goes on in line, and an unbraced length is its own");
        const int comb = member.sections.front().comb;
        if (model.loadCombs[static_cast<std::size_t>(comb)].bPDelta != 0)
            if (const double B1 = design.Amplification(beam, member); B1 > 1) {
                CString text;
                text.Format(L"moments of a P-Delta combination amplified by B1 %.4g", B1);
                twice.Add(kMember, beam.id, text.Text(), comb);
            }
        jxSect_AISC shape;
        CSteelDesignManager::Instance().GetAiscSection(shape, member.sections.front().label);
        const double plastic = PlasticTorsion(shape, member.fy) / kInchesPerFoot;
        const LargestTorsion largest =
            LargestTorsionOf(model, beam.id, [](const jxLoadComb& combination) { return combination.bSteel != 0; });
        if (largest.torsion > kWorthChecking * plastic) {
            CString text;
            text.Format(L"torsion %.4g kip-ft, its plastic torsion is %.4g kip-ft", largest.torsion, plastic);
            torsion.Add(kMember, beam.id, text.Text(), largest.comb);
        }
    }
}

void FindUnused(CjxStruct& model)
{
    std::set<int> used;
    for (const jxBm& beam : model.beams)
        if (WhyNoSteelDesign(model, beam) == nullptr)
            used.insert(beam.steelCriterion);
    for (const jxSteelCrit& criterion : model.steelCriteria) {
        if (used.contains(criterion.id))
            continue;
        CString text;
        text.Format(L"No member is designed by criterion %d \"%s\" of the %s", criterion.id, criterion.label,
                    jxSteelCrit::name());
        Finding finding = MakeFinding(FindingCode::SteelCriterionUnused, text.Text());
        finding.About(jxSteelCrit::name(), criterion.id);
        model.findings.Add(std::move(finding));
    }
}

}  // namespace

void FindInSteelDesign(CjxStruct& model)
{
    FindFailed(model);
    FindUnknown(model);
    FindInMembers(model);
    FindUnused(model);
}

}  // namespace qvx
