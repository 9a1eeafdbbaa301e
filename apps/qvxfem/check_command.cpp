#include "check_command.h"

#include <cassert>
#include <fmt/format.h>

#include "engine_log.h"
#include "exit_code.h"
#include "files/finding_list.h"
#include "model/findings.h"
#include "model_source.h"
#include "output_paths.h"
#include "settings.h"
#include "tell_findings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

int ExitCodeOf(const CjxStruct& model, bool isAccepted)
{
    if (!isAccepted)
        return kRefused;
    return AreAllReliable(model) ? kDone : kNotReliable;
}

}  // namespace

int CheckModelFile(const CheckOptions& options)
{
    RequireDistinct(options.model, {options.log});
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    LoadModel(options.model, model);
    ApplySettings(options.settings, model);
    // What the check asks stands in its findings too: without boxes nothing is lost and nothing is said twice.
    model.bInteractive = 0;
    EngineLog log(model, options.log);
    bool isAccepted = model.CheckInputData(0, false) == 1 && !HasRefusedShapes(model);
    log.Finish();
    assert(model.bInteractive == 0 && "nothing is asked");
    if (options.isStrict && HasFinding(model, Severity::Warning))
        isAccepted = false;
    if (options.isJson) {
        // Nothing else goes to the standard output then: it is one JSON object for a program to read.
        fmt::print("{}", FindingListText(model, isAccepted));
        return ExitCodeOf(model, isAccepted);
    }
    for (const std::string& line : FindingLines(model, Severity::Note))
        fmt::print("{}\n", line);
    fmt::print("{}: {}\n", isAccepted ? "accepted" : "refused", CountOfFindings(model));
    return ExitCodeOf(model, isAccepted);
}

}  // namespace qvx::app
