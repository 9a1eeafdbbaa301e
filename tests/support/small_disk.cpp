#include "support/small_disk.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

#include <stdlib.h>
#include <sys/mount.h>

namespace qvx::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "qvx-folder-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::Contents() const
{
    std::string names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_))
        names += fs::relative(entry.path(), path_).string() + "\n";
    return names;
}

SmallDisk::SmallDisk(int kilobytes)
{
    const std::string size = "size=" + std::to_string(kilobytes) + "k";
    if (mount("tmpfs", Path().c_str(), "tmpfs", 0, size.c_str()) != 0)
        fault_ = std::string("no small disk can be mounted: ") + std::strerror(errno);
}

SmallDisk::~SmallDisk()
{
    if (fault_.empty())
        umount2(Path().c_str(), MNT_DETACH);
}

void SmallDisk::Fill() const
{
    std::ofstream file(Path() / "full");
    const std::string page(4096, 'x');
    while (file << page << std::flush) {
    }
}

}  // namespace qvx::test
