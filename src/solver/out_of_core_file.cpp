#include "solver/out_of_core_file.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <system_error>

#include "platform/host_services.h"
#include "platform/wide_path.h"
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

// A file of a run that was ended by force is one of ours; every other is the user's and stays as it is.
bool IsOurs(const std::filesystem::path& path)
{
    std::ifstream in(path);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    static const std::regex form("MKL_PARDISO_OOC_MAX_CORE_SIZE = [0-9]+\nMKL_PARDISO_OOC_KEEP_FILE = 1\n");
    return std::regex_match(text, form);
}

void Remove(const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

}  // namespace

bool OutOfCoreFile::Write(int maxCoreMegabytes)
{
    const CString name = NameInCurrentFolder();
    const std::filesystem::path path = PathOf(name.Text());
    const bool isNew = !Exists(path);
    if (!isNew && !IsOurs(path))
        return false;
    std::ofstream file(path);
    file << "MKL_PARDISO_OOC_MAX_CORE_SIZE = " << maxCoreMegabytes << "\nMKL_PARDISO_OOC_KEEP_FILE = 1\n";
    file.close();
    if (file)
        return true;
    if (isNew)
        Remove(path);
    throw jxException(CString(L"error creating solver configuration file: ") + name);
}

OutOfCoreFile::OutOfCoreFile()
{
    const std::filesystem::path path = PathOf(NameInCurrentFolder().Text());
    if (!Exists(path) || IsOurs(path))
        path_ = path;
}

OutOfCoreFile::~OutOfCoreFile()
{
    if (!path_.empty())
        Remove(path_);
}

}  // namespace qvx
