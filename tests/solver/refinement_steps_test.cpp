// When the refinement of a solution goes on and when it stops: one equation u = 1, and a factor that gives q too little.
#include "solver/refinement.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using qvx::double128;
using Vector = std::vector<double128>;

/// K = 1, f = 1. Every solution by the factor has the share `gives` of what it should have; each step of the refinement
/// leaves 1 - gives of the error before, and its energy shrinks by (1 - gives)^2.
struct Course
{
    explicit Course(std::function<double(int step)> gives) : u{0, gives(0)}
    {
        qvx::Refine(
            {}, {0, 1}, u, [](const Vector& v, Vector& product) { product[1] += v[1]; },
            [&](Vector& v) {
                v[1] = v[1] * double128(gives(++nSolutions));
                return true;
            });
    }

    Vector u;
    int nSolutions = 0;
    double Error() const { return static_cast<double>(u[1] - double128(1)); }
};

TEST(Refinement, GoesOnToTheTwelfthDigit)
{
    const Course course([](int) { return 0.998; });

    // Energies shrink by 4e-6: 4e-6, 1.6e-11, 6.4e-17, 2.6e-22, 1e-27; the first below 1e-24 is the last one.
    EXPECT_EQ(course.nSolutions, 5);
    EXPECT_NEAR(course.Error(), -std::pow(0.002, 6), 1e-20);
}

TEST(Refinement, CorrectionThatGrowsIsNotTaken)
{
    const Course course([](int step) { return step == 0 ? 0.5 : 3.0; });  // 1.5 where 0.5 is missing

    EXPECT_EQ(course.nSolutions, 1);
    EXPECT_EQ(course.Error(), -0.5);
}

TEST(Refinement, CorrectionThatGrowsBehindGoodOnesLeavesThem)
{
    const Course course([](int step) { return step < 2 ? 0.9 : 40.0; });

    EXPECT_EQ(course.nSolutions, 2);
    EXPECT_NEAR(course.Error(), -0.01, 1e-15);
}

// A quarter of the energy is half of the correction.
TEST(Refinement, CorrectionsMustHalve)
{
    const Course slow([](int) { return 1 - std::sqrt(0.26); });
    EXPECT_EQ(slow.nSolutions, 1);
    EXPECT_NEAR(slow.Error(), -std::sqrt(0.26), 1e-15);

    const Course fast([](int) { return 1 - std::sqrt(0.24); });
    EXPECT_EQ(fast.nSolutions, 20) << "the most there are";
    EXPECT_NEAR(fast.Error() / -std::pow(0.24, 10.5), 1, 1e-9);
}

TEST(Refinement, CorrectionThatIsNoNumberIsNotTaken)
{
    const Course course([](int step) { return step == 0 ? 0.5 : std::nan(""); });

    EXPECT_EQ(course.Error(), -0.5);
}

TEST(Refinement, EndsWithASolverThatFails)
{
    Vector u{0, 0.9};
    int nSolutions = 0;
    qvx::Refine(
        {}, {0, 1}, u, [](const Vector& v, Vector& product) { product[1] += v[1]; },
        [&](Vector&) { return ++nSolutions < 2; });

    EXPECT_EQ(nSolutions, 2);
    EXPECT_EQ(static_cast<double>(u[1]), static_cast<double>(double128(0.9) + (double128(1) - double128(0.9))));
}

// A rounded term stands for two of the matrix, (row, column) and (column, row); on the diagonal for one.
TEST(Refinement, RoundedTermsMultiplyOnBothSidesOfTheDiagonal)
{
    Vector product(4);
    product[1] = 100;

    qvx::AddRoundedProduct({{1, 3, 0.5}, {2, 2, 0.25}}, {0, 2, 4, 8}, product);

    EXPECT_EQ(static_cast<double>(product[1]), 104);
    EXPECT_EQ(static_cast<double>(product[2]), 1);
    EXPECT_EQ(static_cast<double>(product[3]), 1);
}

}  // namespace
