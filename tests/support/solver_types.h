#pragma once

#include <string>

#include <gtest/gtest.h>

#include "model/jx_struct.h"

namespace qvx::test {

/// Values and names of a test that holds for every solver type.
inline auto AllSolverTypes()
{
    return testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse);
}
inline std::string SolverTypeName(const testing::TestParamInfo<int>& info)
{
    return info.param == DoubleSkyline ? "double" : info.param == QuadSkyline ? "quad" : "sparse";
}

}  // namespace qvx::test
