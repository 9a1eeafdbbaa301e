#pragma once

#include <filesystem>
#include <functional>
#include <streambuf>
#include <string>

#include "model/jx_struct.h"

namespace qvx::app {

/// The log of a model: written to a file when one is named, and read along, so that what only the log tells (which
/// nodes, which members) can be shown.
class EngineLog
{
public:
    /// Takes each entry, without its time.
    using Listener = std::function<void(const std::string&)>;

    /// Opens the model's log. Throws FileError when the file cannot be written.
    EngineLog(CjxStruct& model, const std::filesystem::path& path, Listener listener);
    ~EngineLog();
    EngineLog(const EngineLog&) = delete;
    EngineLog& operator=(const EngineLog&) = delete;

private:
    // Passes everything on to the stream's own buffer and hands over the lines.
    class Tee : public std::streambuf
    {
    public:
        std::streambuf* target = nullptr;
        Listener listener;

    protected:
        int_type overflow(int_type c) override;
        std::streamsize xsputn(const char* text, std::streamsize size) override;
        int sync() override;

    private:
        void Keep(char c);
        std::string line_;
    };

    CjxStruct& model_;
    Tee tee_;
};

}  // namespace qvx::app
