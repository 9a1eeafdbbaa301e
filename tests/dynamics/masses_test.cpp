// Masses from loads and from the user.
#include "dynamics/masses.h"

#include <gtest/gtest.h>

#include "support/vibrating_model.h"

namespace qvx::test {
namespace {

/// Two nodes, the first held; gravity along Y. massOnly runs leave the list and nothing else.
class Masses : public testing::TestWithParam<int>
{
protected:
    Masses()
    {
        m.Node(0, 0);
        m.Node(100, 0);
        m.Member(1, 2);
        m.Support(1, L"111111");
    }
    const std::vector<jxNdLoad>& Derived()
    {
        EXPECT_EQ(m.model.ExecuteFrequency(true), 1);
        return m.model.derivedMasses;
    }

    VibratingModel m{GetParam()};
};

TEST_P(Masses, WeightMovesAsMassInAllTranslations)
{
    m.NodalLoad(2, kY, -3 * kGravity);

    const std::vector<jxNdLoad>& masses = Derived();

    ASSERT_EQ(masses.size(), 3u);
    for (int dof = kX; dof <= kZ; ++dof) {
        const jxNdLoad& mass = masses[static_cast<std::size_t>(dof)];
        EXPECT_EQ(mass.id, 2);
        EXPECT_EQ(mass.dof, dof);
        EXPECT_NEAR(mass.value, 3, 1e-14);
    }
}

TEST_P(Masses, UpliftIsMassToo)
{
    m.NodalLoad(2, kY, 3 * kGravity);
    EXPECT_NEAR(Derived().at(0).value, 3, 1e-14);
}

TEST_P(Masses, HorizontalLoadIsNone)
{
    m.NodalLoad(2, kX, 3 * kGravity);
    EXPECT_TRUE(Derived().empty());
}

TEST_P(Masses, OfTheUserAreNotAmongTheDerived)
{
    m.MassXYZ(2, 7);
    EXPECT_TRUE(Derived().empty());
    EXPECT_EQ(m.model.additionalMasses.size(), 3u);
}

TEST_P(Masses, WithoutLoadsToMassesNothingIsDerived)
{
    m.model.bLoadsToMasses = 0;
    m.NodalLoad(2, kY, -3 * kGravity);
    EXPECT_TRUE(Derived().empty());
}

// The weight at a held node stands on its equation; the penalty term of a settlement is no weight.
TEST_P(Masses, SettlementOfASupportIsNoMass)
{
    m.SupportAt(1).value[kY] = -0.5;
    m.NodalLoad(1, kY, -kGravity);
    const std::vector<jxNdLoad>& masses = Derived();
    ASSERT_EQ(masses.size(), 3u);
    EXPECT_EQ(masses[0].id, 1);
    EXPECT_NEAR(masses[0].value, 1, 1e-14);
}

TEST_P(Masses, AreBookedByWhatBecomesOfThem)
{
    m.Node(200, 0);
    m.Member(2, 3);
    m.Support(3, L"200000");  // no equation along X
    m.NodalLoad(1, kY, -2 * kGravity);
    m.NodalLoad(2, kY, -3 * kGravity);
    m.NodalLoad(3, kY, -5 * kGravity);
    m.Mass(2, kX, -1);
    m.Mass(2, kOZ, 50);  // of a rotation: along no direction

    Derived();

    const jxDirectionMass(&mass)[3] = m.model.frequencyOutcome.mass;
    EXPECT_NEAR(mass[0].moving, 4, 1e-12);
    EXPECT_NEAR(mass[0].onSupports, 2, 1e-12);
    EXPECT_NEAR(mass[0].lost, 5, 1e-12);
    EXPECT_NEAR(mass[1].moving, 8, 1e-12);
    EXPECT_NEAR(mass[1].lost, 0, 0);
}

TEST_P(Masses, OfALoadFactorAreThoseOfTheCombination)
{
    m.NodalLoad(2, kY, -kGravity);
    m.AddCombination(L"MASS", {{L"LOAD", 0.5}});
    m.model.massLoadComb = 1;
    EXPECT_NEAR(Derived().at(0).value, 0.5, 1e-15);
}

INSTANTIATE_TEST_SUITE_P(Solvers, Masses, testing::Values(DoubleSkyline, QuadSkyline, DoubleSparse));

TEST(MassDofs, AreTheEquationsWithMass)
{
    EXPECT_EQ(CountMassDofs(std::vector<double>{0, 1, 0, 2}), 2);
}

}  // namespace
}  // namespace qvx::test
