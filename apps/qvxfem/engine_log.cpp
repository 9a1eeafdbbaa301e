#include "engine_log.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/file_error.h"

namespace qvx::app {
namespace {

constexpr std::size_t kTimeWidth = 23;  // "[YYYY-MM-DD HH:MM:SS]: "
#if defined(_WIN32)
constexpr const char* kNowhere = "NUL";
#else
constexpr const char* kNowhere = "/dev/null";
#endif

std::string WithoutTime(const std::string& line)
{
    const bool hasTime = line.size() >= kTimeWidth && line.front() == '[' && line.compare(20, 3, "]: ") == 0;
    return hasTime ? line.substr(kTimeWidth) : line;
}

}  // namespace

EngineLog::EngineLog(CjxStruct& model, const std::filesystem::path& path, Listener listener) : model_(model)
{
    tee_.listener = std::move(listener);
    // The engine writes to an open stream only; without a file the entries go nowhere but here.
    model_.fileLog.open(path.empty() ? std::filesystem::path(kNowhere) : path, std::ios::out | std::ios::trunc);
    if (!model_.fileLog)
        throw FileError(path.string(), "", "cannot be written: " + std::generic_category().message(errno));
    std::ios& stream = model_.fileLog;
    tee_.target = stream.rdbuf(&tee_);
}

EngineLog::~EngineLog()
{
    std::ios& stream = model_.fileLog;
    stream.rdbuf(tee_.target);
    model_.fileLog.close();
}

EngineLog::Tee::int_type EngineLog::Tee::overflow(int_type c)
{
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    Keep(traits_type::to_char_type(c));
    return target->sputc(traits_type::to_char_type(c));
}

std::streamsize EngineLog::Tee::xsputn(const char* text, std::streamsize size)
{
    for (std::streamsize i = 0; i < size; ++i)
        Keep(text[i]);
    return target->sputn(text, size);
}

int EngineLog::Tee::sync()
{
    return target->pubsync();
}

void EngineLog::Tee::Keep(char c)
{
    if (c != '\n') {
        line_ += c;
        return;
    }
    listener(WithoutTime(line_));
    line_.clear();
}

}  // namespace qvx::app
