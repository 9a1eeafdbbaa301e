#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "platform/export.h"
#include "platform/pending_file.h"

namespace qvx {

/// A file that stands under its name only when it is whole, which Commit tells (PendingFile). Every function throws
/// FileError when the folder cannot be written to or the disk is full; nothing is left behind then.
class QVXFEM_API AtomicFile
{
public:
    /// Opens the file under a temporary name.
    explicit AtomicFile(std::filesystem::path path);
    ~AtomicFile();  ///< without Commit the file is as it was before, or is not
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends bytes, buffered.
    void Write(std::string_view bytes);
    /// Writes out what is buffered and gives the file its name, once; nothing is written afterwards.
    void Commit();

private:
    [[noreturn]] void Fail(int errorNumber);
    void Close();

    PendingFile pending_;
    std::FILE* file_;
};

}  // namespace qvx
