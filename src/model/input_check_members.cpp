#include "model/find_record.h"
#include "model/input_check.h"

#include <cassert>

namespace qvx {

void CheckMembers(InputCheck& check)
{
    const CjxStruct& m = check.model;
    check.Heading(L"CHECKING MEMBERS");
    // Factors are looked at whether or not bStiffnessFactors lets them act: it may be switched on without another look.
    bool areValid = true;
    for (const jxBm& b : m.beams)
        areValid &= CheckCracking(check, L"Member", b.id, b.cracking);
    if (!areValid)
        check.Refuse(FindingCode::CrackingFactorInvalid, L"Invalid member cracking factors found");

    areValid = true;
    for (const jxBm& b : m.beams)
        areValid &= CheckStiffnessFactors(check, L"Member", b.id, {b.f_Iz, b.f_Iy, b.f_J, b.f_A, b.f_Ay, b.f_Az});
    if (!areValid)
        check.Refuse(FindingCode::StiffnessFactorInvalid, L"Invalid member stiffness modification factors found");

    areValid = true;
    for (const jxBm& b : m.beams) {
        if (b.node1 != b.node2)
            continue;
        check.Log(L"Member %d same start and end nodes", b.id);
        check.About(L"member", b.id);
        areValid = false;
    }
    if (!areValid)
        check.Refuse(FindingCode::MemberSameNodes, L"Same start and end nodes are found on member(s)");
}

void CheckMemberLengths(InputCheck& check)
{
    const CjxStruct& m = check.model;
    LengthRange range;
    for (const jxBm& b : m.beams) {
        const jxNd* start = FindOrNull(m.nodes, b.node1);
        const jxNd* end = FindOrNull(m.nodes, b.node2);
        if (start != nullptr && end != nullptr)
            // Members without their nodes are told elsewhere and have no length.
            range.Add(calc_distance(start->Point(), end->Point()), b.id);
    }
    assert(m.beams.empty() || range.longest >= range.shortest || range.longest == 0);
    // A stiff short member beside a soft long one costs digits: their bending stiffness differs by the cube of the
    // ratio.
    CString text;
    text.Format(L"(Maximum member length) / (Minimum member length) = %g", range.Ratio());
    check.model.list_msg(text, L"OK");
    // Not "<=": the ratio of lengths that are all 0 is NaN and is passed over here.
    if (!(range.Ratio() > 100.0) || check.isSilent)
        return;
    text.Format(L"Excessive member length variation exists in the model.\n"
                L"Minimum length member no. %d. Maximum length member no. %d",
                range.shortestId, range.longestId);
    const bool isAccepted = check.Ask(text + L"\nDo you want to continue solution process?");
    check.About(L"member", range.shortestId);
    check.About(L"member", range.longestId);
    check.List(FindingCode::MemberLengthVariation, text);
    if (!isAccepted)
        check.RefuseAnswer(L"Excessive member length variation exists in the model.");
}

}  // namespace qvx
