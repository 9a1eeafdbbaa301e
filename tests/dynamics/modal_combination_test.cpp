// Combination of modal results over modes and directions, and their addition to the combinations of the user.
#include <cmath>

#include <gtest/gtest.h>

#include "support/static_model.h"
#include "tools/modal_rules.h"

using qvx::test::StaticModel;

namespace {

/// A cantilever whose modes are given: as tip forces of the inertia cases of two modes in X and Y. The static run
/// then solves them like any other case, so that every family of results is known to be linear in them.
class ModalCombination : public testing::Test
{
protected:
    ModalCombination()
    {
        m.Node(0, 0);
        m.Node(0, 100);
        m.Member(1, 2);
        m.Support(1, L"111111");
        m.NodalLoad(2, kY, -7);
        m.model.spectrumFactor[0] = 1;
        m.model.spectrumFactor[1] = 0;
        m.model.spectrumFactor[2] = 0;
    }
    /// @param forces  tip force along X of each mode; eigenvalues are the squares of 1, 1.25, ...
    void SetModes(const std::vector<double>& forces, const std::vector<double>& participation = {})
    {
        for (std::size_t mode = 0; mode < forces.size(); ++mode) {
            jxResponseSpectrumResult result;
            const double omega = 1 + 0.25 * static_cast<double>(mode);
            result.eigenvalue = omega * omega;
            for (int direction = 0; direction < 3; ++direction) {
                result.forces[direction] = {{1, {}}, {2, {}}};
                result.forces[direction][1].value[direction == 0 ? kX : kY] = forces[mode];
                result.participation[direction] = mode < participation.size() ? participation[mode] : 0.5;
            }
            m.model.spectrumResults.push_back(result);
        }
        for (const int dof : {kX, kY})
            m.model.derivedMasses.push_back({.id = 2, .dof = dof, .value = 1});
        m.model.ConvertInertiaForces();
    }
    double ModalTip(int dof) const { return StaticModel::ValueOf(m.model.modalResult.displacements, 2, dof); }
    /// Tip displacement per force along X.
    double Flexibility() const { return m.Displacement(2, kX, 1) / 3; }

    StaticModel m;
};

TEST_F(ModalCombination, RulesAreThoseOfTheModel)
{
    SetModes({3, -4});
    const double rho = qvx::ModalCorrelation(1, 1.25, 0.05);
    const double expected[] = {std::sqrt(25 - 24 * rho), 5, 7, 0};
    for (const int rule : {0, 1, 2, 3}) {
        m.model.modalCombination = rule;
        ASSERT_EQ(m.model.ExecuteStatic(), 1);
        EXPECT_NEAR(ModalTip(kX), Flexibility() * expected[rule], 1e-12) << "rule " << rule;
    }
}

// |X| + 0.3 |Z|: the directions are added as they are, without a root over them.
TEST_F(ModalCombination, DirectionsAreAddedWithTheirFactors)
{
    m.model.spectrumFactor[2] = 0.3;
    m.model.modalCombination = 1;
    SetModes({3, -4});

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const double perForceY = m.Displacement(2, kY, 0) / -7;
    EXPECT_NEAR(ModalTip(kX), Flexibility() * 5, 1e-12);
    EXPECT_NEAR(ModalTip(kY), 0.3 * perForceY * 5, 1e-12);  // the cases of direction Z load the tip along Y here
}

TEST_F(ModalCombination, CombinationWithASpectrumFactorCarriesStaticPlusModal)
{
    SetModes({3, -4});
    m.model.modalCombination = 1;
    m.AddCombination(L"PLUS", {{L"LOAD", 1.0}});
    m.model.loadCombs.back().rsFactor = 1;
    m.AddCombination(L"MINUS", {{L"LOAD", 1.0}});
    m.model.loadCombs.back().rsFactor = -2;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const std::size_t plus = 3, minus = 4;
    EXPECT_NEAR(m.Displacement(2, kX, plus), Flexibility() * 5, 1e-12);
    EXPECT_NEAR(m.Displacement(2, kY, plus), m.Displacement(2, kY, 0), 1e-15);
    EXPECT_NEAR(m.Displacement(2, kX, minus), -2 * Flexibility() * 5, 1e-12);
    EXPECT_NEAR(m.Reaction(1, kX, plus), 5, 1e-9);  // a combined value has no sign of its own
    EXPECT_NEAR(std::fabs(m.EndForce(1, 0, 1, plus)), 5, 1e-9);
    // The shear of the cantilever is the tip force at every station, its moment grows towards the base.
    for (const jxVMD& station : m.Curve(1, plus)) {
        EXPECT_NEAR(station.Fy, 5, 1e-9);
        EXPECT_NEAR(station.Mz, 5 * 100 * (1 - station.x), 1e-6);
        EXPECT_NEAR(station.Fx, -7, 1e-9);
    }
}

TEST_F(ModalCombination, InertiaCombinationGetsNothingAdded)
{
    SetModes({3, -4});
    m.model.loadCombs[1].rsFactor = 1;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_NEAR(m.Reaction(1, kX, 1), -3, 1e-9);
}

TEST_F(ModalCombination, SignIsThatOfTheModeWithTheLargestParticipation)
{
    SetModes({3, -4}, {0.2, 0.7});
    m.model.bSignedModalResults = 1;
    for (const int rule : {0, 1, 2}) {
        m.model.modalCombination = rule;
        ASSERT_EQ(m.model.ExecuteStatic(), 1);
        EXPECT_LT(ModalTip(kX), 0) << "rule " << rule;
    }
    m.model.bSignedModalResults = 0;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_GT(ModalTip(kX), 0);
}

TEST_F(ModalCombination, OfEqualParticipationsTheFirstGivesTheSign)
{
    SetModes({3, -4}, {0.4, 0.4});
    m.model.bSignedModalResults = 1;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_GT(ModalTip(kX), 0);
}

TEST_F(ModalCombination, ParticipationIsToldForTheDirectionsThatTakePart)
{
    SetModes({3, -4}, {0.5, 0.4});  // exactly 0.9 is enough
    m.model.spectrumFactor[1] = 1;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    EXPECT_TRUE(
        m.window.HasLine(L"Mass Participation Factor in X direction = 0.900 (must be greater than 0.90)", L"OK"));
    EXPECT_TRUE(
        m.window.HasLine(L"Mass Participation Factor in Y direction = 0.900 (must be greater than 0.90)", L"OK"));
    for (const auto& line : m.window.lines)
        EXPECT_EQ(line.text.find(L"Mass Participation Factor in Z"), std::wstring::npos);
}

TEST_F(ModalCombination, SmallParticipationIsAWarning)
{
    SetModes({3}, {0.8994});
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_TRUE(
        m.window.HasLine(L"Mass Participation Factor in X direction = 0.899 (must be greater than 0.90)", L"WARNING"));
}

TEST_F(ModalCombination, WithoutSpectrumResultsNothingIsCombined)
{
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_FALSE(m.model.GetResponseSpectrumResults());
    EXPECT_TRUE(m.model.AddResponseSpectrumResults());
    EXPECT_TRUE(m.model.modalResult.displacements.empty());
}

TEST_F(ModalCombination, ASecondCallKeepsTheCombinedResult)
{
    SetModes({3, -4});
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    const std::size_t lines = m.window.lines.size();
    EXPECT_TRUE(m.model.GetResponseSpectrumResults());
    EXPECT_EQ(m.window.lines.size(), lines);
}

// Spectrum results without their inertia combinations: nothing to combine, and nothing is added.
TEST_F(ModalCombination, MissingInertiaCombinationsGiveAModalResultOfZero)
{
    SetModes({3, -4});
    m.model.loadCombs.resize(1);
    m.model.loadCombs[0].rsFactor = 1;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_EQ(ModalTip(kX), 0);
    EXPECT_EQ(m.Displacement(2, kX, 0), 0);
}

TEST_F(ModalCombination, MissingModalRecordIsAFault)
{
    SetModes({3});
    m.model.loadCombs[0].rsFactor = 1;
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    m.model.modalResult.supportReactions.clear();
    try {
        m.model.AddResponseSpectrumResults();
        FAIL() << "a modal result without reactions was added";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"error finding nodal result 1");
    }
}

// Two springs of one node have two reactions: each gets the modes of its own.
TEST_F(ModalCombination, SpringsOfOneNodeKeepTheirOwnReactions)
{
    m.Spring(m.model.nodalSprings, 2, {2, 0, 0, 0, 0, 0});
    m.Spring(m.model.nodalSprings, 2, {6, 0, 0, 0, 0, 0});
    SetModes({3, -4});
    m.model.modalCombination = 2;

    ASSERT_EQ(m.model.ExecuteStatic(), 1);

    const std::vector<jxResult6Val>& reactions = m.model.modalResult.nodalSpringReactions;
    ASSERT_EQ(reactions.size(), 2u);
    EXPECT_NEAR(reactions[1].value[kX], 3 * reactions[0].value[kX], 1e-9);
}

}  // namespace
