#include "solver/out_of_core_file.h"

#include <fstream>
#include <system_error>

#include "platform/host_services.h"
#include "tools/jx_exception.h"

namespace qvx {

namespace {

CString NameInCurrentFolder()
{
    CString path = Host().CurrentFolder();
    path += FolderSeparator();
    // The routine looks for a file of this name where the process runs; none of its arguments says otherwise.
    path += L"pardiso_ooc.cfg";
    return path;
}

bool Exists(const std::filesystem::path& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void Remove(const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

}  // namespace

void OutOfCoreFile::Write(int maxCoreMegabytes)
{
    const CString name = NameInCurrentFolder();
    // A file of the user's own is overwritten, as its limit must be that of the preferences, but never removed.
    const std::filesystem::path path(name.Text());
    const bool isNew = !Exists(path);
    std::ofstream file(path);
    file << "MKL_PARDISO_OOC_MAX_CORE_SIZE = " << maxCoreMegabytes << "\nMKL_PARDISO_OOC_KEEP_FILE = 1\n";
    file.close();
    if (file)
        return;
    if (isNew)
        Remove(path);
    throw jxException(CString(L"error creating solver configuration file: ") + name);
}

OutOfCoreFile::OutOfCoreFile()
{
    const std::filesystem::path path(NameInCurrentFolder().Text());
    if (!Exists(path))
        path_ = path;
}

OutOfCoreFile::~OutOfCoreFile()
{
    if (!path_.empty())
        Remove(path_);
}

}  // namespace qvx
