#pragma once

#include <filesystem>

#include "model/jx_struct.h"

namespace qvx::app {

/// The log of a model, written to a file while it lives. Without a file the model keeps no log.
class EngineLog
{
public:
    /// Opens the model's log; an empty path is none. Throws FileError when the file cannot be written.
    EngineLog(CjxStruct& model, std::filesystem::path path);
    ~EngineLog() { Close(); }
    EngineLog(const EngineLog&) = delete;
    EngineLog& operator=(const EngineLog&) = delete;

    /// Writes the findings of the model at the end of the log and closes it.
    /// Throws FileError when not all of the log could be written.
    void Finish();

private:
    bool Close();

    CjxStruct& model_;
    std::filesystem::path path_;
};

}  // namespace qvx::app
