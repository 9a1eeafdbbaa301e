#include "solver/static_stages.h"

#include <algorithm>
#include <string>

#include "platform/host_services.h"
#include "solver/instability.h"
#include "solver/skyline_solver.h"
#include "tools/timer.h"

namespace qvx {

namespace {

unsigned RunSkyline(CjxStruct& model, jxSolutionData& data, double128* v, SkylineMode mode, bool bTolerant)
{
    const int* maxa = data.maxa.data();
    const int n = model.numberOfEquations;
    if (model.solverType == DoubleSkyline)
        return SolveSkyline<double>(&model, data.K.data(), v, maxa, n, 0, mode, bTolerant);
    return SolveSkyline<double128>(&model, data.KQ.data(), v, maxa, n, 0, mode, bTolerant);
}

[[noreturn]] void ThrowUnstable(CjxStruct& model, int equation)
{
    int node = 0;
    int dof = 1;
    model.FindDof(node, dof, static_cast<int>(model.nodes.size()), equation);
    model.LogLine(InstabilityText(node, dof) + L" during solution");
    model.list_msg0(L"FACTORIZATION", L"NOT OK");
    throw jxException(kUnstableText);
}

}  // namespace

void ReportFault(CjxStruct& model, const wchar_t* text)
{
    if (model.bInteractive)
        AfxMessageBox(text);
    model.list_msg(text, L"...");
}

void AnnouncePart(CjxStruct& model, const wchar_t* heading)
{
    model.list_msg_and_log(heading, L"");
    model.list_msg(std::wstring(128, L'-').c_str(), L"");
}

CString CombinationTitle(const CjxStruct& model, int comb)
{
    CString title;
    title.Format(L"LOAD COMBINATION %d: %s", comb + 1, model.loadCombs[static_cast<std::size_t>(comb)].label);
    return title;
}

void LogTimeSpent(CjxStruct& model, const wchar_t* activity)
{
    CString text;
    text.Format(L"time spent on %s = %d seconds", activity, static_cast<int>(timer(0)));
    model.LogLine(text);
    timer(1);
}

void LogStiffnessTime(CjxStruct& model)
{
    CString text;
    text.Format(L"time spent on stiffness calculation = %d seconds", static_cast<int>(timer(0) / 1000));
    model.LogLine(text);
    timer(1);
}

void LogOutputTime(CjxStruct& model)
{
    CString text;
    text.Format(L"time spent on output = %g seconds", timer(0));
    model.LogLine(text);
}

void ClearStiffness(jxSolutionData& data)
{
    std::fill(data.K.begin(), data.K.end(), 0.0);
    std::fill(data.KQ.begin(), data.KQ.end(), double128());
}

void SetPenaltyStiffness(CjxStruct& model, jxSolutionData& data)
{
    model.penaltyStiffness = double128(model.ComputeMaxStiffnessTerm(data)) * double128(model.penaltyFactor);
}

bool FactorizeStiffness(CjxStruct& model, jxSolutionData& data, bool bAllowNonPositivePivot)
{
    model.list_msg(L"FACTORIZATION", L"...");
    try {
        return RunSkyline(model, data, nullptr, Factorize, bAllowNonPositivePivot) != 0;
    } catch (int equation) {
        ThrowUnstable(model, equation);
    }
}

void ReduceAndSubstitute(CjxStruct& model, jxSolutionData& data, std::vector<double128>& load)
{
    model.list_msg(L"REDUCTION AND BACK-SUBSTITUTION", L"...");
    RunSkyline(model, data, load.data(), Substitute, false);
    model.list_msg0(L"REDUCTION AND BACK-SUBSTITUTION", L"OK");
    LogTimeSpent(model, L"reduction and back-substitution");
}

}  // namespace qvx
