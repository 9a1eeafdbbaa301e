#include "schema_command.h"

#include <cassert>
#include <cstdio>

#include <fmt/format.h>

#include "exit_code.h"
#include "files/file_schema.h"
#include "streams.h"

namespace qvx::app {

int PrintSchema(const std::string& file)
{
    const std::string schema = file == "results" ? ResultsFileSchema() : ModelFileSchema();
    assert((file == "model" || file == "results") && "the command line lets no other name pass");
    // A pipe that has been closed is a failure: half a schema must not look whole.
    const bool isWritten = PrintOut("the schema", [&](std::FILE* out) { fmt::print(out, "{}", schema); });
    return isWritten ? kDone : kBadUsage;
}

}  // namespace qvx::app
