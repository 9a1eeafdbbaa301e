#include "support/temporary_folder.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include <stdlib.h>

namespace qvx::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "qvx-folder-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw fs::filesystem_error("no temporary folder", pattern, {errno, std::generic_category()});
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::Read(const fs::path& name) const
{
    std::ifstream in(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void TemporaryFolder::Write(const fs::path& name, const std::string& text) const
{
    std::ofstream(path_ / name, std::ios::binary) << text;
}

std::ptrdiff_t TemporaryFolder::Count() const
{
    return std::distance(fs::directory_iterator(path_), fs::directory_iterator());
}

std::string TemporaryFolder::Contents() const
{
    std::string names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_))
        names += fs::relative(entry.path(), path_).string() + "\n";
    return names;
}

}  // namespace qvx::test
