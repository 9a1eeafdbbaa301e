#include "sparse/scratch_folder.h"

#include <string>
#include <system_error>

#include <stdlib.h>

namespace qvx {

ScratchFolder::ScratchFolder(const std::filesystem::path& parent)
{
    // mkdtemp makes the folder under a name that nobody else has, readable by its owner alone: two runs in one folder
    // never meet.
    std::string pattern = (parent / "ooc_temp-XXXXXX").string();
    if (mkdtemp(pattern.data()) != nullptr)
        path_ = pattern;
}

ScratchFolder::~ScratchFolder()
{
    // A destructor has nobody to tell. What cannot be removed now, on a disk that is gone, no later moment removes
    // either.
    std::error_code ignored;
    if (Exists())
        std::filesystem::remove_all(path_, ignored);
}

}  // namespace qvx
