#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace qvx::test {

/// Runs the built qvxfem in a folder of the test's own.
class CommandLine : public testing::Test
{
protected:
    ProgramRun Run(const std::vector<std::string>& arguments, const std::string& input = "") const
    {
        return RunProgram(QVXFEM_PROGRAM, arguments, folder_, input);
    }
    void Write(const std::string& name, const std::string& text) const { temporary_.Write(name, text); }
    std::string Read(const std::string& name) const { return temporary_.Read(name); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder_ / name); }
    std::ptrdiff_t Files() const { return temporary_.Count(); }

    TemporaryFolder temporary_;
    const std::filesystem::path& folder_ = temporary_.Path();
};

}  // namespace qvx::test
