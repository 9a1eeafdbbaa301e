// The modes are those of the structure, whatever solver finds them; and each proves itself without a reference value.
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/findings.h"
#include "support/solver_types.h"
#include "support/vibrating_model.h"

namespace qvx::test {
namespace {

/// A structure that needs more than plain stiffness: a link, a diaphragm, or shells that drill freely.
struct Structure
{
    const char* name;
    void (*build)(VibratingModel&);
    /// Of ||K x - w M x|| / ||K x||: a constraint's penalty multiplies the rounding of the shape's own doubles.
    double residual;
};
inline void PrintTo(const Structure& structure, std::ostream* out)
{
    *out << structure.name;
}

/// Two storeys of four columns on a rectangular plan, Y up, beams around the floors; no two periods are equal.
void TwoStoreys(VibratingModel& m)
{
    m.model.sections[0].Iy = 70;
    for (int level = 0; level <= 2; ++level)
        for (const auto& [x, z] : {std::pair{0, 0}, std::pair{60, 0}, std::pair{60, 40}, std::pair{0, 40}}) {
            const int id = m.Node(x, 50 * level, z);
            if (level > 0)
                m.Member(id - 4, id);
            else
                m.Support(id, L"111111");
        }
    for (const int first : {5, 9})
        for (int i = 0; i < 4; ++i)
            m.Member(first + i, first + (i + 1) % 4);
    for (int node = 5; node <= 12; ++node)
        m.MassXYZ(node, 1 + 0.1 * node);
}

// Node 12 follows node 9 along X, and half of it along Z.
void FrameWithConstraints(VibratingModel& m)
{
    TwoStoreys(m);
    m.Constraint(9, kX, 1, 12, kX, 1);
    m.Constraint(9, kZ, 1, 12, kZ, 2);
}

void FrameWithDiaphragms(VibratingModel& m)
{
    TwoStoreys(m);
    m.model.bRigidDiaphragms = 1;
    m.model.diaphragms.push_back({.id = 1, .type = 1, .node = {5, 0, 0, 0}});
    m.model.diaphragms.push_back({.id = 2, .type = 1, .node = {9, 0, 0, 0}});
}

// A strip of shells folded twice: none lies in a global plane, and rotations about their normals have next to no stiffness.
void FoldedPlate(VibratingModel& m)
{
    m.model.thicknesses = {{.id = 1, .t = 0.8}};
    const double profile[][2] = {{0, 0}, {10, 6}, {21, 4}, {30, 11}};
    for (int row = 0; row <= 4; ++row)
        for (const auto& [x, y] : profile) {
            const int id = m.Node(x, y + 0.3 * row, 9.0 * row);
            if (row == 0)
                m.Support(id, L"111111");
            else
                m.MassXYZ(id, 0.02);
        }
    for (int row = 0; row < 4; ++row)
        for (int i = 1; i <= 3; ++i) {
            const int a = 4 * row + i;
            m.model.shell4s.push_back({.id = 3 * row + i, .node = {a, a + 1, a + 5, a + 4}});
        }
}

using Case = std::tuple<Structure, Solver>;

class ModesOfEverySolver : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        if (!IsInstalled(std::get<1>(GetParam())))
            GTEST_SKIP() << "the runtime of the routine pardiso is not installed";
    }
    static std::vector<jxEigenResult> Solve(const Solver& solver, const Structure& structure)
    {
        VibratingModel m(solver.type);
        Choose(m.host, solver);
        m.model.mergeTolerance = 1e-3;
        m.model.bInteractive = 0;
        structure.build(m);
        m.model.numberOfModes = 6;
        m.model.iterationVectors = 14;
        m.model.eigenTolerance = 1e-7;
        EXPECT_EQ(m.model.ExecuteFrequency(false), 1);
        EXPECT_TRUE(AreAllReliable(m.model));
        ExpectModes(m, structure.residual);
        return m.model.eigenResults;
    }
    /// Modes have unit modal mass, none in common, and solve the problem: no reference value is needed for that.
    static void ExpectModes(const VibratingModel& m, double residual)
    {
        const std::size_t n = m.model.eigenResults.size();
        for (std::size_t i = 1; i <= n; ++i) {
            EXPECT_LT(m.model.eigenResults[i - 1].errorMeasure, residual) << "mode " << i;
            for (std::size_t j = 1; j <= i; ++j) {
                double modalMass = 0;
                for (const jxNdLoad& mass : m.model.additionalMasses)
                    modalMass += m.Shape(i, mass.id, mass.dof) * mass.value * m.Shape(j, mass.id, mass.dof);
                EXPECT_NEAR(modalMass, i == j ? 1 : 0, 1e-8) << "modes " << i << ", " << j;
            }
        }
    }
};

// Quad has 30 digits, so what a double store rounds away of a penalty is not lost to it: the others must have kept it.
TEST_P(ModesOfEverySolver, AgreeWithThoseOfTheQuadSkyline)
{
    const auto& [structure, solver] = GetParam();
    const std::vector<jxEigenResult> reference = Solve({"Quad", QuadSkyline, 0}, structure);

    const std::vector<jxEigenResult> modes = Solve(solver, structure);

    ASSERT_EQ(modes.size(), reference.size());
    for (std::size_t i = 0; i < modes.size(); ++i)
        EXPECT_NEAR(modes[i].eigenvalue / reference[i].eigenvalue, 1, 1e-8) << "mode " << i + 1;
}

INSTANTIATE_TEST_SUITE_P(Structures, ModesOfEverySolver,
                         testing::Combine(testing::Values(Structure{"Constraints", FrameWithConstraints, 1e-3},
                                                          Structure{"Diaphragms", FrameWithDiaphragms, 1e-5},
                                                          Structure{"FoldedPlate", FoldedPlate, 1e-5}),
                                          testing::Values(AllSolvers()[0], AllSolvers()[2], AllSolvers()[3])),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + std::get<1>(test.param).name;
                         });

}  // namespace
}  // namespace qvx::test
