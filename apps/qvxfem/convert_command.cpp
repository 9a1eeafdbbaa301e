#include "convert_command.h"

#include "exit_code.h"
#include "interrupt.h"
#include "model/findings.h"
#include "model_source.h"
#include "output_paths.h"
#include "tell_findings.h"
#include "terminal.h"

namespace qvx::app {
namespace {

// The check limits settings and fills in what it derives: a copy is checked, the model is written as it was read.
// False, with every reason told, when a run would refuse it.
bool IsSolvable(const CjxStruct& model, Progress& progress)
{
    CjxStruct copy;
    copy.copy_input(model);
    copy.bInteractive = 0;
    if (copy.CheckInputData(0, false) == 1 && !HasRefusedShapes(copy))
        return true;
    progress.Say("The model is refused:");
    for (const std::string& line : FindingLines(copy, Severity::Error))
        progress.Say("  " + line);
    return false;
}

}  // namespace

int ConvertModel(const std::string& from, const std::string& to)
{
    RequireKnownOutput(to);
    RequireDistinct(from, {to});
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    LoadModel(from, model);
    for (const std::string& line : FindingLines(model, Severity::Note))
        progress.Say(line);
    // A file of our own that would be refused is worse than none: the author is told at once, not at the first run.
    if (!IsSolvable(model, progress))
        return kRefused;
    CatchInterrupt();  // a signal waits until the file is whole
    SaveModel(to, model);
    return kDone;
}

}  // namespace qvx::app
