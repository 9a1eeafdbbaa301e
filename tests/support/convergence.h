#pragma once

#include <string>

#include <gtest/gtest.h>

namespace qvx::test {

/// Keeps a point of a convergence plot in the test's output.
inline void RecordConvergence(const std::string& problem, const std::string& series, int n, double ratio)
{
    testing::Test::RecordProperty("convergence/" + problem + "/" + series + "/" + std::to_string(n),
                                  std::to_string(ratio));
}

}  // namespace qvx::test
