// Mass that the modes move, and base shears.
#include "dynamics/participation.h"

#include <gtest/gtest.h>

#include "support/vibrating_model.h"

namespace qvx::test {
namespace {

/// Two masses on separate columns, 1 and 3: the first mode moves the soft one alone.
class Participation : public testing::Test
{
protected:
    Participation()
    {
        m.model.modelType = Frame2D;
        m.model.bShearDeformation = 0;
        for (int i = 0; i < 2; ++i) {
            const int base = m.Node(100.0 * i, 0), top = m.Node(100.0 * i, 100);
            m.Member(base, top);
            m.Support(base, L"222222");
            m.Support(top, L"022222");
            m.Mass(top, kX, i == 0 ? 3 : 1);
        }
        m.model.numberOfModes = 2;
    }

    VibratingModel m;
};

TEST_F(Participation, IsTheShareOfTheMass)
{
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    const auto shares = ModalParticipation(m.model);
    ASSERT_EQ(shares.size(), 2u);
    EXPECT_NEAR(shares[0][0], 0.75, 1e-12);
    EXPECT_NEAR(shares[1][0], 0.25, 1e-12);
    EXPECT_EQ(shares[0][1], 0);
}

TEST_F(Participation, IsThatOfTheSpectrumResult)
{
    m.model.bPerformSpectrum = 1;
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    const auto shares = ModalParticipation(m.model);
    for (std::size_t mode = 0; mode < 2; ++mode)
        EXPECT_NEAR(shares[mode][0], m.model.spectrumResults[mode].participation[0], 1e-9);
}

TEST_F(Participation, BaseShearIsCombinedByTheRuleAndTakesTheFactor)
{
    m.model.spectrumFactor[0] = 0.5;
    m.model.modalCombination = 1;
    m.model.spectra[0].points = {{0, 1}, {1000, 1}};
    ASSERT_EQ(m.RunSpectrum(), 1);
    // Each mode shakes its own mass with 1 g.
    EXPECT_NEAR(BaseShear(m.model, 0), 0.5 * kGravity * std::sqrt(9.0 + 1), 1e-6);
    EXPECT_EQ(BaseShear(m.model, 1), 0);
}

TEST_F(Participation, WithoutModesThereIsNone)
{
    EXPECT_TRUE(ModalParticipation(m.model).empty());
    EXPECT_EQ(BaseShear(m.model, 0), 0);
}

}  // namespace
}  // namespace qvx::test
