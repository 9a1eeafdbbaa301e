#include "support/small_disk.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include <sys/mount.h>

namespace qvx::test {

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
