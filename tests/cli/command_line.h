#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/run_program.h"

namespace qvx::test {

/// Runs the built qvxfem in a folder of the test's own.
class CommandLine : public testing::Test
{
protected:
    CommandLine()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "qvx-cli-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~CommandLine() override { std::filesystem::remove_all(folder_); }

    ProgramRun Run(const std::vector<std::string>& arguments, const std::string& input = "") const
    {
        return RunProgram(QVXFEM_PROGRAM, arguments, folder_, input);
    }
    void Write(const std::string& name, const std::string& text) const { std::ofstream(folder_ / name) << text; }
    std::string Read(const std::string& name) const
    {
        std::ifstream in(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }
    std::ptrdiff_t Files() const
    {
        return std::distance(std::filesystem::directory_iterator(folder_), std::filesystem::directory_iterator());
    }

    std::filesystem::path folder_;
};

}  // namespace qvx::test
