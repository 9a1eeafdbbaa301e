#include "exchange/atomic_file.h"

#include <cerrno>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "exchange/file_error.h"

namespace qvx {
namespace {

constexpr int kAttempts = 16;  // at a name that nobody uses

std::string Utf8(const std::filesystem::path& path)
{
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

// A name that only a glance at the folder would find, and that tells whose remnant it is should the machine fail.
std::filesystem::path TemporaryName(const std::filesystem::path& path)
{
    std::random_device random;
    std::filesystem::path name = path;
    name += ".part-" + std::to_string(random());
    return name;
}

}  // namespace

AtomicFile::AtomicFile(std::filesystem::path path) : path_(std::move(path))
{
    std::error_code ignored;
    const auto status = std::filesystem::status(path_, ignored);
    if (std::filesystem::is_directory(status))
        Fail(EISDIR);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        written_ = path_;
        file_ = std::fopen(path_.string().c_str(), "wb");
    } else if (std::filesystem::is_symlink(path_, ignored) && std::filesystem::exists(status)) {
        path_ = std::filesystem::canonical(path_, ignored);  // the link stays, its target is replaced
    }
    for (int i = 0; i < kAttempts && file_ == nullptr && written_ != path_; ++i) {
        written_ = TemporaryName(path_);
        file_ = std::fopen(written_.string().c_str(), "wbx");
        isCreated_ = file_ != nullptr;
        if (!isCreated_ && errno != EEXIST)
            break;
    }
    if (file_ == nullptr)
        Fail(errno);
}

AtomicFile::~AtomicFile()
{
    Discard();
}

void AtomicFile::Write(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size())
        Fail(errno);
}

void AtomicFile::Commit()
{
    if (std::fflush(file_) != 0)
        Fail(errno);
    if (std::fclose(std::exchange(file_, nullptr)) != 0)
        Fail(errno);
    std::error_code fault;
    if (written_ != path_)
        std::filesystem::rename(written_, path_, fault);
    if (fault)
        Fail(fault.value());
    isWhole_ = true;
}

void AtomicFile::Fail(int errorNumber)
{
    Discard();
    throw FileError(Utf8(path_), "", "cannot be written: " + std::generic_category().message(errorNumber));
}

void AtomicFile::Discard()
{
    if (file_ != nullptr)
        std::fclose(std::exchange(file_, nullptr));
    std::error_code ignored;
    if (!isWhole_ && isCreated_)
        std::filesystem::remove(written_, ignored);
    isCreated_ = false;
}

}  // namespace qvx
