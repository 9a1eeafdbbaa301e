#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace qvx {

/// A file that stands under its name only when it is whole: it is written under a temporary name in the same folder and
/// renamed by Commit. Without Commit nothing is left behind and a file that stood there before is untouched.
/// A device or pipe under that name is written to directly.
/// Throws FileError when the folder cannot be written to or the disk is full.
class AtomicFile
{
public:
    explicit AtomicFile(std::filesystem::path path);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes);
    void Commit();

private:
    [[noreturn]] void Fail(int errorNumber);
    void Discard();

    std::filesystem::path path_;
    std::filesystem::path written_;  ///< name under which the bytes are collected
    std::FILE* file_ = nullptr;
    bool isCreated_ = false;  ///< under the temporary name
    bool isWhole_ = false;
};

}  // namespace qvx
