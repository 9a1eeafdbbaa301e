#include "run_command.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include <fmt/format.h>

#include "analyses.h"
#include "engine_log.h"
#include "exit_code.h"
#include "files/results_file.h"
#include "finite_results.h"
#include "interrupt.h"
#include "model/findings.h"
#include "model_source.h"
#include "output_paths.h"
#include "run_window.h"
#include "settings.h"
#include "sparse/direct_solver.h"
#include "streams.h"
#include "summary.h"
#include "tell_findings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

void SelectSolver(const std::string& name, CjxStruct& model)
{
    if (name == "double")
        model.SetSolverType(DoubleSkyline);
    else if (name == "quad")
        model.SetSolverType(QuadSkyline);
    else if (name == "sparse")
        model.SetSolverType(DoubleSparse);
}

// As the preference SparseBackend counts.
int BackendOf(const std::string& name)
{
    if (name == "pardiso" && !IsPardisoInstalled())
        throw FileError("", "--backend pardiso",
                        "its runtime library is not installed on this machine, or has not the memory that it needs; "
                        "without this option "
                        "MUMPS is taken");
    return name == "pardiso" ? 1 : name == "mumps" ? 2 : 0;
}

void SayFindings(Progress& progress, const CjxStruct& model, Severity least, const char* before)
{
    for (const std::string& line : FindingLines(model, least))
        progress.Say(before + line);
}

int Refused(Progress& progress, const CjxStruct& model)
{
    progress.Say("The model is refused:");
    SayFindings(progress, model, Severity::Note, "  ");
    return kRefused;
}

int Stopped(Progress& progress)
{
    progress.Say("Stopped by the user. No results are written.");
    return InterruptExitCode();
}

// The engine has shown the text in a message box already, unless it comes from a place that shows none.
int Failed(Progress& progress, const RunOptions& options, const CjxStruct& model, const std::string& text, bool isShown)
{
    SayFindings(progress, model, Severity::Note, "  ");
    progress.Say(isShown ? "The analysis failed." : "The analysis failed: " + text);
    if (!options.log.empty())
        progress.Say("Log: " + options.log);
    return kAnalysisFailed;
}

class Stopwatch
{
public:
    double Seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// Ctrl-C ends the writing too; false then, and no file.
bool WriteResults(const std::string& file, const CjxStruct& model)
{
    struct Interrupt
    {
    };
    try {
        WriteResultsFile(file, model, [] {
            if (IsInterrupted())
                throw Interrupt();
        });
    } catch (const Interrupt&) {
        return false;
    }
    return true;
}

// A combination that fails leaves the others as they are.
bool HasEveryOneFailed(const CjxStruct& model)
{
    return !model.combOutcomes.empty() &&
           std::all_of(model.combOutcomes.begin(), model.combOutcomes.end(),
                       [](const jxCombOutcome& outcome) { return outcome.end == CombEnd::Failed; });
}

// Whether the model is to be refused for what was found, beyond what the engine itself refuses.
bool IsTooBadFor(const RunOptions& options, const CjxStruct& model)
{
    return options.isStrict && HasFinding(model, Severity::Warning);
}

// Solves the model. Returns kDone, or the exit code with which the run ends.
int Solve(const RunOptions& options, CjxStruct& model, Progress& progress, const TerminalHost& host)
{
    if (options.isStrict) {
        CheckModel(model);
        if (HasFinding(model, Severity::Warning))
            return Refused(progress, model);
    }
    RunWindow window(progress);
    FactorizationWindow factorization(progress);
    model.set_solver_wnds(&window);
    model.progressWindow = &factorization;
    int done = 0;
    try {
        done = RunAnalyses(AnalysesOf(options.analyses), model);
    } catch (const jxException& fault) {
        model.RestoreInputData();
        if (IsInterrupted())
            return Stopped(progress);
        return Failed(progress, options, model, ToUtf8(fault.GetText()), host.LastText() == fault.GetText());
    }
    model.clear_solver_wnds();
    model.progressWindow = nullptr;
    progress.Clear();
    if (IsInterrupted())
        return Stopped(progress);
    if (done == 0 || IsTooBadFor(options, model))
        return Refused(progress, model);
    if (const std::string place = UnusableResult(model); !place.empty()) {
        model.findings.Add(MakeFinding(FindingCode::ResultOutOfRange, FromUtf8(place)));
        return Failed(progress, options, model, "results out of range, " + place, false);
    }
    return kDone;
}

int ExitCodeOf(const CjxStruct& model)
{
    if (HasEveryOneFailed(model))
        return kAnalysisFailed;
    return AreAllReliable(model) ? kDone : kNotReliable;
}

// A log that is not whole is told and takes nothing else with it.
bool FinishLog(EngineLog& log, Progress& progress)
{
    try {
        log.Finish();
    } catch (const FileError& fault) {
        progress.Say(std::string("qvxfem: ") + fault.what());
        return false;
    }
    return true;
}

int Analyse(const RunOptions& options, CjxStruct& model, Progress& progress, const TerminalHost& host)
{
    EngineLog log(model, options.log);
    const Stopwatch stopwatch;
    if (const int ended = Solve(options, model, progress, host); ended != kDone) {
        FinishLog(log, progress);
        return ended;
    }
    const double seconds = stopwatch.Seconds();
    if (!options.results.empty() && !WriteResults(options.results, model))
        return Stopped(progress);
    if (!options.report.file.empty() && !WriteReport(options.report, model))
        return Stopped(progress);
    const bool isLogged = FinishLog(log, progress);
    if (options.isQuiet)
        SayFindings(progress, model, Severity::Warning, "");
    const bool isTold = options.isQuiet || PrintOut("the summary", [&](std::FILE* out) {
                            PrintSummary(out, model,
                                         {.file = options.model,
                                          .results = options.results,
                                          .report = options.report.file,
                                          .log = options.log,
                                          .seconds = seconds});
                        });
    return isLogged && isTold ? ExitCodeOf(model) : kBadUsage;
}

}  // namespace

int SolveModel(const RunOptions& options, CjxStruct& model, Progress& progress, const TerminalHost& host)
{
    return Solve(options, model, progress, host);
}

int RunModel(const RunOptions& options)
{
    AnalysesOf(options.analyses);  // refuses what there is not
    RequireReportable(options.report);
    RequireDistinct(options.model, {options.results, options.report.file, options.log});
    Progress progress(options.isVerbose ? Telling::Lines : options.isQuiet ? Telling::Nothing : Telling::Progress);
    TerminalHost host(progress, options.isInteractive, options.threads, BackendOf(options.backend));
    CjxStruct model;
    LoadModel(options.model, model);
    ApplySettings(options.settings, model);
    ApplySpectra(options.spectra, model);
    RequireFolderOf(options.results);
    RequireFolderOf(options.report.file);
    RequireFolderOf(options.log);
    SelectSolver(options.solver, model);
    if (!options.backend.empty() && model.solverType != DoubleSparse)
        throw FileError("", "--backend " + options.backend, "only the sparse solver has one: add --solver sparse");
    CatchInterrupt();
    return Analyse(options, model, progress, host);
}

}  // namespace qvx::app
