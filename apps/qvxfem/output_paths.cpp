#include "output_paths.h"

#include <system_error>
#include <vector>

#include "platform/file_error.h"

namespace qvx::app {
namespace {

namespace fs = std::filesystem;

// Files that stand there already may be one under two names; what is not there yet is told by its place.
bool IsSameFile(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    if (fs::exists(a, ignored) && fs::exists(b, ignored))
        return fs::equivalent(a, b, ignored);
    const fs::path placeA = fs::weakly_canonical(fs::absolute(a, ignored), ignored);
    const fs::path placeB = fs::weakly_canonical(fs::absolute(b, ignored), ignored);
    return !placeA.empty() && placeA == placeB;
}

bool IsDevice(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored) && fs::is_other(path, ignored);
}

}  // namespace

void RequireDistinct(const fs::path& input, std::initializer_list<fs::path> outputs)
{
    std::vector<fs::path> taken;
    for (const fs::path& output : outputs) {
        if (output.empty() || IsDevice(output))
            continue;
        if (!input.empty() && IsSameFile(output, input))
            throw FileError(output.string(), "", "cannot be written: is the input");
        for (const fs::path& other : taken)
            if (IsSameFile(output, other))
                throw FileError(output.string(), "", "cannot be written: two outputs are one file");
        taken.push_back(output);
    }
}

void RequireFolderOf(const fs::path& file)
{
    if (file.empty())
        return;
    const fs::path folder = fs::absolute(file).parent_path();
    if (!fs::is_directory(folder))
        throw FileError(file.string(), "", "cannot be written: there is no folder " + folder.string());
    if (fs::is_directory(file))
        throw FileError(file.string(), "", "cannot be written: is a folder");
}

}  // namespace qvx::app
