#pragma once

#include <filesystem>

namespace qvx {

/// The out-of-core configuration of the routine `pardiso`, "pardiso_ooc.cfg" in the current folder.
class OutOfCoreFile
{
public:
    /// Writes the memory limit [megabytes]. A file that this engine did not write stays as it is, and counts.
    /// @return  whether it was written
    /// @throws jxException  when the file cannot be written; then none is left behind
    static bool Write(int maxCoreMegabytes);

    /// Takes the file away at the end of a run, however it ends. A file that this engine did not write
    /// stays.
    OutOfCoreFile();
    ~OutOfCoreFile();
    OutOfCoreFile(const OutOfCoreFile&) = delete;
    OutOfCoreFile& operator=(const OutOfCoreFile&) = delete;

private:
    std::filesystem::path path_;  ///< to be taken away; empty: none
};

}  // namespace qvx
