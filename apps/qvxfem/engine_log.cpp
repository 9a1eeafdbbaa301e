#include "engine_log.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/file_error.h"
#include "tell_findings.h"

namespace qvx::app {
namespace {

[[noreturn]] void Fail(const std::filesystem::path& path, int errorNumber)
{
    throw FileError(path.string(), "", "cannot be written: " + std::generic_category().message(errorNumber));
}

}  // namespace

EngineLog::EngineLog(CjxStruct& model, std::filesystem::path path) : model_(model), path_(std::move(path))
{
    if (path_.empty())
        return;
    // Opened before the run: a folder that takes no file is told at once.
    model_.fileLog.open(path_, std::ios::out | std::ios::trunc);
    if (!model_.fileLog)
        Fail(path_, errno);
}

void EngineLog::Finish()
{
    if (path_.empty())
        return;
    if (!model_.findings.empty())
        model_.LogLine(L"FINDINGS");
    // At its end the log tells what was found as a whole; the lines above have it where it happened.
    for (const std::string& line : FindingLines(model_, Severity::Note))
        model_.LogLine(CString(line.c_str()));
    errno = 0;
    if (!Close())
        Fail(path_, errno == 0 ? EIO : errno);
}

bool EngineLog::Close()
{
    if (!model_.fileLog.is_open())
        return true;
    model_.fileLog.close();
    const bool isWhole = !model_.fileLog.fail();
    model_.fileLog.clear();
    return isWhole;
}

}  // namespace qvx::app
