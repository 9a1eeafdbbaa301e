#include "design/design_run.h"
#include "design/member_batches.h"
#include "design/steel_members.h"

int CjxStruct::ExecuteSteelDesign()
{
    if (!HasStaticSolution())
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
    run.Finish(L"steel");
    return 1;
}

// A member with a large pool takes some hundredths of a second, and the user's wish to stop is to be heard within one.
void CjxStruct::MemberSteelDesign()
{
    constexpr std::size_t kMembersPerThread = 8;
    const qvx::SteelMemberDesign memberDesign(*this);
    steelResults.clear();
    qvx::DesignInBatches(
        *this, beams, kMembersPerThread, [&](const jxBm& beam) { return memberDesign.Of(beam); },
        [&](jxSteelResult&& member) { steelResults.push_back(std::move(member)); });
}
