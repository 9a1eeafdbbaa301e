#include "qvxfem/load_balance.h"

#include <array>

#include <gtest/gtest.h>

#include "model/unit_systems.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

// Sums of a run are in pound; the model is in kip.
class LoadBalance : public testing::Test
{
protected:
    LoadBalance()
    {
        model.units = *UnitsOfSystem(L"kip-ft");
        model.combOutcomes = {{}, {.appliedForce = {1000, -2500, 0}, .reactionForce = {-1000, 2500, 500}}};
    }

    RecordingHost host;
    CjxStruct model;
};

TEST_F(LoadBalance, LoadsAreToldInTheUnitOfForce)
{
    EXPECT_EQ(app::SumOfLoads(model, 1), (std::array<double, 3>{1, -2.5, 0}));
}

TEST_F(LoadBalance, ReactionsAreToldInTheUnitOfForce)
{
    EXPECT_EQ(app::SumOfReactions(model, 1), (std::array<double, 3>{-1, 2.5, 0.5}));
}

}  // namespace
}  // namespace qvx::test
