#include "tools/section_constants.h"

#include <cmath>

#include <gtest/gtest.h>

#include "support/round_off.h"

namespace qvx::test {
namespace {

// Saint-Venant torsion of a rectangle, a >= b (Timoshenko & Goodier, Theory of Elasticity, 3rd ed. (1970), art. 109):
// J = a b^3 / 3 (1 - 192 b / (pi^5 a) sum over odd n of tanh(n pi a / 2b) / n^5).
double SeriesTorsion(double a, double b)
{
    const double pi = std::acos(-1);
    double sum = 0;
    for (int n = 1; n < 40; n += 2)
        sum += std::tanh(n * pi * a / (2 * b)) / std::pow(n, 5);
    return a * b * b * b / 3 * (1 - 192 * b / (std::pow(pi, 5) * a) * sum);
}

TEST(RectangleTorsion, FollowsTheSeriesWithinHalfAPercent)
{
    for (const double ratio : {1.0, 1.2, 1.5, 2.0, 3.0, 5.0, 10.0, 100.0}) {
        const double exact = SeriesTorsion(ratio * 7, 7);
        EXPECT_WITHIN(calc_rect_J(ratio * 7, 7), exact, 0.005 * exact) << ratio;
    }
}

TEST(RectangleTorsion, DoesNotDependOnTheOrderOfTheSides)
{
    EXPECT_EQ(calc_rect_J(0.4, 0.6), calc_rect_J(0.6, 0.4));
}

TEST(RectangleTorsion, IsZeroWithoutTwoPositiveSides)
{
    EXPECT_EQ(calc_rect_J(0, 5), 0);
    EXPECT_EQ(calc_rect_J(5, 0), 0);
    EXPECT_EQ(calc_rect_J(-1, 5), 0);
    EXPECT_EQ(calc_rect_J(0, 0), 0);
}

}  // namespace
}  // namespace qvx::test
