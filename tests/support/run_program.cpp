#include "support/run_program.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qvx::test {
namespace {

namespace fs = std::filesystem;

std::string Text(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

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

// A folder for the three streams, beside the test's own.
fs::path StreamFolder()
{
    std::string pattern = (fs::temp_directory_path() / "qvx-streams-XXXXXX").string();
    return mkdtemp(pattern.data());
}

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments, const fs::path& folder,
                      const std::string& input, const std::function<bool(const std::string&)>& interrupt)
{
    const fs::path streams = StreamFolder();
    std::ofstream(streams / "in") << input;
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
        if (interrupt(Text(streams / "err"))) {
            kill(child, SIGINT);
            isInterrupted = true;
        }
    }
    ProgramRun run{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), Text(streams / "out"),
                   Text(streams / "err")};
    fs::remove_all(streams);
    return run;
}

ProgramRun RunOnTerminal(const std::string& program, const std::vector<std::string>& arguments, const fs::path& folder)
{
    const fs::path streams = StreamFolder();
    int ours = -1;
    int theirs = -1;
    if (openpty(&ours, &theirs, nullptr, nullptr, nullptr) != 0)
        return {};
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
    ProgramRun run{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), Text(streams / "out"), err};
    fs::remove_all(streams);
    return run;
}

}  // namespace qvx::test
