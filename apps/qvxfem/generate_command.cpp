#include "generate_command.h"

#include <fmt/format.h>

#include "exit_code.h"
#include "files/generate_model.h"
#include "interrupt.h"
#include "model_source.h"
#include "record_counts.h"
#include "terminal.h"

namespace qvx::app {

int GenerateModelFile(const GenerateOptions& options)
{
    RequireKnownOutput(options.output);
    Progress progress(Telling::Nothing);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    GenerateModel(options.kind, options.arguments, model);
    CatchInterrupt();  // a signal waits until the file is whole
    SaveModel(options.output, model);

    fmt::print("{}\n", options.output);
    for (const std::string& line : RecordCounts(model))
        fmt::print("  {}\n", line);
    if (model.nodes.empty())
        fmt::print("  nothing: the lists are empty or too short\n");
    return kDone;
}

}  // namespace qvx::app
