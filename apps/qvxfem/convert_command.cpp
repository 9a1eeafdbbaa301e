#include "convert_command.h"

#include "exit_code.h"
#include "model_source.h"
#include "terminal.h"

namespace qvx::app {

int ConvertModel(const std::string& from, const std::string& to)
{
    RequireKnownOutput(to);
    Progress progress(true);
    TerminalHost host(progress, false, 0);
    CjxStruct model;
    for (const std::string& line : LoadModel(from, model))
        progress.Say("note: " + line);
    SaveModel(to, model);
    return kDone;
}

}  // namespace qvx::app
