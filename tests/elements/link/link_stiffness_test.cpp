#include "elements/link/link_stiffness.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "support/round_off.h"
#include "tools/geometry.h"

namespace {

using namespace qvx;
using namespace qvx::test;

template <class Real>
class LinkStiffness : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(LinkStiffness, NumberTypes);

constexpr LinkProperties kLink{.E = 3e4, .A = 12, .I = 300, .factor = 1e4, .L = 120};

template <class Real>
double LargestForce(const Matrix12<Real>& k, const std::array<double, 12>& u)
{
    double largest = 0;
    for (int i = 0; i < 12; ++i) {
        Real sum(0);
        for (int j = 0; j < 12; ++j)
            sum += k(i, j) * Real(u[static_cast<std::size_t>(j)]);
        largest = std::max(largest, std::fabs(static_cast<double>(sum)));
    }
    return largest;
}

// A link holds the shape of the floor in its plane (x, z and the rotation about y) and leaves all else free.
TYPED_TEST(LinkStiffness, ARigidMotionInThePlaneAndAnyMotionOutOfItCostNothing)
{
    using Real = TypeParam;
    const auto k = LocalStiffness(LinkParts<Real>(kLink));
    const double L = kLink.L;
    const double scale = 12 * kLink.E * kLink.I * kLink.factor / L;
    const std::array<double, 12> motions[] = {
        {1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0},  {0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0},
        {0, 0, 0, 0, 1, 0, 0, 0, -L, 0, 1, 0},  // about y: x turns towards -z
        {0, 1, 0, 0, 0, 0, 0, -3, 0, 0, 0, 0}, {0, 0, 0, 2, 0, 0, 0, 0, 0, -1, 0, 0},
        {0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 5},
    };
    for (const auto& u : motions)
        EXPECT_LE(LargestForce(k, u), static_cast<double>(RoundOff(Real(scale), 20)));
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < i; ++j)
            EXPECT_EQ(static_cast<double>(k(i, j)), static_cast<double>(k(j, i)));
}

// Held at its start, a bar gives E A / L under axial force and 3 E I / L^3 under a transverse force at its tip.
TYPED_TEST(LinkStiffness, ACantileverHasTheStiffnessOfItsClosedForm)
{
    using Real = TypeParam;
    const auto k = LocalStiffness(LinkParts<Real>(kLink));
    const Real L = kLink.L;
    const Real EI = Real(kLink.E) * Real(kLink.I) * Real(kLink.factor);
    const Real tip = k(8, 8) - k(8, 10) * k(10, 8) / k(10, 10);
    const Real bending = Real(3) * EI / (L * L * L);
    const Real axial = Real(kLink.E) * Real(kLink.A) * Real(kLink.factor) / L;
    EXPECT_WITHIN(tip, bending, RoundOff(bending, 20));
    EXPECT_WITHIN(k(6, 6), axial, RoundOff(axial, 4));
    EXPECT_WITHIN(k(6, 0), -axial, RoundOff(axial, 4));
}

// x along the link, y across the floor, z in it; a link out of level by the merge tolerance keeps unit axes.
TEST(LinkAxesOf, RunAlongTheLinkAndAcrossTheFloor)
{
    double c[3][3];
    LinkAxes(c, {1, 2, 3}, {4, 2, 7}, {0, 1, 0});
    const double expected[3][3] = {{0.6, 0, 0.8}, {0, 1, 0}, {-0.8, 0, 0.6}};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(c[i][k], expected[i][k], 1e-15);

    LinkAxes(c, {0, 0, 0}, {100, 0.01, 0}, {0, 1, 0});
    for (const auto& row : c)
        EXPECT_NEAR(row[0] * row[0] + row[1] * row[1] + row[2] * row[2], 1, 1e-15);
    EXPECT_EQ(c[1][1], 1);
}

// A link along X in an X-Y floor has z against Y, so its bending acts along Y although the link lies along an axis.
TEST(LinkAxesOf, OfALinkAlongAnAxisAreTurnedAllTheSame)
{
    double c[3][3];
    LinkAxes(c, {0, 0, 5}, {8, 0, 5}, {0, 0, 1});
    const double expected[3][3] = {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(c[i][k], expected[i][k]);
}

}  // namespace
