#include "run_command.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "analyses.h"
#include "engine_log.h"
#include "exit_code.h"
#include "files/results_file.h"
#include "findings.h"
#include "finite_results.h"
#include "interrupt.h"
#include "loose_members.h"
#include "model_source.h"
#include "settings.h"
#include "sparse/direct_solver.h"
#include "summary.h"
#include "terminal.h"

namespace qvx::app {
namespace {

constexpr std::size_t kMostDetails = 10;  // of one finding in the summary

// Before a long run, not after it.
void RequireFolderOf(const std::string& file)
{
    if (file.empty())
        return;
    const std::filesystem::path folder = std::filesystem::absolute(file).parent_path();
    if (!std::filesystem::is_directory(folder))
        throw FileError(file, "", "cannot be written: there is no folder " + folder.string());
    if (std::filesystem::is_directory(file))
        throw FileError(file, "", "cannot be written: is a folder");
}

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
                        "its runtime library is not installed on this machine; without this option MUMPS is taken");
    return name == "pardiso" ? 1 : name == "mumps" ? 2 : 0;
}

void SayAll(Progress& progress, const std::vector<std::string>& lines, std::string_view before)
{
    for (const std::string& line : lines)
        progress.Say(std::string(before) + line);
}

int Refused(Progress& progress, const Findings& findings)
{
    progress.Say("The model is refused:");
    SayAll(progress, findings.Lines(std::numeric_limits<std::size_t>::max()), "  ");
    return kRefused;
}

int Stopped(Progress& progress)
{
    progress.Say("Stopped by the user. No results are written.");
    return kStopped;
}

// The engine has shown the text in a message box already, unless it comes from a place that shows none.
int Failed(Progress& progress, const RunOptions& options, const CjxStruct& model, const Findings& findings,
           const std::string& text, bool isShown)
{
    SayAll(progress, findings.Lines(kMostDetails), "  ");
    SayAll(progress, MembersLooseInThemselves(model), "  ");
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

int Analyse(const RunOptions& options, CjxStruct& model, std::vector<std::string> notes, Progress& progress,
            const TerminalHost& host)
{
    Findings findings;
    RunWindow window(progress, findings);
    FactorizationWindow factorization(progress);
    const EngineLog log(model, options.log, [&](const std::string& entry) { findings.TakeLogEntry(entry); });
    model.set_solver_wnds(&window);
    model.progressWindow = &factorization;
    const Stopwatch stopwatch;
    int done = 0;
    try {
        done = RunAnalyses(AnalysesOf(options.analyses), model);
    } catch (const jxException& fault) {
        model.RestoreInputData();
        if (IsInterrupted())
            return Stopped(progress);
        return Failed(progress, options, model, findings, ToUtf8(fault.GetText()), host.LastText() == fault.GetText());
    }
    const double seconds = stopwatch.Seconds();
    model.clear_solver_wnds();
    model.progressWindow = nullptr;
    progress.Clear();
    if (IsInterrupted())
        return Stopped(progress);
    if (done == 0)
        return Refused(progress, findings);
    if (const std::string place = UnusableResult(model); !place.empty())
        return Failed(progress, options, model, findings, "results out of range, " + place, false);
    if (!options.results.empty() && !WriteResults(options.results, model))
        return Stopped(progress);
    const std::vector<std::string> found = findings.Lines(kMostDetails);  // the report checks the input once more
    if (!options.report.file.empty() && !WriteReport(options.report, model))
        return Stopped(progress);
    if (!options.isQuiet)
        PrintSummary(stdout, model,
                     {.file = options.model,
                      .results = options.results,
                      .report = options.report.file,
                      .log = options.log,
                      .notes = std::move(notes),
                      .findings = found,
                      .seconds = seconds});
    return HasEveryOneFailed(model) ? kAnalysisFailed : kDone;
}

}  // namespace

int RunModel(const RunOptions& options)
{
    AnalysesOf(options.analyses);  // refuses what there is not
    RequireReportable(options.report);
    Progress progress(options.isQuiet);
    TerminalHost host(progress, options.isInteractive, options.threads, BackendOf(options.backend));
    CjxStruct model;
    std::vector<std::string> notes = LoadModel(options.model, model);
    ApplySettings(options.settings, model);
    ApplySpectra(options.spectra, model);
    RequireFolderOf(options.results);
    RequireFolderOf(options.report.file);
    RequireFolderOf(options.log);
    SelectSolver(options.solver, model);
    if (!options.backend.empty() && model.solverType != DoubleSparse)
        throw FileError("", "--backend " + options.backend, "only the sparse solver has one: add --solver sparse");
    CatchInterrupt();
    return Analyse(options, model, std::move(notes), progress, host);
}

}  // namespace qvx::app
