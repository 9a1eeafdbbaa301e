#include "support/run_program.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

void Redirect(const fs::path& path, int flags, int stream)
{
    const int file = open(path.c_str(), flags, 0600);
    dup2(file, stream);
    close(file);
}

// Becomes the program; returns only when that is not possible.
void Become(const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
}

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments, const fs::path& folder,
                      const std::string& input, const std::function<bool(const std::string&)>& interrupt)
{
    const TemporaryFolder temporary;  // of the streams, beside the test's own
    const fs::path& streams = temporary.Path();
    temporary.Write("in", input);
    const pid_t child = fork();
    if (child == 0) {
        Redirect(streams / "in", O_RDONLY, STDIN_FILENO);
        Redirect(streams / "out", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        Redirect(streams / "err", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        if (chdir(folder.c_str()) == 0)
            Become(program, arguments);
        _exit(127);
    }
    int status = 0;
    bool isInterrupted = !interrupt;
    while (waitpid(child, &status, isInterrupted ? 0 : WNOHANG) == 0) {
        usleep(5000);
        if (interrupt(temporary.Read("err"))) {
            kill(child, SIGINT);
            isInterrupted = true;
        }
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), temporary.Read("out"),
            temporary.Read("err")};
}

bool HasPseudoTerminals()
{
    int ours = -1;
    int theirs = -1;
    if (openpty(&ours, &theirs, nullptr, nullptr, nullptr) != 0)
        return false;
    close(ours);
    close(theirs);
    return true;
}

ProgramRun RunOnTerminal(const std::string& program, const std::vector<std::string>& arguments, const fs::path& folder)
{
    const TemporaryFolder temporary;  // of the streams, beside the test's own
    const fs::path& streams = temporary.Path();
    int ours = -1;
    int theirs = -1;
    if (openpty(&ours, &theirs, nullptr, nullptr, nullptr) != 0)
        throw std::system_error(errno, std::generic_category(), "no pseudo-terminal");
    const pid_t child = fork();
    if (child == 0) {
        Redirect("/dev/null", O_RDONLY, STDIN_FILENO);
        Redirect(streams / "out", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        dup2(theirs, STDERR_FILENO);
        close(ours);
        close(theirs);
        if (chdir(folder.c_str()) == 0)
            Become(program, arguments);
        _exit(127);
    }
    close(theirs);
    std::string err;
    char piece[4096];
    for (ssize_t n = 0; (n = read(ours, piece, sizeof piece)) > 0;)  // an error tells that nobody holds it any more
        err.append(piece, static_cast<std::size_t>(n));
    close(ours);
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), temporary.Read("out"), err};
}

}  // namespace qvx::test
