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
#include "streams.h"
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
    const bool isTold = PrintOut("the list of findings", [&](std::FILE* out) {
        // Nothing else goes to the standard output then: it is one JSON object for a program to read.
        if (options.isJson)
            return fmt::print(out, "{}", FindingListText(model, isAccepted));
        for (const std::string& line : FindingLines(model, Severity::Note))
            fmt::print(out, "{}\n", line);
        fmt::print(out, "{}: {}\n", isAccepted ? "accepted" : "refused", CountOfFindings(model));
    });
    return isTold ? ExitCodeOf(model, isAccepted) : kBadUsage;
}

}  // namespace qvx::app
