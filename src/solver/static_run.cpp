#include <algorithm>
#include <chrono>

#include "elements/beam_group.h"
#include "elements/brick_group.h"
#include "elements/shell4_group.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "platform/cwin_app.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

using qvx::double128;

namespace {

/// What the static run does not do yet is refused before anything is touched, never answered with wrong numbers.
void RefuseWhatIsMissing(const CjxStruct& model)
{
    if (model.solverType == DoubleSparse)
        throw jxException(L"The sparse solver (solver type 2) is not available yet. Available are the double-precision "
                          L"skyline solver (0) and the quad-precision skyline solver (1).");
}

/// The model's units as the source of a conversion: every quantity is marked to be converted.
jxUnit ConversionSource(const jxUnit& units)
{
    jxUnit source = units;
    std::fill(std::begin(source.flags), std::end(source.flags), 1);
    return source;
}

class WallClock
{
public:
    int Seconds() const
    {
        return static_cast<int>(
            std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start_).count());
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void PrepareCombinations(CjxStruct& model)
{
    const std::size_t n = model.loadCombs.size();
    model.loadVectors.assign(n, {});
    model.combResults.resize(n);
    model.combOutcomes.assign(n, {});
    model.digitsLost = 0;
    if (model.maxNonlinearIterations == 0)
        model.maxNonlinearIterations = 1;
}

}  // namespace

int CjxStruct::RefuseInput()
{
    const wchar_t* text = L"Invalid input, please check log file for details from menu File->View Log File.";
    qvx::ReportFault(*this, text);
    RepaireData();
    return 0;
}

/// The whole linear and nonlinear static analysis. Until the units are converted back the model is in internal units;
/// an exception that leaves here leaves it so, with bInSolution set, for RestoreInputData.
int CjxStruct::ExecuteStatic()
{
    RefuseWhatIsMissing(*this);
    const WallClock clock;
    timer(1);
    list_msg(L"START CHECKING INPUT", L"...");
    if (CheckInputData(0, false) == 0)
        return RefuseInput();
    list_msg(L"FINISHED CHECKING INPUT", L"OK");
    LogLine(L"\nSolving...\n");

    ClearStaticResult();
    const jxUnit internal;
    const jxUnit display = ConversionSource(units);
    SaveInputData();
    ConvertUnits(display, internal);
    bInSolution = 1;
    PrepareCombinations(*this);
    AutoRenumberNodesAndElements();

    {
        CjxBmGroup bm(this);
        CjxShell4Group sh(this);
        CjxBrickGroup br(this);
        jxSolutionData data;
        const int nTerms = ProcessElementConnectivity(data);
        AllocateStiffnessMemory(data, 0, nTerms);
        if (linearCombCount >= 1)
            SolveLinearCombinations(data, bm, sh, br);
        if (linearCombCount != static_cast<int>(loadCombs.size()))
            SolveNonlinearCombinations(data, bm, sh, br);
    }
    CalcModalCombinationResult();
    CalcRcBeamEnvelop();
    CalcRcWoodArmerMoment();

    ConvertUnits(internal, display);
    bInSolution = 0;
    RestoreInputData();
    CString text;
    text.Format(L"total time spent on analysis %d seconds", clock.Seconds());
    list_msg(text, L"Completed");
    if (AfxGetApp().GetProfileInt(L"Preferences", L"LockModel", 0) == 1)
        bLockModel = 1;
    return 1;
}

/// One stiffness and one factor for all combinations without geometric or one-way behaviour.
void CjxStruct::SolveLinearCombinations(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    try {
        list_msg(L"", L"");
        qvx::AnnouncePart(*this, L"PROCESS LINEAR LOAD COMBINATIONS");
        InitializeComb(-1);
        qvx::ClearStiffness(data);
        ProcessElementGroupStiffness(data, bm, sh, br, -1);

        list_msg(L"Processing boundary conditions", L"...");
        qvx::SetPenaltyStiffness(*this, data);
        ProcessBoundary(data, penaltyStiffness, -1);
        CheckDiagonalStiffnessTerm(data);
        qvx::LogStiffnessTime(*this);

        qvx::FactorizeStiffness(*this, data, false);
        list_msg0(L"FACTORIZATION", L"OK");
        qvx::LogTimeSpent(*this, L"FACTORIZATION");
        CheckSolutionStability(data);

        for (int comb = 0; comb < static_cast<int>(loadCombs.size()); ++comb)
            if (!loadCombs[static_cast<std::size_t>(comb)].bPDelta && !bNonlinear)
                SolveLinearCombination(data, bm, sh, br, comb);
    } catch (const jxException& fault) {
        qvx::ReportFault(*this, fault.GetText());
        throw jxException(fault.GetText());
    }
}

void CjxStruct::SolveLinearCombination(jxSolutionData& data, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br,
                                       int comb)
{
    list_msg(qvx::CombinationTitle(*this, comb), L"...");
    std::vector<double128>& load = loadVectors[static_cast<std::size_t>(comb)];
    load.assign(static_cast<std::size_t>(numberOfEquations) + 1, double128());
    ProcessNodalAndElementLoads(comb, bm, sh, br);
    ProcessForcedDisplacements(data, penaltyStiffness, comb);
    CheckNonzeroLoadVector(load.data());
    qvx::ReduceAndSubstitute(*this, data, load);
    Output_All(comb, bm, sh, br);
    qvx::LogOutputTime(*this);
    combOutcomes[static_cast<std::size_t>(comb)].end = CombEnd::Linear;
}
