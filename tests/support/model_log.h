#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::test {

/// File in the temporary folder with a name of its own; removed at the end.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string& ending = ".tmp");
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string Text() const;
    void Write(const std::string& text) const;

private:
    std::filesystem::path path_;
};

/// Opens the log of a model in a temporary file and reads it back.
class ModelLog
{
public:
    explicit ModelLog(CjxStruct& model);

    /// Entries so far: each without its "[date time]: " and without the end of its line.
    std::vector<std::string> Entries();
    /// True when an entry with exactly this text was written.
    bool Has(const std::string& entry);
    /// The file as it stands.
    std::string Text();

private:
    CjxStruct& model_;
    TemporaryFile file_{".log"};
};

}  // namespace qvx::test
