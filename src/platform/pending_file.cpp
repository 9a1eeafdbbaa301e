#include "platform/pending_file.h"

#include <cassert>
#include <cerrno>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "platform/file_error.h"

namespace qvx {

namespace fs = std::filesystem;

namespace {

constexpr int kAttempts = 16;  // at a name that nobody uses

std::string Utf8(const fs::path& path)
{
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

/// A file that takes the place of another stays readable for those who could read that one, and for nobody else.
void KeepModeOf(const fs::path& replaced, const fs::path& written)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(replaced, ignored);
    if (fs::is_regular_file(status))
        fs::permissions(written, status.permissions(), ignored);
}

/// A name that only a glance at the folder would find, and that tells whose remnant it is should the machine fail.
fs::path TemporaryName(const fs::path& path, const fs::path& ending)
{
    std::random_device random;
    fs::path name = path;
    name += ".part-" + std::to_string(random());
    name += ending;
    return name;
}

}  // namespace

PendingFile::PendingFile(fs::path path, std::string_view ending) : path_(std::move(path)), ending_(ending)
{
    std::error_code ignored;
    const auto status = fs::status(path_, ignored);
    if (fs::is_directory(status))
        Fail(EISDIR);
    // A link goes on pointing where it does: the new file takes the place of its target.
    if (fs::exists(status) && fs::is_symlink(path_, ignored) && fs::is_regular_file(status))
        path_ = fs::canonical(path_, ignored);
    written_ = !fs::exists(status) || fs::is_regular_file(status) ? TemporaryName(path_, ending_) : path_;
}

std::FILE* PendingFile::Open()
{
    assert(!isCreated_ && "a file is opened once");
    // "x" makes the name this process's own: what another one has just written is not taken over.
    std::FILE* file = std::fopen(written_.string().c_str(), IsDirect() ? "wb" : "wbx");
    for (int i = 1; i < kAttempts && file == nullptr && errno == EEXIST; ++i) {
        written_ = TemporaryName(path_, ending_);
        file = std::fopen(written_.string().c_str(), "wbx");
    }
    if (file == nullptr)
        Fail(errno);
    isCreated_ = !IsDirect();
    return file;
}

void PendingFile::Commit()
{
    std::error_code fault;
    if (!IsDirect()) {
        // rename replaces in one step: whoever opens the name sees the old file or the new one, never a part.
        KeepModeOf(path_, written_);
        fs::rename(written_, path_, fault);
    }
    if (fault)
        Fail(fault.value());
    isCreated_ = false;
}

void PendingFile::Fail(int errorNumber)
{
    assert(errorNumber != 0 && "a failure has its reason");
    Discard();
    throw FileError(Utf8(path_), "", "cannot be written: " + std::generic_category().message(errorNumber));
}

void PendingFile::Discard()
{
    std::error_code ignored;
    if (isCreated_)
        fs::remove(written_, ignored);
    isCreated_ = false;
}

}  // namespace qvx
