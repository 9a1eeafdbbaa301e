#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "platform/pending_file.h"

namespace qvx {

/// A file that stands under its name only when it is whole, which Commit tells (PendingFile).
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
    void Close();

    PendingFile pending_;
    std::FILE* file_;
};

}  // namespace qvx
