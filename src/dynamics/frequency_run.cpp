#include "dynamics/frequency_run.h"

#include <algorithm>
#include <utility>

#include "dynamics/eigen_stages.h"
#include "dynamics/masses.h"
#include "dynamics/modal_findings.h"
#include "dynamics/modal_response.h"
#include "dynamics/subspace_iteration.h"
#include "elements/stiffness_sink.h"
#include "model/input_check.h"
#include "platform/host_services.h"
#include "solver/iteration.h"
#include "solver/run_frame.h"
#include "solver/skyline_stages.h"
#include "solver/sparse_stages.h"
#include "solver/static_stages.h"
#include "tools/timer.h"

namespace qvx {

namespace {

/// What the user may change after a failed iteration, line by line as it is shown.
constexpr const wchar_t* kAdvice[] = {
    L"\nYou may try to solve for fewer number of eigen modes",
    L"\nand/or use more number of iteration vectors (from Run | Frequency Analysis)",
    L"\nand/or use quad-precision solver(from Run | Analysis Options).",
    L"\n\nIf the model contains rigid diaphragm, try to adjust the diaphragm stiffness factor to a smaller value (from "
    L"Settings | Data Options)"};

std::unique_ptr<SystemStages> MakeStages(const RunContext& context, jxSolutionData& data)
{
    if (context.model.solverType == DoubleSparse)
        return std::make_unique<SparseStages>(context, data, ForModes);
    return std::make_unique<SkylineStages>(context, data, ForModes);
}

template <Number Real>
std::vector<Real> DiagonalOf(jxSolutionData& data, int solverType, int nEquations)
{
    std::vector<Real> diagonal(static_cast<std::size_t>(nEquations) + 1);
    WithStiffnessSink(data, solverType, [&](const auto& stiffness) {
        for (int e = 1; e <= nEquations; ++e)
            diagonal[static_cast<std::size_t>(e)] = static_cast<Real>(stiffness.Diagonal(e));
    });
    return diagonal;
}

std::vector<double> Rounded(const std::vector<double128>& values)
{
    std::vector<double> rounded(values.size());
    std::transform(values.begin(), values.end(), rounded.begin(),
                   [](const double128& value) { return static_cast<double>(value); });
    return rounded;
}

/// A single vector leaves its iteration as it came: here it gets the scale that the others have.
template <Number Real>
void ScaleToUnitModalMass(std::vector<Real>& shape, const std::vector<Real>& masses)
{
    using std::sqrt;
    Real modalMass = 0;
    for (std::size_t e = 1; e < shape.size(); ++e)
        modalMass += shape[e] * shape[e] * masses[e];
    const Real scale = Real(1) / sqrt(modalMass);
    for (Real& value : shape)
        value *= scale;
}

CString NoMassText(const CjxStruct& model)
{
    if (!model.bLoadsToMasses)
        return L"No masses are defined.\nMasses may be converted from the frequency load combination from menu Run | "
               L"Frequency Analysis.\nAlternatively, masses may be assigned from menu Loads | Additional Masses.";
    const bool hasCombination =
        model.massLoadComb >= 0 && model.massLoadComb < static_cast<int>(model.loadCombs.size());
    CString text;
    text.Format(
        L"No masses are defined.\nNo gravity [%s-direction] loads in load combination [%s] can be converted to "
        L"masses.\nTo change the gravity direction and self weight multiplier, go to menu Loads | Self Weights. "
        L" Also make sure element self weights are not excluded.",
        kDofNames[model.selfWeightDir],
        hasCombination ? model.loadCombs[static_cast<std::size_t>(model.massLoadComb)].label : L"");
    return text;
}

}  // namespace

FrequencyRun::FrequencyRun(const RunContext& context, bool massOnly)
    : context_(context), model_(context.model), groups_(context.model), stages_(MakeStages(context_, data_)),
      massOnly_(massOnly)
{
}

int FrequencyRun::Execute()
{
    const WallClock clock;
    timer(1);
    if (!CheckInput(model_, kFrequencyCheck))
        return 0;
    if (!FormAndSolve())
        return 0;
    const int modes = model_.numberOfModes;
    EndRun(context_, display_, clock);
    if (!massOnly_)
        FindInModes(model_);
    if (model_.numberOfModes != modes) {
        model_.numberOfModes = modes;
        model_.SaveInputData();  // a later restoring is not to bring the larger number back
    }
    return 1;
}

/// @return  false when there is no mass: told, and the model left as it is
bool FrequencyRun::FormAndSolve()
{
    try {
        Prepare();
        const int massDofs = HasMassCombination() ? FormMassCombination() : 0;
        if (massOnly_)
            return true;
        if (massDofs < 1) {
            const CString text = NoMassText(model_);
            ReportFault(model_, text);
            FindWithoutMass(model_, text);
            return false;
        }
        ClampModes(massDofs);
        TellSizes(massDofs);
        SolveModesTellingAdvice();
        return true;
    } catch (const jxException& fault) {
        if (!context_.IsAborted())
            FindModesFailed(model_, fault.GetText());
        throw;
    }
}

void FrequencyRun::Prepare()
{
    if (massOnly_)
        model_.ClearSolverData();
    else
        model_.ClearFrequencyResult();
    if (!model_.HasStaticSolution())
        model_.findings.Drop(FindingStage::Run);  // of a run that left nothing else
    display_ = BeginRun(context_);
    model_.loadVectors.assign(model_.loadCombs.size(), {});
    model_.combResults.resize(model_.loadCombs.size());
    if (model_.maxNonlinearIterations == 0)
        model_.maxNonlinearIterations = 1;
    model_.AutoRenumberNodesAndElements();
    model_.peek_msg();
    stages_->Allocate(model_.ProcessElementConnectivity(data_));
}

bool FrequencyRun::HasMassCombination() const
{
    return model_.massLoadComb >= 0 && model_.massLoadComb < static_cast<int>(model_.loadCombs.size());
}

bool FrequencyRun::IsIterated() const
{
    return MassCombination().bPDelta != 0 || model_.bNonlinear != 0;
}

/// Unlike in a static run the mark of changed elements is not taken back from step to step: only the limit of iterations
/// ends the search, with the last axial forces and failed elements.
/// Displacements and axial forces on the way are no results of the combination: those of an earlier static run stay.
int FrequencyRun::FormMassCombination()
{
    CString title;
    title.Format(L"PROCESS MASS LOAD COMBINATION (%s)", MassCombination().label);
    model_.list_msg(title, L"...");
    model_.InitializeComb(model_.massLoadComb);
    jxCombResult& result = model_.combResults[static_cast<std::size_t>(model_.massLoadComb)];
    const jxCombResult kept = std::exchange(result, {});
    int massDofs = 0;
    IterateUntilStop([&](int iteration) {
        Load().assign(static_cast<std::size_t>(model_.numberOfEquations) + 1, double128());
        model_.ProcessNodalAndElementLoads(model_.massLoadComb, groups_.members, groups_.shells, groups_.bricks);
        stages_->Solver().Clear();
        if (!FormStiffness(iteration))
            return true;
        massDofs = FormMasses();
        if (!IsIterated() || massOnly_)
            return true;
        model_.ProcessForcedDisplacements(data_, model_.penaltyStiffness, model_.massLoadComb);
        FactorizeIteration();
        return SolveIteration(iteration);
    });
    result = kept;
    return massDofs;
}

/// @return  false when an element could not be formed: that is told, and the run goes on with the masses it has
bool FrequencyRun::FormStiffness(int iteration)
{
    const int comb = model_.massLoadComb;
    if (IsIterated()) {
        CString title;
        title.Format(L"************ Iteration %d ************", iteration);
        model_.list_msg(title, L"...");
    }
    try {
        model_.ProcessElementGroupStiffness(data_, groups_.members, groups_.shells, groups_.bricks, comb);
    } catch (const jxException& fault) {
        if (context_.IsAborted())
            throw;
        ReportFault(model_, CString(L"Error in solving mass load combination\n") + fault.GetText());
        return false;
    }
    model_.list_msg(L"Processing boundary conditions", L"...");
    model_.penaltyStiffness = double128(model_.ComputeMaxStiffnessTerm(data_)) * double128(model_.penaltyFactor);
    model_.ProcessBoundary(data_, model_.penaltyStiffness, comb);
    model_.CheckDiagonalStiffnessTerm(data_);
    LogStiffnessTime(model_);
    return true;
}

int FrequencyRun::FormMasses()
{
    if (model_.solverType == DoubleSkyline) {
        masses_ = BuildMasses<double>(model_, Load());
        massesQ_.assign(masses_.begin(), masses_.end());
    } else {
        massesQ_ = BuildMasses<double128>(model_, Load());
    }
    return CountMassDofs(massesQ_);
}

void FrequencyRun::FactorizeIteration()
{
    const bool isPositive = stages_->Factorize(true);
    if (!isPositive && !hasWarned_) {
        ReportFault(model_, L"structure buckled or excessive p-delta effect, check the results with caution.");
        hasWarned_ = true;
    }
    stages_->AnnounceFactor(!hasWarned_);
    LogFactorizationTime(model_);
    stages_->CheckStability();
}

/// @return  whether the iteration ends here
bool FrequencyRun::SolveIteration(int iteration)
{
    stages_->AnnounceSolution();
    std::vector<double128>* const loads[] = {&Load()};
    stages_->Solve(loads);
    model_.list_msg0(kSolution, L"OK");
    LogSolutionTime(model_);
    return model_.CheckNonlinearStop(iteration, model_.massLoadComb, groups_.members);
}

/// More modes than masses do not exist: the model keeps the number that does.
void FrequencyRun::ClampModes(int massDofs)
{
    constexpr int kLeastVectors = 8;
    if (model_.numberOfModes > massDofs) {
        model_.numberOfModes = massDofs;
        model_.list_msg(L"Number of eigen modes requested is greater than mass DOFs", L"WARNING");
    }
    jxFrequencyOutcome& outcome = model_.frequencyOutcome;
    outcome.massDofs = massDofs;
    outcome.vectors = std::min(massDofs, std::max({model_.numberOfModes, model_.iterationVectors, kLeastVectors}));
    outcome.modes = std::clamp(model_.numberOfModes, 1, outcome.vectors);
}

void FrequencyRun::TellSizes(int massDofs) const
{
    const auto tell = [&](const wchar_t* format, int number) {
        CString text;
        text.Format(format, number);
        model_.list_msg(text, L"OK");
    };
    tell(L"Number of mass degrees of freedom: %d", massDofs);
    tell(L"Number of eigen modes to be solved for: %d", model_.frequencyOutcome.modes);
    tell(L"Number of subspace iteration vectors used: %d", model_.frequencyOutcome.vectors);
}

/// Frees matrix and factor before it returns, whatever happens.
void FrequencyRun::SolveModesTellingAdvice()
{
    try {
        if (model_.solverType == QuadSkyline)
            SolveModes<double128>(massesQ_);
        else
            SolveModes<double>(model_.solverType == DoubleSkyline ? masses_ : Rounded(massesQ_));
        stages_->Release();
    } catch (const jxException& fault) {
        stages_->Release();
        if (context_.IsAborted())
            throw;
        CString text = fault.GetText();
        for (const wchar_t* line : kAdvice) {
            text += line;
            Host().DebugOutput(text.Text());
        }
        model_.list_msg(text, L"ERROR");
        throw jxException(text);
    }
}

template <Number Real>
void FrequencyRun::SolveModes(const std::vector<Real>& masses)
{
    jxFrequencyOutcome& outcome = model_.frequencyOutcome;
    EigenStages stiffness(context_, data_, stages_->Solver(), massesQ_);
    const std::vector<Real> diagonal = DiagonalOf<Real>(data_, model_.solverType, model_.numberOfEquations);
    const bool isSparse = model_.solverType == DoubleSparse;
    SubspaceResult<Real> modes = IterateSubspace<Real>(
        stiffness, diagonal, masses,
        {.modes = outcome.modes,
         .vectors = outcome.vectors,
         .tolerance = model_.eigenTolerance,
         .maxIterations = model_.maxSubspaceIterations,
         .solvesTogether = isSparse,
         .threads = isSparse ? context_.threads : 1},
        {.list = [this](const wchar_t* text, const wchar_t* status) { model_.list_msg(text, status); },
         .status = [this](const wchar_t* text) { model_.status_msg(text); },
         .poll = [this] { model_.peek_msg(); }});
    if (outcome.vectors == 1)
        ScaleToUnitModalMass(modes.shapes.front(), masses);

    if (model_.bPerformSpectrum) {
        model_.list_msg(L"Performing Response Spectrum Analysis", L"...");
        model_.spectrumResults = SpectrumRecords(model_, stiffness, masses, modes);
    }
    model_.eigenResults = EigenRecords(model_, modes);
    outcome.bDone = true;
    outcome.iterations = modes.iterations;
    outcome.bConverged = modes.isConverged;
    outcome.bSturmCheck = modes.sturm.isMade;
    outcome.sturmShift = modes.sturm.shift;
    outcome.sturmExpected = modes.sturm.expected;
    outcome.sturmCounted = modes.sturm.counted;
    outcome.sturmMissFrom = modes.sturm.missFrom;
    outcome.sturmMissUntil = modes.sturm.missUntil;
}

}  // namespace qvx

int CjxStruct::ExecuteFrequency(bool massOnly)
{
    return qvx::FrequencyRun(Context(), massOnly).Execute();
}
