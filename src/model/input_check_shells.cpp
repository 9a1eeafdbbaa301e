#include <algorithm>
#include <cassert>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "model/find_record.h"
#include "model/input_check.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

/// The corners of a shell; false when one of its nodes is not there.
bool GetCorners(const CjxStruct& m, const jxShell4& shell, QuadCorners& corners)
{
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const jxNd* node = FindOrNull(m.nodes, shell.node[i]);
        if (node == nullptr)
            return false;
        corners[i] = node->Point();
    }
    return true;
}

void CheckEdgeLengths(InputCheck& check, const LengthRange& range)
{
    assert(!(range.longest < range.shortest) || range.longest == 0);
    CString text;
    text.Format(L"(Maximum shell length) / (Minimum shell length) = %g", range.Ratio());
    check.model.list_msg(text, L"OK");
    // Not "<=": the ratio of lengths that are all 0 is NaN and is passed over here.
    if (!(range.Ratio() > 20.0) || check.isSilent)
        return;
    text.Format(L"Excessive shell length variation exists in the model.\n"
                L"Minimum length shell no. %d, Maximum length shell no. %d.",
                range.shortestId, range.longestId);
    const bool isAccepted = check.Ask(text + L"\nDo you want to continue solution process?");
    check.About(L"shell", range.shortestId);
    check.About(L"shell", range.longestId);
    check.List(FindingCode::ShellLengthVariation, text);
    if (!isAccepted)
        check.RefuseAnswer(L"Excessive shell length variation exists in the model.");
}

// Factors that are set and not applied are as likely forgotten as meant: the model is asked about, not refused.
void CheckFactorsAgainstOption(InputCheck& check)
{
    if (!check.isUsingFactors || check.model.bStiffnessFactors != 0)
        return;
    constexpr const wchar_t* kFactors =
        L"The model contains elements with stiffness modifications or cracking factors.";
    constexpr const wchar_t* kOption =
        L"However, the \"Apply stiffness modification factors and cracking factors\" analysis option is not set.";
    check.model.list_msg(kFactors, L"");
    check.model.list_msg(kOption, L"WARNING");
    check.Find(FindingCode::FactorsNotApplied, std::wstring(kFactors) + L" " + kOption);
    check.AskOrRefuse(CString(kFactors) + L" " + kOption + L"\n\nDo you want to continue?");
}

void CheckRepeatedNodes(InputCheck& check)
{
    bool isAnyRepeated = false;
    for (const jxShell4& s : check.model.shell4s) {
        // A shell with a node twice is a triangle to its author. Its stiffness as a quadrilateral would have a corner
        // of no angle.
        const std::set<int> distinct(std::begin(s.node), std::end(s.node));
        if (distinct.size() == std::size(s.node))
            continue;
        check.Log(L"Shell %d same nodes", s.id);
        check.About(L"shell", s.id);
        isAnyRepeated = true;
    }
    if (isAnyRepeated)
        check.Warn(FindingCode::ShellSameNodes, L"Same nodes are found on shell(s)");
}

}  // namespace

void CheckShellGeometry(InputCheck& check)
{
    const CjxStruct& m = check.model;
    LengthRange range;
    std::vector<int> poor;
    for (const jxShell4& s : m.shell4s) {
        QuadCorners p;
        if (!GetCorners(m, s, p))
            continue;
        // The mapping of the element from its natural coordinates folds over where a corner exceeds 180 degrees: the
        // determinant changes sign within (Bathe, Finite Element Procedures, 1996, section 5.3).
        if (!IsConvexQuad(p, s.angle)) {
            check.Log(L"poor element shape for shell %d", s.id);
            poor.push_back(s.id);
        }
        for (std::size_t i = 0; i < p.size(); ++i)
            // Edges, not diagonals: the ratio is about neighbors in the mesh.
            range.Add(calc_distance(p[i], p[(i + 1) % p.size()]), s.id);
    }
    CheckEdgeLengths(check, range);
    if (poor.empty())
        return;
    for (const int id : poor)
        check.About(L"shell", id);
    check.Warn(FindingCode::PoorShellShape, L"Shells with poor element shapes found.");
}

void CheckShells(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECKING SHELLS");
    bool areValid = true;
    for (const jxShell4& s : m.shell4s)
        areValid &= CheckCracking(check, L"Shell", s.id, s.cracking);
    if (!areValid)
        check.Refuse(FindingCode::CrackingFactorInvalid, L"Invalid shell cracking factors found");

    areValid = true;
    for (const jxShell4& s : m.shell4s)
        areValid &= CheckStiffnessFactors(check, L"Shell", s.id,
                                          {s.f_Fxx, s.f_Fyy, s.f_Fxy, s.f_Mxx, s.f_Myy, s.f_Mxy, s.f_Vxx, s.f_Vyy});
    if (!areValid)
        check.Refuse(FindingCode::StiffnessFactorInvalid, L"Invalid shell stiffness modification factors found");

    CheckFactorsAgainstOption(check);
    CheckRepeatedNodes(check);
}

}  // namespace qvx
