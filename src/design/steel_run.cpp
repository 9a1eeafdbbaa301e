#include <optional>
#include <string>

#include "design/design_findings.h"
#include "design/design_run.h"
#include "design/member_batches.h"
#include "design/steel_members.h"

int CjxStruct::ExecuteSteelDesign()
{
    // The curves of members are what is designed; without displacements they were never formed.
    if (combResults.empty() || combResults.front().displacements.empty())
        return qvx::RefuseDesign(L"There are no static analysis results to perform steel design!");
    qvx::DesignRun run(*this);
    list_msg(L"START CHECKING STEEL INPUT", L"...");
    if (CheckSteelDesignInputData() == 0)
        return qvx::RefuseDesign(L"Invalid input, please check log file for details from File->View Log File menu.");
    list_msg(L"FINISHED CHECKING STEEL INPUT", L"OK");
    LogLine(L"\nSolving...\n");

    ClearSteelResult();
    list_msg(L"START MEMBER STEEL DESIGN", L"...");
    MemberSteelDesign();
    list_msg(L"FINISHED MEMBER STEEL DESIGN", L"OK");
    GetNodeBeamsMap();
    qvx::FindInSteelDesign(*this);
    run.Finish(L"steel");
    return 1;
}

// A member with a large pool takes some hundredths of a second, and the user's wish to stop is to be heard within one.
void CjxStruct::MemberSteelDesign()
{
    constexpr std::size_t kMembersPerThread = 8;
    const qvx::SteelMemberDesign memberDesign(*this);
    steelResults.clear();
    struct DesignedMember
    {
        jxSteelResult result;
        std::wstring difference;  // from the consistent rules; empty for none
    };
    const qvx::DesignRules rules = qvx::RulesOf(*this);
    const auto designOf = [&](const jxBm& beam) -> std::optional<DesignedMember> {
        std::optional<jxSteelResult> result = memberDesign.Of(beam, rules);
        if (!result)
            return std::nullopt;
        std::wstring difference =
            rules == qvx::DesignRules::Usual ? memberDesign.DifferenceOf(beam, *result) : std::wstring();
        return DesignedMember{std::move(*result), std::move(difference)};
    };
    qvx::PlaceFindings differing(findings, qvx::FindingCode::SteelRulesDiffer);
    qvx::DesignInBatches(*this, beams, kMembersPerThread, designOf, [&](DesignedMember&& member) {
        differing.Add(L"member", member.result.id, member.difference);
        steelResults.push_back(std::move(member.result));
    });
}
