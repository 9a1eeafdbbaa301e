#include "operations/held_quantities.h"

#include <gtest/gtest.h>

#include "support/recording_host.h"

namespace qvx::test {
namespace {

// Only numbers other than 0 count, each with all quantities of its unit, and by the direction of its record.
TEST(HeldQuantities, AreThoseOfTheNumbersOfTheRecords)
{
    const RecordingHost host;
    CjxStruct model;
    model.materials.clear();
    model.sections.clear();
    model.thicknesses.clear();
    model.beamRcCriteria.clear();
    model.columnRcCriteria.clear();
    model.plateRcCriteria.clear();
    model.steelCriteria.clear();
    std::array<bool, kQuantityCount> expected{};
    EXPECT_EQ(HeldQuantities(model), expected);

    model.materials = {{.id = 1, .E = 1, .nu = 0.3}};
    expected[kModulus] = true;
    EXPECT_EQ(HeldQuantities(model), expected);

    model.nodalSprings = {{.id = 1, .k = {0, 0, 0, 7, 0, 0}}};
    expected[kNodalRotationalSpring] = true;
    EXPECT_EQ(HeldQuantities(model), expected);

    model.caseLoads.resize(1);
    model.caseLoads[0].lnLoads = {{.id = 1, .bAbsoluteDistance = 0, .dir = 4, .distance1 = 0.5, .value1 = 2}};
    expected[kLinearMoment] = true;
    EXPECT_EQ(HeldQuantities(model), expected);
    model.caseLoads[0].lnLoads[0].bAbsoluteDistance = 1;
    expected[kLength] = true;
    EXPECT_EQ(HeldQuantities(model), expected);

    model.additionalMasses = {{.id = 1, .dof = 0, .value = 3}};  // force s^2 / length
    expected[kForce] = true;
    EXPECT_EQ(HeldQuantities(model), expected);
}

}  // namespace
}  // namespace qvx::test
