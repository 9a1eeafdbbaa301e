#include "generate_command.h"

#include <fmt/format.h>

#include "exit_code.h"
#include "files/generate_model.h"
#include "interrupt.h"
#include "model_source.h"
#include "platform/visible_text.h"
#include "record_counts.h"
#include "streams.h"
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

    const bool isTold = PrintOut("the list of what was made", [&](std::FILE* out) {
        fmt::print(out, "{}\n", VisibleText(std::string_view(options.output)));
        for (const std::string& line : RecordCounts(model))
            fmt::print(out, "  {}\n", line);
        if (model.nodes.empty())
            fmt::print(out, "  nothing: the lists are empty or too short\n");
    });
    return isTold ? kDone : kBadUsage;
}

}  // namespace qvx::app
