#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace qvx::test {

/// A folder in the temporary folder, empty at first, that goes at the end with all that stands in it. Tests run side by
/// side in processes of their own: each has its own.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// The bytes of a file in it; empty when there is no such file.
    std::string Read(const std::filesystem::path& name) const;
    /// Makes a file in it, or replaces it.
    void Write(const std::filesystem::path& name, const std::string& text) const;
    /// How many files and folders stand in it, not counting what these hold.
    std::ptrdiff_t Count() const;
    /// Names of all that stands in it, at any depth, one a line.
    std::string Contents() const;

private:
    std::filesystem::path path_;
};

}  // namespace qvx::test
