#include "schema_command.h"

#include <cassert>
#include <cstdio>

#include <fmt/format.h>

#include "exit_code.h"
#include "files/file_schema.h"

namespace qvx::app {

int PrintSchema(const std::string& file)
{
    const std::string schema = file == "results" ? ResultsFileSchema() : ModelFileSchema();
    assert((file == "model" || file == "results") && "the command line lets no other name pass");
    // A pipe that has been closed is a failure: half a schema must not look whole.
    const bool isWritten = std::fwrite(schema.data(), 1, schema.size(), stdout) == schema.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        fmt::print(stderr, "qvxfem: the schema cannot be written\n");
        return kBadUsage;
    }
    return kDone;
}

}  // namespace qvx::app
