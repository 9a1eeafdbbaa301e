#include <cmath>

#include "elements/dense_run.h"
#include "elements/shell/shell4_group.h"
#include "support/round_off.h"

namespace qvx {
namespace {

using test::DenseRun;
using test::RoundOff;

class BeamGroupLoads : public testing::Test
{
protected:
    // Length 5, in the X-Y plane and out of it.
    void AddMember(const jxPoint& end = {3, 4, 0})
    {
        run.Node(0, 0);
        run.Node(end.x, end.y, end.z);
        run.Member(1, 2);
    }
    void Process()
    {
        run.Prepare(DoubleSkyline);
        run.group.ProcessElemLoads(0);
    }
    double Load(int node, int dof) { return static_cast<double>(run.Vector(node, dof)); }
    // Force of both nodes together.
    double Total(int dof) { return Load(1, dof) + Load(2, dof); }
    const std::vector<jxBmLoadVector>& Records() const { return run.model.combResults[0].beamLoadVectors; }
    void GetLoads(int id = 1)
    {
        run.model.combResults.resize(run.model.loadCombs.size());
        run.model.GetBeamLoads(points, lines, id, 0);
    }

    DenseRun run;
    std::vector<jxPtLoad> points;
    std::vector<jxLnLoad> lines;
};

// Physics: the nodal loads of a global load have its resultant, whatever the direction of the member.
TEST_F(BeamGroupLoads, GlobalLoadReachesTheNodesWithItsResultant)
{
    AddMember({2, -3, 6});  // length 7
    run.PointLoad(1, kGlobal, kY, -10, 0.3);
    run.LineLoad(1, kGlobal, kX, 4, 4);
    Process();

    EXPECT_WITHIN(Total(kY), -10.0, RoundOff(10, 20));
    EXPECT_WITHIN(Total(kX), 28.0, RoundOff(28, 20));
    EXPECT_WITHIN(Total(kZ), 0.0, RoundOff(28, 20));
}

TEST_F(BeamGroupLoads, FactorsOfTheCombinationMultiplyAndUnknownLabelsAddNothing)
{
    AddMember();
    run.AddCase(L"WIND");
    run.PointLoad(1, kGlobal, kY, -10, 0.5);
    run.PointLoad(1, kGlobal, kX, 7, 0.5, 1);
    run.model.loadCombs.clear();
    run.AddCombination(L"ALL", {{L"WIND", 3.0}, {L"wind", 100.0}, {L"LOAD", -2.0}});
    Process();

    EXPECT_WITHIN(Total(kX), 21.0, RoundOff(21, 20));
    EXPECT_WITHIN(Total(kY), 20.0, RoundOff(20, 20));
}

TEST_F(BeamGroupLoads, RecordsHoldLocalValuesOfLoadedMembersOnlyAndAreRenewed)
{
    AddMember();
    run.Member(1, 2);
    run.Member(2, 1);
    run.PointLoad(3, kLocal, kX, 10, 0.2);
    run.PointLoad(1, kLocal, kX, 10, 0.2);
    Process();
    run.group.ProcessElemLoads(0);

    ASSERT_EQ(Records().size(), 2u);
    EXPECT_EQ(Records()[0].id, 1);
    EXPECT_EQ(Records()[1].id, 3);
    EXPECT_WITHIN(Records()[1].value[0], 8.0, RoundOff(8, 4));
    EXPECT_WITHIN(Records()[1].value[6], 2.0, RoundOff(8, 4));
}

TEST_F(BeamGroupLoads, LoadsOfExcludedAndFailedMembersActOnTheNodes)
{
    AddMember();
    run.Beam(1).excluded = 1;
    run.Beam(1).failed = 1;
    run.PointLoad(1, kGlobal, kY, -10, 0.5);
    Process();

    EXPECT_WITHIN(Total(kY), -10.0, RoundOff(10, 20));
}

TEST_F(BeamGroupLoads, DegreesOfFreedomWithoutEquationTakeNothing)
{
    AddMember();
    run.PointLoad(1, kGlobal, kY, -10, 0.5);
    run.Prepare(DoubleSkyline);
    run.model.idTable[kY][1] = 0;
    run.group.ProcessElemLoads(0);

    EXPECT_EQ(Load(1, kY), 0);
    EXPECT_WITHIN(Load(2, kY), -5.0, RoundOff(10, 20));
    EXPECT_EQ(static_cast<double>(run.model.loadVectors[0][0]), 0);
}

// Weight per length 3 * 0.5 = 1.5, times 5 in length. The sign is that of the factor: nothing turns it around.
TEST_F(BeamGroupLoads, SelfWeightIsAreaTimesDensityTimesFactorsAlongItsDirection)
{
    AddMember();
    run.model.selfWeightFactor = -1.2;
    run.model.loadCombs[0].cases[0].factor = 2;
    run.model.bStiffnessFactors = 1;
    run.Beam(1).f_A = 10;  // stiffness factors weigh nothing
    Process();
    EXPECT_WITHIN(Total(kY), -1.2 * 2 * 1.5 * 5, RoundOff(18, 20));
    EXPECT_WITHIN(Total(kX), 0.0, RoundOff(18, 20));

    run.model.selfWeightDir = kZ;
    run.model.selfWeightFactor = 1;
    Process();
    EXPECT_WITHIN(Total(kZ), 15.0, RoundOff(15, 20));
}

TEST_F(BeamGroupLoads, SelfWeightBelongsToItsCaseAndLeavesExemptedMembersOut)
{
    AddMember();
    run.AddCase(L"DEAD");
    run.model.selfWeightCase = 1;
    run.model.selfWeightFactor = -1;
    Process();
    EXPECT_TRUE(Records().empty());

    run.model.selfWeightCase = 0;
    run.Beam(1).selfWeight = 1;
    Process();
    EXPECT_TRUE(Records().empty());

    run.Beam(1).selfWeight = 0;
    run.model.selfWeightFactor = 0;
    Process();
    EXPECT_TRUE(Records().empty());
}

TEST_F(BeamGroupLoads, RigidLinkWeighsNothingButStaysInTheLoop)
{
    AddMember();
    SetText(run.model.sections[0].label, L"Rigid_Link");
    run.model.selfWeightFactor = -1;
    Process();

    ASSERT_EQ(Records().size(), 1u);
    for (const double value : Records()[0].value)
        EXPECT_EQ(value, 0);
}

TEST_F(BeamGroupLoads, ThermalLoadTakesTheAreaFactorAndNothingElse)
{
    AddMember();
    run.model.caseLoads[0].bmThermalLoads.push_back({.id = 1, .dT = 20});
    run.Beam(1).f_A = 2;
    run.model.loadCombs[0].cases[0].factor = 3;
    Process();
    const double F = 3 * 2000 * 1e-3 * 60;
    for (int i = 0; i < 12; ++i)
        EXPECT_WITHIN(Records()[0].value[i], i == 0 ? -F : i == 6 ? F : 0.0, RoundOff(F, 4)) << i;
    EXPECT_WITHIN(Load(2, kX), 0.6 * F, RoundOff(F, 10));

    run.model.bStiffnessFactors = 1;
    Process();
    EXPECT_WITHIN(Records()[0].value[6], 2 * F, RoundOff(2 * F, 4));
}

// Deliberate (docs/members.md): the nodes are pushed apart even where an end can slide.
TEST_F(BeamGroupLoads, ThermalLoadIgnoresReleases)
{
    AddMember();
    run.Release(1, L"100000", L"000000");
    run.model.caseLoads[0].bmThermalLoads.push_back({.id = 1, .dT = 20});
    Process();

    EXPECT_WITHIN(Records()[0].value[0], -2000 * 1e-3 * 60, RoundOff(120, 4));
}

TEST_F(BeamGroupLoads, MissingSectionOfAHeavyMemberIsNamed)
{
    AddMember();
    run.model.selfWeightFactor = -1;
    run.Beam(1).section = 5;
    try {
        Process();
        FAIL() << "no exception";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding section 5");
    }
}

TEST_F(BeamGroupLoads, GetBeamLoadsAppendsFactoredLoadsInTheirOwnAxesToWhatWasThere)
{
    AddMember();
    run.PointLoad(1, kGlobal, kY, -10, 0.5);
    run.LineLoad(1, kProjected, kY, 1, 2);
    run.model.selfWeightCase = 3;
    run.model.loadCombs[0].cases[0].factor = 2;
    points = {{.id = 7, .value = 70}, {.id = 8, .value = 80}};
    lines = {{.id = 9, .value1 = 90}};
    GetLoads();

    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[0].value, 70);
    EXPECT_EQ(points[1].value, 80);
    EXPECT_EQ(points[2].coordSys, kGlobal);
    EXPECT_EQ(points[2].value, -20);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].value1, 90);
    EXPECT_EQ(lines[1].coordSys, kProjected);
    EXPECT_EQ(lines[1].value1, 2);
    EXPECT_EQ(lines[1].value2, 4);
}

// The curves get a self weight entry for every member, of value 0 where none acts: it marks stations.
TEST_F(BeamGroupLoads, GetBeamLoadsHoldsASelfWeightEntryForEveryMember)
{
    AddMember();
    const auto weight = [this] {
        lines.clear();
        GetLoads();
        return lines.size() == 1 && lines[0].coordSys == kGlobal && lines[0].distance2 == 1 ? lines[0].value1 : NAN;
    };

    EXPECT_EQ(weight(), 0);
    run.model.selfWeightFactor = -2;
    EXPECT_EQ(weight(), -3);
    run.Beam(1).selfWeight = 1;
    EXPECT_EQ(weight(), 0);
    run.Beam(1).selfWeight = 0;
    SetText(run.model.sections[0].label, L"RIGID_LINK");
    EXPECT_EQ(weight(), 0);
}

// The curves' simply supported span carries its end forces: start moments, then the end's axial force, torsion, moments.
TEST_F(BeamGroupLoads, GetBeamLoadsAppendsTheEndForcesInOrder)
{
    AddMember();
    run.PointLoad(1, kLocal, kY, 1, 0.5);
    run.model.combResults.resize(1);
    run.model.combResults[0].beamEndForces = {{.id = 1,
                                               .start = {.Fx = 1, .Fy = 2, .Fz = 3, .Mx = 4, .My = 5, .Mz = 6},
                                               .end = {.Fx = 7, .Fy = 8, .Fz = 9, .Mx = 10, .My = 11, .Mz = 12}}};
    GetLoads();

    ASSERT_EQ(points.size(), 7u);
    const int dirs[6] = {kOY, kOZ, kX, kOX, kOY, kOZ};
    const double values[6] = {5, 6, 7, 10, 11, 12};
    for (std::size_t i = 0; i < 6; ++i) {
        const jxPtLoad& load = points[i + 1];
        EXPECT_EQ(load.id, -1);
        EXPECT_EQ(load.coordSys, kLocal);
        EXPECT_EQ(load.bAbsoluteDistance, 0);
        EXPECT_EQ(load.dir, dirs[i]);
        EXPECT_EQ(load.value, values[i]);
        EXPECT_EQ(load.distance, i < 2 ? 0 : 1);
    }
}

TEST_F(BeamGroupLoads, GetBeamLoadsLeavesVanishingEndForcesOut)
{
    AddMember();
    run.model.combResults.resize(1);
    run.model.combResults[0].beamEndForces = {
        {.id = 1, .start = {.My = 1e-100, .Mz = -2e-100}, .end = {.Fx = -1e-101}}};
    GetLoads();

    ASSERT_EQ(points.size(), 1u);
    EXPECT_EQ(points[0].dir, kOZ);
    EXPECT_EQ(points[0].value, -2e-100);
}

// Physics: the same force or moment, written in other axes, gives the same nodal loads.
TEST_F(BeamGroupLoads, ConvertingLocalLoadsToGlobalChangesNoNodalLoad)
{
    AddMember({2, -3, 6});
    run.Beam(1).angle = 0.6;
    for (int dir = 0; dir < 6; ++dir)
        run.PointLoad(1, kLocal, dir, 3 + dir, 0.1 * (dir + 1));
    run.LineLoad(1, kLocal, kY, 2, -5, 0.2, 0.7);
    Process();
    const std::vector<double128> before = run.model.loadVectors[0];

    run.model.ConvertAllLocalLoadsToGlobalLoads();

    Process();
    for (std::size_t i = 1; i < before.size(); ++i)
        EXPECT_WITHIN(run.model.loadVectors[0][i], before[i], RoundOff(20.0, 50)) << i;
    for (const jxPtLoad& load : run.model.caseLoads[0].ptLoads)
        EXPECT_EQ(load.coordSys, kGlobal);
}

// A column has local x along Y, local y along -X, local z along Z: one global load for each, the rest zero components.
TEST_F(BeamGroupLoads, ConversionWritesOneLoadForEachNonzeroComponentAndKeepsGlobalOnes)
{
    AddMember({0, 4, 0});
    run.PointLoad(1, kGlobal, kX, 1, 0.5);
    run.PointLoad(1, kLocal, kY, 2, 0.25);
    run.PointLoad(1, kLocal, kOX, 3, 0.75);
    run.LineLoad(1, kLocal, kOY, 4, 5);
    run.model.ConvertAllLocalLoadsToGlobalLoads();

    const auto& loads = run.model.caseLoads[0].ptLoads;
    ASSERT_EQ(loads.size(), 3u);
    EXPECT_EQ(loads[0].dir, kX);
    EXPECT_EQ(loads[0].value, 1);
    EXPECT_EQ(loads[1].dir, kX);
    EXPECT_EQ(loads[1].value, -2);
    EXPECT_EQ(loads[1].distance, 0.25);
    EXPECT_EQ(loads[2].dir, kOY);
    EXPECT_EQ(loads[2].value, 3);
    const auto& line = run.model.caseLoads[0].lnLoads;
    ASSERT_EQ(line.size(), 1u);
    EXPECT_EQ(line[0].coordSys, kGlobal);
    EXPECT_EQ(line[0].dir, kOX);
    EXPECT_EQ(line[0].value1, -4);
    EXPECT_EQ(line[0].value2, -5);
}

// A pressure along the local z of a shell is its normal, (0.6, 0.8, 0) here up to the sign of the axis.
TEST_F(BeamGroupLoads, ConversionTurnsSurfaceLoadsIntoGlobalComponents)
{
    for (const auto& [x, y, z] : {jxPoint{0, 0, 0}, jxPoint{4, -3, 0}, jxPoint{4, -3, 5}, jxPoint{0, 0, 5}})
        run.Node(x, y, z);
    run.model.shell4s.push_back({.id = 1, .node = {1, 2, 3, 4}});
    run.model.caseLoads[0].shell4SurfaceLoads = {{.id = 1, .coordSys = kLocal, .dir = 2, .value = 10}};
    jxPoint axis[3];
    CjxShell4Group::GetLocalAxis(axis, {0, 0, 0}, {4, -3, 0}, {4, -3, 5}, {0, 0, 5}, 0);
    run.model.ConvertAllLocalLoadsToGlobalLoads();

    const auto& loads = run.model.caseLoads[0].shell4SurfaceLoads;
    double sum[3] = {};
    for (const jxSurfaceLoad& load : loads) {
        EXPECT_EQ(load.coordSys, kGlobal);
        sum[load.dir] += load.value;
    }
    EXPECT_WITHIN(sum[0], 10 * axis[2].x, RoundOff(10, 4));
    EXPECT_WITHIN(sum[1], 10 * axis[2].y, RoundOff(10, 4));
    EXPECT_WITHIN(std::fabs(sum[1]), 8.0, RoundOff(10, 10));
    EXPECT_WITHIN(sum[2], 0.0, RoundOff(10, 4));
}

// A plane that slopes by 3 % and is no rectangle: its user x axis, global X to the last bit, leans out of the plane, and a
// load along local x must not. It stays square to the normal, whatever the angle of the shell.
TEST_F(BeamGroupLoads, ConversionOfALoadAlongLocalXOfAGentleSlopeStaysInThePlane)
{
    const auto heightAt = [](double x) { return 0.03 * x; };
    for (const auto& [x, z] : {std::pair{0.0, 0.0}, std::pair{0.0, 3.0}, std::pair{4.0, 5.0}, std::pair{4.0, 0.0}})
        run.Node(x, heightAt(x), z);
    const double length = std::hypot(1, 0.03);
    const jxPoint normal{-0.03 / length, 1 / length, 0};
    for (const double angle : {0.0, 0.7}) {
        run.model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}, .angle = angle}};
        for (const int dir : {0, 1, 2}) {
            run.model.caseLoads[0].shell4SurfaceLoads = {{.id = 1, .coordSys = kLocal, .dir = dir, .value = 10}};
            run.model.ConvertAllLocalLoadsToGlobalLoads();

            jxPoint sum;
            for (const jxSurfaceLoad& load : run.model.caseLoads[0].shell4SurfaceLoads)
                (load.dir == 0 ? sum.x : load.dir == 1 ? sum.y : sum.z) += load.value;
            EXPECT_WITHIN(std::fabs(dot(sum, normal)), dir == 2 ? 10.0 : 0.0, RoundOff(10, 10)) << dir;
            EXPECT_WITHIN(std::sqrt(dot(sum, sum)), 10.0, RoundOff(10, 10)) << dir;
        }
    }
}

// Deliberate (docs/members.md): whatever is not global is turned about the local axis of its direction.
TEST_F(BeamGroupLoads, ConversionReadsProjectedLoadsAsLocal)
{
    AddMember({0, 4, 0});
    run.LineLoad(1, kProjected, kY, 2, 3);
    run.model.ConvertAllLocalLoadsToGlobalLoads();

    const auto& loads = run.model.caseLoads[0].lnLoads;
    ASSERT_EQ(loads.size(), 1u);
    EXPECT_EQ(loads[0].coordSys, kGlobal);
    EXPECT_EQ(loads[0].dir, kX);
    EXPECT_EQ(loads[0].value1, -2);
    EXPECT_EQ(loads[0].value2, -3);
}

TEST_F(BeamGroupLoads, ConvertedListsAreSortedById)
{
    AddMember();
    run.Member(2, 1);
    run.PointLoad(2, kLocal, kY, 2, 0.25);
    run.PointLoad(1, kLocal, kY, 2, 0.25);
    run.model.ConvertAllLocalLoadsToGlobalLoads();

    const auto& loads = run.model.caseLoads[0].ptLoads;
    ASSERT_EQ(loads.size(), 4u);
    EXPECT_TRUE(std::is_sorted(loads.begin(), loads.end()));
}

TEST_F(BeamGroupLoads, LoadOnAMissingMemberIsNamedByTheConversion)
{
    AddMember();
    run.PointLoad(9, kLocal, kY, 2, 0.25);
    try {
        run.model.ConvertAllLocalLoadsToGlobalLoads();
        FAIL() << "no exception";
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"error finding member 9");
    }
}

}  // namespace
}  // namespace qvx
