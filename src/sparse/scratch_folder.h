#pragma once

#include <filesystem>

namespace qvx {

/// A folder of its own for the files of one factor. It goes, with whatever stands in it, when the object does: after
/// the last solution, and as well after a stop, a full disk or an exception.
class ScratchFolder
{
public:
    /// @param parent  folder to make it in; check Exists()
    explicit ScratchFolder(const std::filesystem::path& parent);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    bool Exists() const { return !path_.empty(); }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace qvx
