#include <functional>

#include "model/input_check_fixture.h"
#include "model/multi_dof_check.h"

namespace {

using namespace qvx::test;

class BoundaryCheck : public InputCheckTest
{
};
class PropertyCheck : public InputCheckTest
{
};

TEST_F(BoundaryCheck, NoBoundaryConditionAtAllIsRefused)
{
    model.supports.clear();
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"No boundary conditions defined", L"NOT OK"}}));
    EXPECT_TRUE(log.Has("No boundary conditions defined"));
}

TEST_F(BoundaryCheck, AConstraintAloneIsLoggedAndPasses)
{
    model.supports.clear();
    model.multiDofConstraints = {{.id = 1, .node = {1, 2}}};
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(Findings().empty());
    EXPECT_TRUE(log.Has("No boundary conditions defined"));
}

TEST_F(BoundaryCheck, AnySpringIsABoundaryCondition)
{
    model.supports.clear();
    const std::function<void(CjxStruct&)> additions[] = {
        [](CjxStruct& m) { m.nodalSprings = {{.id = 1}}; }, [](CjxStruct& m) { m.coupledSprings = {{.id = 1}}; },
        [](CjxStruct& m) { m.beamSprings = {{.id = 1}}; }, [](CjxStruct& m) { m.shell3Springs = {{.id = 1}}; },
        [](CjxStruct& m) { m.shell4Springs = {{.id = 1}}; }};
    for (const auto& add : additions) {
        model.nodalSprings.clear();
        model.coupledSprings.clear();
        model.beamSprings.clear();
        model.shell3Springs.clear();
        model.shell4Springs.clear();
        add(model);
        EXPECT_EQ(Check(), 1);
    }
    EXPECT_FALSE(log.Has("No boundary conditions defined"));
}

TEST_F(BoundaryCheck, ForcedDisplacementsAreIgnoredInAFrequencyRunOnly)
{
    model.supports[1].value[4] = 0.01;
    EXPECT_EQ(Check(0), 1);
    EXPECT_TRUE(Findings().empty());

    EXPECT_EQ(Check(1), 1);
    EXPECT_EQ(Findings(), (LineList{{L"Forced displacements are ignored in frequency analysis", L"WARNING"}}));
    EXPECT_TRUE(log.Has("Support 4: forced displacements ignored in frequency analysis"));
    EXPECT_FALSE(log.Has("Support 1: forced displacements ignored in frequency analysis"));
}

TEST_F(BoundaryCheck, AnInvalidConstraintIsRefusedAndNamedInTheLog)
{
    model.multiDofConstraints = {{.id = 7, .node = {1, 99}, .dof = {0, 6}}};
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"Invalid Multi-DOF constraint found", L"NOT OK"}}));
    EXPECT_TRUE(log.Has("Multi-DOF constraint 7: node 99 does not exist\n"
                        "Multi-DOF constraint 7: degree of freedom 6 is outside 0 to 5"));
}

TEST(MultiDofConstraints, AreValidBetweenDifferentDegreesOfFreedomOfExistingNodes)
{
    const std::vector<jxNd> nodes = {{.id = 1}, {.id = 2}};
    const auto check = [&](const jxMultiDofConstraint& c) { return checkMultiDofConstraints({c}, nodes).Text(); };
    EXPECT_EQ(check({.id = 1, .node = {1, 2}, .dof = {5, 0}}), L"");
    EXPECT_EQ(check({.id = 1, .node = {1, 1}, .dof = {0, 1}}), L"");
    EXPECT_EQ(check({.id = 1, .node = {1, 2}, .factor = {1, 0}}), L"");
    EXPECT_EQ(check({.id = 3, .node = {0, 2}}), L"Multi-DOF constraint 3: node 0 does not exist");
    EXPECT_EQ(check({.id = 3, .node = {1, 2}, .dof = {-1, 0}}),
              L"Multi-DOF constraint 3: degree of freedom -1 is outside 0 to 5");
    EXPECT_EQ(check({.id = 3, .node = {2, 2}, .dof = {4, 4}}),
              L"Multi-DOF constraint 3: both ends are degree of freedom 4 of node 2");
    EXPECT_EQ(check({.id = 3, .node = {1, 2}, .factor = {0, 0}}), L"Multi-DOF constraint 3: both factors are 0");
}

TEST_F(PropertyCheck, EveryMaterialValueHasItsBounds)
{
    const std::function<void(jxMat&)> faults[] = {[](jxMat& m) { m.E = 0; }, [](jxMat& m) { m.nu = -0.1; },
                                                  [](jxMat& m) { m.nu = 0.5; }, [](jxMat& m) { m.Wc = -1; },
                                                  [](jxMat& m) { m.Tc = 0; }};
    const jxMat good = model.materials[0];
    for (const auto& fault : faults) {
        model.materials[0] = good;
        fault(model.materials[0]);
        window.lines.clear();
        EXPECT_EQ(Check(), 0);
        EXPECT_EQ(Findings(), (LineList{{L"Invalid material properties found", L"NOT OK"}}));
    }
    EXPECT_TRUE(log.Has("material 1 [Steel]: invalid properties"));

    model.materials[0] = good;
    model.materials[0].nu = 0;
    model.materials[0].Wc = 0;
    EXPECT_EQ(Check(), 1);
}

TEST_F(PropertyCheck, EverySectionValueHasItsBounds)
{
    const std::function<void(jxSect&)> faults[] = {[](jxSect& s) { s.A = 0; },   [](jxSect& s) { s.Ay = -1; },
                                                   [](jxSect& s) { s.Az = -1; }, [](jxSect& s) { s.Iz = 0; },
                                                   [](jxSect& s) { s.Iy = 0; },  [](jxSect& s) { s.J = 0; }};
    const jxSect good = model.sections[0];
    for (const auto& fault : faults) {
        model.sections[0] = good;
        fault(model.sections[0]);
        window.lines.clear();
        EXPECT_EQ(Check(), 0);
        EXPECT_EQ(Findings(), (LineList{{L"Invalid section properties found", L"NOT OK"}}));
    }
    EXPECT_TRUE(log.Has("section 1 [Box]: invalid properties"));

    model.sections[0] = good;
    model.sections[0].Ay = model.sections[0].Az = 0;  // no shear deformation
    EXPECT_EQ(Check(), 1);
}

// 100,000 times the largest area and the largest inertia of the ordinary sections.
TEST_F(PropertyCheck, TheRigidLinkSectionIsNotTestedAndGetsItsValues)
{
    model.sections.push_back({.id = 2, .A = 4, .Iz = 700, .Iy = 3, .J = 1});
    model.sections.push_back({.id = 3});
    SetText(model.sections[2].label, L"Rigid_Link");
    EXPECT_EQ(Check(), 1);
    const jxSect& rigid = model.sections[2];
    EXPECT_EQ(rigid.id, 3);
    EXPECT_STREQ(rigid.label, L"Rigid_Link");
    EXPECT_EQ(rigid.A, 10 * 1e5);
    EXPECT_EQ(rigid.Ay, 10 * 1e5);
    EXPECT_EQ(rigid.Az, 10 * 1e5);
    EXPECT_EQ(rigid.Iz, 700 * 1e5);
    EXPECT_EQ(rigid.Iy, 700 * 1e5);
    EXPECT_EQ(rigid.J, 700 * 1e5);

    const jxSect first = rigid;
    Check();  // its own values must not feed back
    EXPECT_EQ(model.sections[2].A, first.A);
    EXPECT_EQ(model.sections[2].Iz, first.Iz);
}

TEST_F(PropertyCheck, ThicknessesAreAboveZeroAndNamedLengthsAreOnlyLogged)
{
    model.namedLengths = {{.id = 5}};
    SetText(model.namedLengths[0].label, L"storey");
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(log.Has("thickness 5 [storey]: invalid properties"));
    EXPECT_TRUE(Findings().empty());

    model.thicknesses[0].t = 0;
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"Invalid thickness properties found", L"NOT OK"}}));
    EXPECT_TRUE(log.Has("thickness 1 []: invalid properties"));
}

}  // namespace
