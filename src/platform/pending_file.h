#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "platform/export.h"

namespace qvx {

/// The name under which a file is written until it is whole: a temporary one in the same folder, which Commit turns
/// into the file's own. Without Commit nothing is left behind and a file that stood there before is untouched. Of a
/// link the target is replaced, and what replaces a file takes its mode. A device or pipe is written to directly.
class QVXFEM_API PendingFile
{
public:
    /// @param ending  of the temporary name, for a writer that sets its ending itself
    explicit PendingFile(std::filesystem::path path, std::string_view ending = "");
    ~PendingFile() { Discard(); }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// The file's own name, of a link that of its target.
    const std::filesystem::path& Path() const { return path_; }
    /// Where to write.
    const std::filesystem::path& Written() const { return written_; }
    /// Whether the name is that of a device or pipe.
    bool IsDirect() const { return written_ == path_; }

    /// Opens the file; under a temporary name it is made.
    /// @throws FileError when that is a folder or cannot be written
    std::FILE* Open();
    /// Gives the file, closed by now, its name.
    /// @throws FileError when it cannot take it
    void Commit();
    /// Leaves nothing behind.
    void Discard();
    /// Discards and throws FileError "cannot be written" with the system's text for the error number.
    [[noreturn]] void Fail(int errorNumber);

private:
    std::filesystem::path path_;
    std::filesystem::path written_;
    std::filesystem::path ending_;
    bool isCreated_ = false;  ///< under the temporary name
};

}  // namespace qvx
