#pragma once

#include "support/solver_types.h"
#include "support/static_model.h"

namespace qvx::test {

/// Suite of tests that hold for every solver, or for several, each with a model under test.
class ModelOnEverySolver : public testing::TestWithParam<Solver>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(GetParam()))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
        Choose(m.host, GetParam());
        m.host.boxes.clear();
    }

    StaticModel m{GetParam().type};
};

}  // namespace qvx::test
