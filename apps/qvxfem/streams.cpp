#include "streams.h"

#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "platform/visible_text.h"

namespace qvx::app {
namespace {

void OpenWhereClosed(int stream, int mode)
{
    while (fcntl(stream, F_GETFD) == -1 && errno == EBADF)
        if (open("/dev/null", mode) < 0 || fcntl(stream, F_GETFD) != -1)
            return;  // the system gives the lowest free number, and those below are open by now
}

}  // namespace

void SecureStandardStreams()
{
    OpenWhereClosed(STDIN_FILENO, O_RDONLY);
    OpenWhereClosed(STDOUT_FILENO, O_RDONLY);  // for reading: writing to it fails, and that is told
    OpenWhereClosed(STDERR_FILENO, O_WRONLY);
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

void PrintError(std::string_view line)
{
    const std::string text = std::string(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
}

bool PrintOut(const char* what, const std::function<void(std::FILE*)>& print)
{
    errno = 0;
    int fault = 0;
    try {
        print(stdout);
        if (std::fflush(stdout) != 0)
            fault = errno == 0 ? EIO : errno;
    } catch (const std::system_error& unwritten) {
        fault = unwritten.code().value();
    }
    if (fault == 0)
        return true;
    PrintError(fmt::format("qvxfem: {} cannot be written: {}", what, std::generic_category().message(fault)));
    return false;
}

}  // namespace qvx::app
