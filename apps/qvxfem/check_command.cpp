#include "check_command.h"

#include <algorithm>
#include <limits>

#include <fmt/format.h>

#include "engine_log.h"
#include "exit_code.h"
#include "findings.h"
#include "model/near_nodes.h"
#include "model/units.h"
#include "model_source.h"
#include "settings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

constexpr std::size_t kMostPairs = 20;

// The check counts the duplicate nodes; these are they.
void PrintDuplicateNodes(const CjxStruct& model)
{
    const auto pairs = FindDuplicateNodes(model.nodes, model.mergeTolerance);
    if (pairs.empty())
        return;
    fmt::print("nodes nearer to one another than {:g} {}:\n", model.mergeTolerance,
               ToUtf8(UnitName(model.units.unit[kLength])));
    for (std::size_t i = 0; i < std::min(pairs.size(), kMostPairs); ++i)
        fmt::print("    {} and {}\n", pairs[i].first, pairs[i].second);
    if (pairs.size() > kMostPairs)
        fmt::print("    ... and {} more\n", pairs.size() - kMostPairs);
}

}  // namespace

int CheckModel(const CheckOptions& options)
{
    Progress progress(true);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    for (const std::string& line : LoadModel(options.model, model))
        fmt::print("note: {}\n", line);
    ApplySettings(options.settings, model);
    // What the check asks stands in its lines too: without boxes nothing is lost and nothing is said twice.
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
    PrintDuplicateNodes(model);
    fmt::print("{}: {} {}, {} {}\n", isAccepted == 1 ? "accepted" : "refused", findings.Errors(),
               findings.Errors() == 1 ? "error" : "errors", findings.Warnings(),
               findings.Warnings() == 1 ? "warning" : "warnings");
    return isAccepted == 1 ? kDone : kRefused;
}

}  // namespace qvx::app
