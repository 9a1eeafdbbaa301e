#include "qvxfem/load_balance.h"

#include <array>

#include <gtest/gtest.h>

#include "model/unit_systems.h"
#include "support/recording_host.h"

namespace qvx::test {
namespace {

// Node 1 to 4: a kite in a plane that slopes by 3 in 4 about the X axis, in feet. Its diagonals are (0, 8, 6), of length
// 10, and (5, 0, 0): area 10 * 5 / 2 = 25 ft^2. Member 1 runs along the first diagonal.
class LoadBalance : public testing::Test
{
protected:
    LoadBalance()
    {
        model.units = *UnitsOfSystem(L"kip-ft");
        model.nodes = {{.id = 1},
                       {.id = 2, .x = 3, .y = 2, .z = 1.5},
                       {.id = 3, .y = 8, .z = 6},
                       {.id = 4, .x = -2, .y = 2, .z = 1.5}};
        model.beams = {{.id = 1, .node1 = 1, .node2 = 3}};
        model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
        model.combResults.resize(2);
    }
    void ExpectSum(const std::array<double, 3>& expected)
    {
        const std::array<double, 3> sum = app::SumOfReactions(model, 1);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(sum[k], expected[k], 1e-12 * 1000) << k;
    }

    RecordingHost host;
    CjxStruct model;
    jxCombResult& result() { return model.combResults[1]; }
};

TEST_F(LoadBalance, AddsTheForcesOfSupportsAndNodalSpringsAndNotTheirMoments)
{
    result().supportReactions = {{.id = 1, .value = {1, 20, 300, 7, 7, 7}}, {.id = 2, .value = {2, 0, 0, 7, 7, 7}}};
    result().nodalSpringReactions = {{.id = 3, .value = {4, 0, 0, 7, 7, 7}}};
    result().coupledSpringReactions = {{.id = 4, .value = {0, 50, 0, 7, 7, 7}}};
    ExpectSum({7, 70, 300});
}

TEST_F(LoadBalance, LineSpringsCountTimesTheLengthOfTheirMember)
{
    result().beamSpringReactions = {{.id = 1, .value = {1, -2, 3}}};
    ExpectSum({10, -20, 30});
}

TEST_F(LoadBalance, SurfaceSpringsCountTimesTheAreaOfTheirShell)
{
    result().shell4SpringReactions = {{.id = 1, .value = {1, -2, 3}}};
    ExpectSum({25, -50, 75});
}

// A host's mixture: coordinates in feet, forces in kip, line forces in lb/in and pressures in lb/in^2.
// 1 lb/in over 10 ft = 120 lb = 0.12 kip; 1 lb/in^2 over 25 ft^2 = 3600 lb = 3.6 kip.
TEST_F(LoadBalance, ForcesPerLengthAndAreaAreTurnedIntoTheUnitOfForce)
{
    model.units.unit[kLinearForce] = UnitsOfSystem(L"lb-in")->unit[kLinearForce];
    model.units.unit[kSurfacePressure] = UnitsOfSystem(L"lb-in")->unit[kSurfacePressure];
    result().beamSpringReactions = {{.id = 1, .value = {1, 0, 0}}};
    result().shell4SpringReactions = {{.id = 1, .value = {0, 1, 0}}};
    ExpectSum({0.12, 3.6, 0});
}

// A constraint couples any two degrees of freedom: its forces count, its moments do not.
TEST_F(LoadBalance, ConstraintsCountByTheirForces)
{
    result().multiDofConstraintForces = {{.id = 1, .node = {1, 2}, .dof = {kX, kZ}, .force = {-10, 20}},
                                         {.id = 2, .node = {1, 2}, .dof = {kOX, kY}, .force = {1000, 5}},
                                         {.id = 3, .node = {1, 2}, .dof = {kOZ, kOY}, .force = {1000, 1000}}};
    ExpectSum({-10, 5, 20});
}

TEST_F(LoadBalance, LoadsAreToldInTheUnitOfForce)
{
    model.combOutcomes = {{}, {.appliedForce = {1000, -2500, 0}}};
    const std::array<double, 3> loads = app::SumOfLoads(model, 1);
    EXPECT_EQ(loads[0], 1);
    EXPECT_EQ(loads[1], -2.5);
    EXPECT_EQ(loads[2], 0);
}

}  // namespace
}  // namespace qvx::test
