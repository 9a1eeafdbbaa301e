#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace qvx::test {

/// How a program ended and what it printed.
struct ProgramRun
{
    int exitCode = -1;
    std::string out;
    std::string err;
};

/// Runs a program in a folder and waits for its end.
/// @param input      text on its standard input
/// @param interrupt  asked every few milliseconds with what stands on the error stream; true sends Ctrl-C once
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder, const std::string& input = "",
                      const std::function<bool(const std::string&)>& interrupt = {});

/// Whether this machine gives out pseudo-terminals; a bare change of root has none.
bool HasPseudoTerminals();

/// RunProgram with a terminal as the error stream: `err` is what stood on it, line ends as the terminal makes them.
ProgramRun RunOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                         const std::filesystem::path& folder);

}  // namespace qvx::test
