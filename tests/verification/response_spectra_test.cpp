// Published problems of response spectrum analysis, each with its source and target.
#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "dynamics/participation.h"
#include "support/vibrating_model.h"
#include "tools/modal_rules.h"

namespace {

using namespace qvx::test;
using qvx::kGravity;

/// Largest magnitude of the moment at an end of a member in the modal result.
double EndMoment(const CjxStruct& model, int member, int end)
{
    for (const jxBmEndVMD& forces : model.modalResult.beamEndForces)
        if (forces.id == member)
            return std::fabs(end == 0 ? forces.start.Mz : forces.end.Mz);
    return std::nan("");
}

/// Chopra, Dynamics of Structures, example 13.11: two storeys, axially rigid, no shear, masses at mid-span of the beams.
/// kip, inch. The spectrum is given with g = 386.4 in/s^2.
class ChoprasFrame : public testing::Test
{
protected:
    ChoprasFrame()
    {
        m.model.modelType = Frame2D;
        m.model.bShearDeformation = 0;
        m.model.materials[0].E = 3000;
        const double rigid = 1e5;
        m.model.sections[0] = {.id = 1, .A = rigid, .Iz = 2000, .Iy = 1000, .J = 1};
        const int light = m.Section({.A = rigid, .Iz = 1000, .Iy = 1000, .J = 1});
        const double x[] = {-120, -120, -120, 120, 120, 120, 0, 0}, y[] = {0, 120, 240, 0, 120, 240, 120, 240};
        for (int i = 0; i < 8; ++i)
            m.Node(x[i], y[i]);
        m.Member(1, 2);
        m.Member(2, 3, light);
        m.Member(4, 5);
        m.Member(5, 6, light);
        m.Member(2, 7);
        m.Member(7, 5);
        m.Member(3, 8, light);
        m.Member(8, 6, light);
        m.Support(1, L"111111");
        m.Support(4, L"111111");
        m.Mass(7, kX, 1.0364);
        m.Mass(8, kX, 0.5182);
        m.model.numberOfModes = 2;
        m.model.spectra[0].points = {{.03, .5},     {.125, 1.355}, {.5868, 1.355}, {.66, 1.355},
                                     {1.562, .576}, {4, .2185},    {10, .037}};
        for (auto& point : m.model.spectra[0].points)
            point.second *= 386.4 / kGravity;
        m.model.spectrumFactor[2] = 0;
    }
    double Floor(int node) const { return StaticModel::ValueOf(m.model.modalResult.displacements, node, kX); }

    VibratingModel m;
};

constexpr double kPerMille = 1e-3;

TEST_F(ChoprasFrame, SquareRootOfSumOfSquares)
{
    m.model.modalCombination = 1;
    ASSERT_EQ(m.RunSpectrum(), 1);

    EXPECT_NEAR(1 / m.Hertz(1), 1.56213, 1.56213 * kPerMille);
    EXPECT_NEAR(1 / m.Hertz(2), 0.58682, 0.58682 * kPerMille);
    EXPECT_NEAR(Floor(7), 7.576, 7.576 * kPerMille);
    EXPECT_NEAR(Floor(8), 18.838, 18.838 * kPerMille);
    const struct
    {
        int member, end;
        double moment;
    } targets[] = {{1, 0, 12636}, {1, 1, 6793}, {2, 0, 6023}, {2, 1, 5222}, {5, 0, 9810}, {7, 0, 5222}};
    for (const auto& target : targets)
        EXPECT_NEAR(EndMoment(m.model, target.member, target.end), target.moment, target.moment * kPerMille)
            << "member " << target.member;
}

TEST_F(ChoprasFrame, AbsoluteSum)
{
    m.model.modalCombination = 2;
    ASSERT_EQ(m.RunSpectrum(), 1);
    EXPECT_NEAR(Floor(7), 9.416, 9.416 * kPerMille);
    EXPECT_NEAR(Floor(8), 20.430, 20.430 * kPerMille);
}

TEST_F(ChoprasFrame, CompleteQuadraticCombination)
{
    ASSERT_EQ(m.RunSpectrum(), 1);
    EXPECT_NEAR(qvx::ModalCorrelation(m.Omega(1), m.Omega(2), 0.05), 0.008505, 5e-6);
    EXPECT_NEAR(Floor(7), 7.593, 7.593 * kPerMille);
    EXPECT_NEAR(Floor(8), 18.824, 18.824 * kPerMille);
}

// Two modes of two masses: all of the mass moves, and the base shear is that of the columns.
TEST_F(ChoprasFrame, AllMassTakesPartAndTheShearsBalance)
{
    m.model.modalCombination = 1;
    ASSERT_EQ(m.RunSpectrum(), 1);
    EXPECT_NEAR(m.model.spectrumResults[0].participation[0] + m.model.spectrumResults[1].participation[0], 1, 1e-6);
    double first = 0;  // of the first mode: reactions of its inertia combination
    for (const jxResult6Val& reaction : m.Result(1).supportReactions)
        first += reaction.value[kX];
    double forces = 0;
    for (const jxResult6Val& force : m.model.spectrumResults[0].forces[0])
        forces += force.value[kX];
    EXPECT_NEAR(first / -forces, 1, 1e-4);
    EXPECT_GT(qvx::BaseShear(m.model, 0), std::fabs(forces));
}

/// One mass on a cantilever of stiffness k: u = Sa g / w^2, force k u.
class OneMass : public testing::TestWithParam<std::pair<double, double>>
{
};

// The period is set at, between and beyond the points of the spectrum, whose value is flat beyond its ends.
TEST_P(OneMass, FollowsTheSpectrum)
{
    const auto [period, acceleration] = GetParam();
    VibratingModel m;
    m.model.modelType = Frame2D;
    m.model.bShearDeformation = 0;
    m.Node(0, 0);
    m.Node(0, 100);
    m.Member(1, 2);
    m.Support(1, L"222222");
    m.Support(2, L"020000");
    const double stiffness = 3 * 1000.0 * 100 / 1e6;
    const double omega = qvx::kTwoPi / period;
    m.Mass(2, kX, stiffness / (omega * omega));
    m.model.spectra[0].points = {{0.5, 0.4}, {1, 0.8}, {2, 0.2}};
    m.model.spectrumFactor[2] = 0;

    ASSERT_EQ(m.RunSpectrum(), 1);

    const double u = acceleration * kGravity / (omega * omega);
    EXPECT_NEAR(m.model.spectrumResults[0].participation[0], 1, 1e-12);
    EXPECT_NEAR(StaticModel::ValueOf(m.model.modalResult.displacements, 2, kX) / u, 1, 1e-9);
    EXPECT_NEAR(std::fabs(StaticModel::ValueOf(m.model.spectrumResults[0].forces[0], 2, kX)) / (stiffness * u), 1,
                1e-9);
    EXPECT_NEAR(qvx::BaseShear(m.model, 0) / (stiffness * u), 1, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Periods, OneMass,
                         testing::Values(std::pair{0.5, 0.4}, std::pair{2.0, 0.2}, std::pair{1.5, 0.5},
                                         std::pair{0.05, 0.4}, std::pair{7.0, 0.2}));

// A direction without factor: zeros, no message. One without mass: its participation is 0.
TEST(Directions, WithoutFactorOrMassGiveZeros)
{
    VibratingModel m;
    m.model.modelType = Frame2D;
    m.Node(0, 0);
    m.Node(0, 100);
    m.Member(1, 2);
    m.Support(1, L"222222");
    m.Mass(2, kX, 1);
    for (jxSpectrum& spectrum : m.model.spectra)
        spectrum.points = {{0, 1}, {10, 1}};
    m.model.spectrumFactor[1] = 1;
    m.model.spectrumFactor[2] = 0;

    ASSERT_EQ(m.RunSpectrum(), 1);

    const jxResponseSpectrumResult& mode = m.model.spectrumResults[0];
    EXPECT_EQ(mode.participation[1], 0);
    EXPECT_EQ(mode.displacements[2].size(), 2u);
    EXPECT_EQ(mode.displacements[2][1].value[kX], 0);
    EXPECT_TRUE(std::none_of(m.window.lines.begin(), m.window.lines.end(),
                             [](const auto& line) { return line.text.find(L"in Z direction") != std::wstring::npos; }));
}

}  // namespace
