#pragma once

#include <filesystem>
#include <string>

namespace qvx::test {

/// A folder in the temporary folder, empty at first, that goes at the end with all that stands in it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// Names of all that stands in it, at any depth, one a line.
    std::string Contents() const;

private:
    std::filesystem::path path_;
};

/// A folder that holds so many kilobytes: a file system in memory, which only root can mount.
class SmallDisk : public TemporaryFolder
{
public:
    explicit SmallDisk(int kilobytes);
    ~SmallDisk();

    /// Why there is none; empty when there is.
    const std::string& Fault() const { return fault_; }
    /// Leaves no room on it.
    void Fill() const;

private:
    std::string fault_;
};

}  // namespace qvx::test
