#include "tools/principal_stress.h"

#include <cmath>
#include <limits>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/recording_host.h"

using qvx::PrincipalStresses;

// Physics: S v = S_k v for each principal direction; directions are orthonormal, stresses descend.
TEST(PrincipalStress, DirectionsDiagonalizeTheStress)
{
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> random(-100, 100);
    for (int trial = 0; trial < 1000; ++trial) {
        double s[6];
        for (double& value : s)
            value = random(engine);
        if (trial % 5 == 0)
            s[3] = s[4] = 0;
        const PrincipalStresses p = qvx::PrincipalStressesOf(s);
        const double a[3][3] = {{s[0], s[3], s[5]}, {s[3], s[1], s[4]}, {s[5], s[4], s[2]}};
        ASSERT_GE(p.S[0], p.S[1]);
        ASSERT_GE(p.S[1], p.S[2]);
        for (int k = 0; k < 3; ++k)
            for (int i = 0; i < 3; ++i) {
                double product = 0, dot = 0;
                for (int j = 0; j < 3; ++j) {
                    product += a[i][j] * p.v[k][j];
                    dot += p.v[k][j] * p.v[i][j];
                }
                ASSERT_NEAR(product, p.S[k] * p.v[k][i], 1e-11);
                ASSERT_NEAR(dot, i == k ? 1 : 0, 1e-14);
            }
    }
}

// Pure shear: +-tau at 45 degrees; hydrostatic pressure: any axes, three equal stresses.
TEST(PrincipalStress, TextbookStates)
{
    const PrincipalStresses shear = qvx::PrincipalStressesOf({0, 0, 0, 7, 0, 0});
    EXPECT_DOUBLE_EQ(shear.S[0], 7);
    EXPECT_EQ(shear.S[1], 0);
    EXPECT_DOUBLE_EQ(shear.S[2], -7);
    EXPECT_DOUBLE_EQ(std::fabs(shear.v[0][0]), std::sqrt(0.5));
    EXPECT_DOUBLE_EQ(shear.v[0][0], shear.v[0][1]);
    const PrincipalStresses pressure = qvx::PrincipalStressesOf({-5, -5, -5, 0, 0, 0});
    EXPECT_EQ(pressure.S[0], -5);
    EXPECT_EQ(pressure.S[2], -5);
    const PrincipalStresses sorted = qvx::PrincipalStressesOf({1, 3, 2, 0, 0, 0});
    EXPECT_EQ(sorted.S[0], 3);
    EXPECT_EQ(sorted.v[0][1], 1);
    EXPECT_EQ(sorted.S[2], 1);
}

// Published: von Mises of uniaxial tension is the tension itself, of pure shear sqrt(3) tau, of pressure 0.
TEST(PrincipalStress, VonMisesMeasuresTheDeviator)
{
    EXPECT_DOUBLE_EQ(qvx::VonMisesStress({8, 0, 0, 0, 0, 0}), 8);
    EXPECT_DOUBLE_EQ(qvx::VonMisesStress({0, 0, 0, 0, 2, 0}), 2 * std::sqrt(3));
    EXPECT_EQ(qvx::VonMisesStress({4, 4, 4, 0, 0, 0}), 0);
}

// Numbers far apart converge too; one that is not a number never does.
TEST(PrincipalStress, GivesUpAfterFiftySweeps)
{
    qvx::test::RecordingHost host;
    const PrincipalStresses p = qvx::PrincipalStressesOf({1e200, 1, -1e-200, 1e-150, 1e100, 3});
    EXPECT_EQ(p.S[0], 1e200);
    EXPECT_TRUE(host.boxes.empty());
    qvx::PrincipalStressesOf({1, 2, 3, std::numeric_limits<double>::quiet_NaN(), 0, 0});
    EXPECT_THAT(host.BoxTexts(), testing::ElementsAre(L"Too many iterations in routine jacobi."));
}
