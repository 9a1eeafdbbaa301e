#include "sparse/scratch_folder.h"

#include <string>
#include <system_error>

#include <stdlib.h>

namespace qvx {

ScratchFolder::ScratchFolder(const std::filesystem::path& parent)
{
    std::string pattern = (parent / "ooc_temp-XXXXXX").string();
    if (mkdtemp(pattern.data()) != nullptr)
        path_ = pattern;
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    if (Exists())
        std::filesystem::remove_all(path_, ignored);
}

}  // namespace qvx
