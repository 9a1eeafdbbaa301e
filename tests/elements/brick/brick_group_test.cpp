#include "elements/brick/brick_group.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/find_record.h"
#include "model/solution_data.h"
#include "support/brick_mesh.h"
#include "support/model_builder.h"
#include "support/model_log.h"

using qvx::test::BrickMesh;
using qvx::test::ModelBuilder;
using testing::ElementsAre;

namespace {

// Bricks in a model whose displacements are written by hand: equation 3 (node - 1) + dof + 1 for every node.
class BrickModel : public ModelBuilder
{
public:
    explicit BrickModel(const BrickMesh& mesh)
    {
        model.modelType = Brick3D;
        Material(210e3, 0.3, 0.5, 1e-5);
        for (const jxPoint& p : mesh.nodes)
            Node(p.x, p.y, p.z);
        for (const std::array<int, 8>& brick : mesh.bricks) {
            jxBrick record;
            record.id = static_cast<int>(model.bricks.size()) + 1;
            for (std::size_t i = 0; i < 8; ++i)
                record.node[i] = brick[i] + 1;
            model.bricks.push_back(record);
        }
        model.combResults.resize(1);
        model.numberOfEquations = static_cast<int>(3 * mesh.nodes.size());
        model.loadVectors.assign(1, std::vector<qvx::double128>(3 * mesh.nodes.size() + 1));
        for (int dof = 0; dof < 6; ++dof) {
            model.idTable[dof].assign(mesh.nodes.size() + 1, 0);
            for (std::size_t node = 1; dof < 3 && node <= mesh.nodes.size(); ++node)
                model.idTable[dof][node] = static_cast<int>(3 * (node - 1)) + dof + 1;
        }
    }

    // Location rows without equations: nothing is assembled, all else happens.
    jxSolutionData EmptyData() const
    {
        jxSolutionData data;
        data.lmBricks = qvx::RowTable(static_cast<int>(model.bricks.size()), 24);
        return data;
    }
    double Load(int node, int dof) const
    {
        return static_cast<double>(
            model.loadVectors[0][static_cast<std::size_t>(model.idTable[dof][static_cast<std::size_t>(node)])]);
    }
    void Displace(const std::function<double(const jxPoint&, int)>& field)
    {
        for (std::size_t node = 0; node < model.nodes.size(); ++node)
            for (int dof = 0; dof < 3; ++dof)
                model.loadVectors[0][3 * node + static_cast<std::size_t>(dof) + 1] =
                    field(model.nodes[node].Point(), dof);
    }
    const std::vector<jxBrickStress>& Stresses() const { return model.combResults[0].brickStresses; }

    CjxBrickGroup group{&model};
};

BrickMesh TwoCubes()
{
    return qvx::test::GridMesh({2, 1, 1}, [](int i, int j, int k) { return jxPoint{1.0 * i, 1.0 * j, 1.0 * k}; });
}

BrickMesh InsideOut(BrickMesh mesh, std::initializer_list<std::size_t> which)
{
    for (const std::size_t b : which)
        std::rotate(mesh.bricks[b].begin(), mesh.bricks[b].begin() + 4, mesh.bricks[b].end());
    return mesh;
}

double Quadratic(const jxPoint& p, int dof)
{
    return 1e-3 * (dof == 0 ? p.x * p.x : dof == 1 ? p.x * p.y : p.z);
}

}  // namespace

// Every faulty brick stands in the log before the run stops.
TEST(BrickGroup, BricksInsideOutStopTheRunAfterAllAreLogged)
{
    for (const int solverType : {DoubleSkyline, QuadSkyline}) {
        BrickModel m(InsideOut(qvx::test::GridMesh({3, 1, 1},
                                                   [](int i, int j, int k) {
                                                       return jxPoint{1.0 * i, 1.0 * j, 1.0 * k};
                                                   }),
                               {0, 2}));
        m.model.solverType = solverType;
        qvx::test::ModelLog log(m.model);
        jxSolutionData data = m.EmptyData();
        try {
            m.group.ProcessStiffness(data);
            FAIL();
        } catch (const jxException& e) {
            EXPECT_STREQ(e.GetText(), L"Negative diagonal terms in brick stiffness.\n"
                                      L"Try to correct this by reversing element node ordering.\n"
                                      L"See log file for details.");
        }
        EXPECT_TRUE(log.Has("Brick 1 has negative diagonal stiffness"));
        EXPECT_FALSE(log.Has("Brick 2 has negative diagonal stiffness"));
        EXPECT_TRUE(log.Has("Brick 3 has negative diagonal stiffness"));
    }
}

// A cube with its first corner pulled through the opposite side: in the plain form the fourth corner alone has negative
// diagonal terms. In each of the 24 numberings of the same solid they stand at another node, and are seen.
TEST(BrickGroup, ANegativeDiagonalIsSeenAtEveryNode)
{
    BrickMesh mesh = qvx::test::GridMesh({1, 1, 1}, [](int i, int j, int k) {
        return jxPoint{1.0 * i, 1.0 * j, 1.0 * k};
    });
    const std::array<int, 8> solid = mesh.bricks[0];
    mesh.nodes[static_cast<std::size_t>(solid[0])] = {0.75, 2, 0.5};
    for (const std::array<int, 8>& numbering : qvx::test::ProperNumberings()) {
        for (std::size_t i = 0; i < 8; ++i)
            mesh.bricks[0][i] = solid[static_cast<std::size_t>(numbering[i])];
        BrickModel m(mesh);
        m.model.bIncompatibleMembrane = 0;
        jxSolutionData data = m.EmptyData();
        EXPECT_THROW(m.group.ProcessStiffness(data), jxException);
    }
}

TEST(BrickGroup, ExcludedBrickInsideOutIsLeftOut)
{
    BrickModel m(InsideOut(TwoCubes(), {0}));
    m.model.bricks[0].excluded = 1;
    jxSolutionData data = m.EmptyData();
    EXPECT_NO_THROW(m.group.ProcessStiffness(data));
}

TEST(BrickGroup, ProgressIsShownOnEveryChangeOfThePercentage)
{
    BrickModel m(TwoCubes());
    qvx::test::ModelLog log(m.model);
    jxSolutionData data = m.EmptyData();
    m.group.ProcessStiffness(data);
    EXPECT_THAT(log.Entries(), ElementsAre("0%", "50%"));
    m.model.AllBrickStresses(m.group, 0);
    EXPECT_THAT(log.Entries(), ElementsAre("0%", "50%", "50%", "100%"));
}

TEST(BrickGroup, MissingRecordsAreNamed)
{
    BrickModel m(TwoCubes());
    jxSolutionData data = m.EmptyData();
    const auto refusal = [&] {
        try {
            m.group.ProcessStiffness(data);
        } catch (const jxException& e) {
            return std::wstring(e.GetText());
        }
        return std::wstring();
    };
    m.model.bricks[1].material = 7;
    EXPECT_EQ(refusal(), L"error finding material 7");
    m.model.bricks[0].node[3] = 99;
    EXPECT_EQ(refusal(), L"error finding node 99");
}

// Physics: weight gamma V in the direction and with the sign of the factor; exempted bricks weigh nothing.
TEST(BrickGroup, SelfWeightIsSharedByTheNodes)
{
    BrickModel m(TwoCubes());
    m.model.selfWeightFactor = -2;
    m.model.selfWeightDir = 2;
    m.model.loadCombs[0].cases[0].factor = 3;
    m.model.bricks[1].selfWeight = 1;
    m.group.ProcessElemLoads(0);
    double sum[3] = {};
    for (int node = 1; node <= 12; ++node)
        for (int dof = 0; dof < 3; ++dof)
            sum[dof] += m.Load(node, dof);
    EXPECT_EQ(sum[0], 0);
    EXPECT_EQ(sum[1], 0);
    EXPECT_NEAR(sum[2], -2 * 3 * 0.5, 1e-14);
    EXPECT_NEAR(m.Load(1, 2), -2 * 3 * 0.5 / 8, 1e-15);
    EXPECT_EQ(m.Load(3, 2), 0);
}

// Excluded bricks keep their loads: the loads of the model do not depend on what is analysed.
TEST(BrickGroup, ExcludedBricksKeepTheirLoads)
{
    BrickModel m(TwoCubes());
    m.model.selfWeightFactor = 1;
    m.model.bricks[0].excluded = m.model.bricks[1].excluded = 1;
    m.group.ProcessElemLoads(0);
    EXPECT_GT(m.Load(1, 1), 0);
}

// Physics: a uniform temperature rise in free bricks gives no stress at any of the nine locations; held, it gives
// -E alpha dT / (1 - 2 nu). Two loads on one brick and the factor of the term add up.
TEST(BrickGroup, HeatedBricksAreFreeOfStressOnlyWhenTheyExpand)
{
    for (const int bIncompatible : {0, 1}) {
        BrickModel m(TwoCubes());
        m.model.bIncompatibleMembrane = bIncompatible;
        m.model.loadCombs[0].cases[0].factor = 2;
        for (const int brick : {1, 1, 2, 2}) {
            jxThermalLoad load;
            load.id = brick;
            load.dT = 10;
            m.model.caseLoads[0].brickThermalLoads.push_back(load);
        }
        const double strain = 1e-5 * 2 * (10 + 10);
        m.Displace([&](const jxPoint& p, int dof) { return strain * (dof == 0 ? p.x : dof == 1 ? p.y : p.z); });
        m.model.AllBrickStresses(m.group, 0);
        for (const jxBrickStress& s : m.Stresses())
            for (const double(&at)[6] : s.S)
                for (const double value : at)
                    EXPECT_NEAR(value, 0, 1e-10);

        m.Displace([](const jxPoint&, int) { return 0.0; });
        m.model.AllBrickStresses(m.group, 0);
        for (int i = 0; i < 6; ++i)
            EXPECT_NEAR(m.Stresses()[0].S[4][i], i < 3 ? -210e3 * strain / 0.4 : 0, 1e-10);
    }
}

TEST(BrickGroup, ThermalForcesBalanceEachOther)
{
    BrickModel m(TwoCubes());
    jxThermalLoad load;
    load.id = 2;
    load.dT = 10;
    m.model.caseLoads[0].brickThermalLoads.push_back(load);
    m.group.ProcessElemLoads(0);
    // Pressure E alpha dT / (1 - 2 nu) on a unit face, a quarter per node.
    const double force = 210e3 * 1e-4 / 0.4 / 4;
    EXPECT_NEAR(m.Load(2, 0), -force, 1e-11);
    EXPECT_NEAR(m.Load(3, 0), force, 1e-11);
    EXPECT_EQ(m.Load(1, 0), 0);
}

// Setting bIncompatibleMembrane to 0 gives the plain solid: under a displacement field that is not linear its answers
// differ.
TEST(BrickGroup, MembraneOptionRulesTheBricks)
{
    BrickModel m(TwoCubes());
    m.Displace(Quadratic);
    m.model.AllBrickStresses(m.group, 0);
    const jxBrickStress withModes = m.Stresses()[0];
    m.model.bIncompatibleMembrane = 0;
    m.model.AllBrickStresses(m.group, 0);
    EXPECT_GT(std::fabs(withModes.S[2][0] - m.Stresses()[0].S[2][0]), 1);
}

TEST(BrickGroup, BothNumberTypesRecoverTheSame)
{
    BrickModel m(TwoCubes());
    m.Displace(Quadratic);
    m.model.solverType = DoubleSkyline;
    m.model.AllBrickStresses(m.group, 0);
    const std::vector<jxBrickStress> inDouble = m.Stresses();
    m.model.solverType = QuadSkyline;
    m.model.AllBrickStresses(m.group, 0);
    for (std::size_t b = 0; b < 2; ++b) {
        for (int k = 0; k < 9; ++k)
            for (int i = 0; i < 6; ++i)
                EXPECT_NEAR(m.Stresses()[b].S[k][i], inDouble[b].S[k][i], 1e-9);
        for (int i = 0; i < 24; ++i)
            EXPECT_NEAR(m.Stresses()[b].f[i], inDouble[b].f[i], 1e-9);
    }
}

// Corners that bricks share take the mean of their stresses; the centre the mean of the eight corners; nodal forces stay
// the brick's own.
TEST(BrickGroup, SharedCornersTakeTheMean)
{
    BrickModel m(TwoCubes());
    m.Displace(Quadratic);
    m.model.AllBrickStresses(m.group, 0);
    const std::vector<jxBrickStress> own = m.Stresses();
    m.model.AverageBrickStresses(m.group, 0);
    const std::vector<jxBrickStress>& mean = m.Stresses();

    ASSERT_EQ(mean.size(), 2U);
    for (int i = 0; i < 6; ++i) {
        // Node 2 of brick 1 is node 1 of brick 2.
        EXPECT_NEAR(mean[0].S[2][i], (own[0].S[2][i] + own[1].S[1][i]) / 2, 1e-10);
        EXPECT_EQ(mean[0].S[2][i], mean[1].S[1][i]);
        EXPECT_EQ(mean[0].S[1][i], own[0].S[1][i]);
        double sum = 0;
        for (int corner = 1; corner <= 8; ++corner)
            sum += mean[0].S[corner][i] / 8;
        EXPECT_NEAR(mean[0].S[0][i], sum, 1e-10);
    }
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(mean[0].f[i], own[0].f[i]);
}

// There are no axes to tell bricks apart: both ways of averaging are one.
// Eight bricks at one node: each counts an eighth, whichever came first.
TEST(BrickGroup, AllBricksAtANodeCountAlike)
{
    BrickModel m(qvx::test::GridMesh({2, 2, 2}, [](int i, int j, int k) {
        return jxPoint{1.0 * i, 1.0 * j, 1.0 * k};
    }));
    m.Displace([](const jxPoint& p, int dof) { return 1e-3 * std::sin(3 * p.x + 5 * p.y + 7 * p.z + dof); });
    const int middle = 14;  // of 27
    m.model.AllBrickStresses(m.group, 0);
    const std::vector<jxBrickStress> own = m.model.combResults[0].brickStresses;
    const auto atMiddle = [&](std::size_t i) {
        const auto& node = m.model.bricks[i].node;
        return static_cast<std::size_t>(std::find(std::begin(node), std::end(node), middle) - std::begin(node)) + 1;
    };
    m.model.AverageBrickStresses(m.group, 0);
    for (int component = 0; component < 6; ++component) {
        double sum = 0;
        for (std::size_t i = 0; i < 8; ++i)
            sum += own[i].S[atMiddle(i)][component];
        for (std::size_t i = 0; i < 8; ++i)
            EXPECT_NEAR(m.model.combResults[0].brickStresses[i].S[atMiddle(i)][component], sum / 8, 1e-9);
    }
}

TEST(BrickGroup, AveragingByAxesAveragesAsWithout)
{
    BrickModel m(TwoCubes());
    m.Displace(Quadratic);
    m.model.bAverageStresses = 1;
    m.model.AverageBrickStresses(m.group, 0);
    const std::vector<jxBrickStress> one = m.Stresses();
    m.model.bAverageStresses = 2;
    m.model.AverageBrickStresses(m.group, 0);
    for (std::size_t b = 0; b < 2; ++b)
        for (int k = 0; k < 9; ++k)
            for (int i = 0; i < 6; ++i)
                EXPECT_EQ(m.Stresses()[b].S[k][i], one[b].S[k][i]);
}

// Deliberate: an excluded brick keeps zeros, but its stresses count in the means of its nodes.
TEST(BrickGroup, ExcludedBrickKeepsZerosAndCountsInTheMeans)
{
    BrickModel m(TwoCubes());
    m.Displace(Quadratic);
    m.model.AverageBrickStresses(m.group, 0);
    const std::vector<jxBrickStress> all = m.Stresses();
    m.model.bricks[1].excluded = 1;
    m.model.AverageBrickStresses(m.group, 0);
    EXPECT_EQ(m.Stresses()[0].S[2][0], all[0].S[2][0]);
    ASSERT_EQ(m.Stresses()[1].id, 2);
    for (const double(&at)[6] : m.Stresses()[1].S)
        for (const double value : at)
            EXPECT_EQ(value, 0);
    for (const double value : m.Stresses()[1].f)
        EXPECT_EQ(value, 0);

    m.model.AllBrickStresses(m.group, 0);
    EXPECT_EQ(m.Stresses()[1].S[2][0], 0);
    EXPECT_NE(m.Stresses()[0].S[2][0], 0);
}
