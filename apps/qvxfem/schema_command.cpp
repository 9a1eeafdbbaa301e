#include "schema_command.h"

#include <cstdio>

#include <fmt/format.h>

#include "exit_code.h"
#include "files/file_schema.h"

namespace qvx::app {

int PrintSchema(const std::string& file)
{
    const std::string schema = file == "results" ? ResultsFileSchema() : ModelFileSchema();
    const bool isWritten = std::fwrite(schema.data(), 1, schema.size(), stdout) == schema.size();
    if (!isWritten || std::fflush(stdout) != 0) {
        fmt::print(stderr, "qvxfem: the schema cannot be written\n");
        return kBadUsage;
    }
    return kDone;
}

}  // namespace qvx::app
