#include "check_command.h"

#include <limits>

#include <fmt/format.h>

#include "engine_log.h"
#include "exit_code.h"
#include "findings.h"
#include "model_source.h"
#include "settings.h"
#include "terminal.h"

namespace qvx::app {

int CheckModel(const CheckOptions& options)
{
    Progress progress(true);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    for (const std::string& line : LoadModel(options.model, model))
        fmt::print("note: {}\n", line);
    ApplySettings(options.settings, model);
    // Questions of the check repeat what its lines say: without boxes nothing is lost and nothing is said twice.
    model.bInteractive = 0;

    Findings findings;
    RunWindow window(progress, findings);
    int isAccepted = 0;
    {
        const EngineLog log(model, options.log, [&](const std::string& entry) { findings.TakeLogEntry(entry); });
        model.set_solver_wnds(&window);
        isAccepted = model.CheckInputData(0, false);
        model.clear_solver_wnds();
    }
    for (const std::string& line : findings.Lines(std::numeric_limits<std::size_t>::max()))
        fmt::print("{}\n", line);
    fmt::print("{}: {} {}, {} {}\n", isAccepted == 1 ? "accepted" : "refused", findings.Errors(),
               findings.Errors() == 1 ? "error" : "errors", findings.Warnings(),
               findings.Warnings() == 1 ? "warning" : "warnings");
    return isAccepted == 1 ? kDone : kRefused;
}

}  // namespace qvx::app
