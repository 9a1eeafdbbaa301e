// The search for the softest motion, on diagonal matrices and on springs in a row, whose motions are known.
#include "tools/softest_motion.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using qvx::double128;
using qvx::FindNegativeMotion;
using qvx::FindSoftestMotion;
using qvx::MotionSearch;
using qvx::Number;

template <class Real>
class SoftestMotion : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(SoftestMotion, NumberTypes);

/// Two points tied by a spring of 1, the ground by springs of g and h: A = (1 + g, -1; -1, 1 + h), among others that
/// stand alone with stiffness `alone`. Energies are work over the sum of d x^2.
template <Number Real>
struct TwoPoints
{
    TwoPoints(double groundAtFirst, double groundAtSecond, std::vector<double> others)
        : g(groundAtFirst), h(groundAtSecond), alone(std::move(others))
    {
        search.rootOfDiagonal = {std::sqrt(1 + g), std::sqrt(1 + h)};
        for (const double k : alone)
            search.rootOfDiagonal.push_back(std::sqrt(std::fabs(k)));
        search.solve = [this](std::vector<Real>& x) {
            ++nSolutions;
            const Real determinant = Real(g) + Real(h) + Real(g) * Real(h);
            const Real a = x[0], b = x[1];
            x[0] = (Real(1 + h) * a + b) / determinant;
            x[1] = (a + Real(1 + g) * b) / determinant;
            for (std::size_t i = 0; i < alone.size(); ++i)
                x[i + 2] = alone[i] == 0 ? Real(0) : x[i + 2] / Real(alone[i]);
            return nSolutions != failsAt;
        };
        search.energy = [this](const std::vector<Real>& x, const std::vector<Real>& force) {
            Real work(0), size(0);
            for (std::size_t i = 0; i < x.size(); ++i) {
                const Real root = search.rootOfDiagonal[i];
                work += x[i] * force[i];
                size += x[i] * x[i] * root * root;
            }
            return static_cast<double>(work / size);
        };
    }

    double g, h;
    std::vector<double> alone;
    MotionSearch<Real> search;
    int nSolutions = 0;
    int failsAt = 0;
};

}  // namespace

// One look is enough to know that nothing is soft.
TYPED_TEST(SoftestMotion, StiffStructureTakesOneSolution)
{
    TwoPoints<TypeParam> points(1, 1, {2, 3});

    const auto motion = FindSoftestMotion(points.search);

    EXPECT_EQ(points.nSolutions, 1);
    EXPECT_TRUE(motion.isFound);
    EXPECT_GT(motion.energy, 0.1);
}

// Both points move alike, x = (1, 1): work g + h over diagonals 2 + g + h.
TYPED_TEST(SoftestMotion, EnergyIsThatOfTheSoftestMotion)
{
    const double g = 0x1p-40, h = 0x1p-38;
    TwoPoints<TypeParam> points(g, h, {5, 1e6, 0.3});

    const auto motion = FindSoftestMotion(points.search);

    EXPECT_LE(points.nSolutions, 3);
    EXPECT_LE(motion.place, 1U);
    EXPECT_NEAR(motion.energy / ((g + h) / (2 + g + h)), 1, 1e-9);
}

// Sizes compare once scaled: the motion of the heavy point is the large one there though it is small in itself.
TYPED_TEST(SoftestMotion, PlaceIsThatOfTheLargestScaledPart)
{
    TwoPoints<TypeParam> points(1, 1, {1e-14, 1e8});
    points.search.rootOfDiagonal[2] = 1;  // as if others held it before: a diagonal of 1 whose pivot is 1e-14

    const auto motion = FindSoftestMotion(points.search);

    EXPECT_EQ(motion.place, 2U);
    EXPECT_NEAR(motion.energy / 1e-14, 1, 1e-6);
}

TYPED_TEST(SoftestMotion, EntryWithoutDiagonalTakesNoPart)
{
    TwoPoints<TypeParam> points(0x1p-45, 0x1p-45, {0, 4});

    const auto motion = FindSoftestMotion(points.search);

    EXPECT_LE(motion.place, 1U);
    EXPECT_NEAR(motion.energy / 0x1p-45, 1, 1e-6);
}

TYPED_TEST(SoftestMotion, NothingIsFoundWithoutASolution)
{
    TwoPoints<TypeParam> points(1, 1, {});
    points.failsAt = 1;

    EXPECT_FALSE(FindSoftestMotion(points.search).isFound);
    points.nSolutions = 0;
    EXPECT_FALSE(FindNegativeMotion(points.search).isFound);
}

TYPED_TEST(SoftestMotion, SolverThatFailsLaterLeavesWhatIsKnown)
{
    TwoPoints<TypeParam> points(0x1p-40, 0x1p-40, {5, 7, 2});
    points.failsAt = 2;

    const auto motion = FindSoftestMotion(points.search);

    EXPECT_TRUE(motion.isFound);
    EXPECT_LT(motion.energy, 1e-10);
}

// Eigenvalues of the scaled matrix below zero are -1 at the sixth entry, softer ones above zero all about.
TYPED_TEST(SoftestMotion, NegativeMotionIsFoundAmongSofterOnes)
{
    TwoPoints<TypeParam> points(1e-6, 1e-6, {1, 2, 3, -4, 5});

    const auto motion = FindNegativeMotion(points.search);

    EXPECT_TRUE(motion.isFound);
    EXPECT_EQ(motion.place, 5U);
}
