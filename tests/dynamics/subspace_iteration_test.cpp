// Subspace iteration on small matrices with known eigenvalues.
#include "dynamics/subspace_iteration.h"

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "dense_eigen_system.h"

using testing::ElementsAre;

namespace qvx::test {
namespace {

using Line = std::pair<std::wstring, std::wstring>;

template <class Real>
class SubspaceIteration : public testing::Test
{
protected:
    SubspaceResult<Real> Solve(DenseEigenSystem& system, const SubspaceSettings& settings)
    {
        lines.clear();
        iterations.clear();
        const SubspaceVoice voice{
            .list = [this](const wchar_t* text, const wchar_t* status) { lines.emplace_back(text, status); },
            .status = [this](const wchar_t* text) { iterations.emplace_back(text); },
            .poll = [] {}};
        return IterateSubspace<Real>(system, system.Diagonal<Real>(), system.Masses<Real>(), settings, voice);
    }
    /// Every mode solves the problem, and all have unit modal mass and none in common.
    void ExpectModes(const DenseEigenSystem& system, const SubspaceResult<Real>& result, double tolerance) const
    {
        for (std::size_t i = 0; i < result.shapes.size(); ++i) {
            EXPECT_LT(system.Residual(result.shapes[i], result.eigenvalues[i + 1]), tolerance) << "mode " << i + 1;
            EXPECT_NEAR(result.errorMeasures[i + 1], system.Residual(result.shapes[i], result.eigenvalues[i + 1]),
                        1e-12);
            for (std::size_t j = 0; j <= i; ++j)
                EXPECT_NEAR(system.ModalMass(result.shapes[i], result.shapes[j]), i == j ? 1 : 0, 1e-9);
        }
    }

    std::vector<Line> lines;
    std::vector<std::wstring> iterations;
};

using Reals = testing::Types<double, double128>;
TYPED_TEST_SUITE(SubspaceIteration, Reals);

/// Bathe, Finite Element Procedures (1996): the beam-like pair of order four.
DenseEigenSystem BathesPair(const std::vector<double>& masses)
{
    return {{{5, -4, 1, 0}, {-4, 6, -4, 1}, {1, -4, 6, -4}, {0, 1, -4, 5}}, masses};
}

TYPED_TEST(SubspaceIteration, BathesPairOfOrderFour)
{
    DenseEigenSystem system = BathesPair({2, 2, 1, 1});

    const auto result = this->Solve(system, {.modes = 4, .vectors = 4, .tolerance = 1e-8});

    const double published[] = {0.0965373, 1.3914655, 4.3735495, 10.6384477};  // some digits cut, some rounded
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(static_cast<double>(result.eigenvalues[i + 1]), published[i], 1e-7);
    EXPECT_TRUE(result.isConverged);
    this->ExpectModes(system, result, 1e-9);
}

// Two equations without mass: only two modes exist, and as many vectors.
TYPED_TEST(SubspaceIteration, MasslessEquationsFollowWithoutInertia)
{
    DenseEigenSystem system = BathesPair({0, 2, 0, 1});

    const auto result = this->Solve(system, {.modes = 2, .vectors = 2, .tolerance = 1e-6});

    EXPECT_NEAR(static_cast<double>(result.eigenvalues[1]), 0.1662718, 5.1e-8);
    EXPECT_NEAR(static_cast<double>(result.eigenvalues[2]), 2.5923489, 5.1e-8);
    this->ExpectModes(system, result, 1e-9);
    EXPECT_EQ(result.sturm.counted, 2);
}

// Chain of three unequal springs and masses; eigenvalues to nine decimals from the cubic of its determinant.
TYPED_TEST(SubspaceIteration, ChainOfThreeMasses)
{
    DenseEigenSystem system = SpringChain({30, 20, 10}, {11.1, 22.2, 33.3});

    const auto result = this->Solve(system, {.modes = 3, .vectors = 3, .tolerance = 1e-8});

    EXPECT_NEAR(static_cast<double>(result.eigenvalues[1]), 0.139300648, 5.1e-10);
    EXPECT_NEAR(static_cast<double>(result.eigenvalues[2]), 1.058653108, 5.1e-10);
    EXPECT_NEAR(static_cast<double>(result.eigenvalues[3]), 4.958202401, 5.1e-10);
}

// Physics: n equal storeys have w_r = 2 sqrt(k/m) sin((2r - 1) pi / (2 (2n + 1))).
TYPED_TEST(SubspaceIteration, UniformShearBuilding)
{
    const std::size_t n = 40;
    DenseEigenSystem system = SpringChain(std::vector<double>(n, 9), std::vector<double>(n, 4));

    const auto result = this->Solve(system, {.modes = 6, .vectors = 12, .tolerance = 1e-6, .maxIterations = 60});

    for (int r = 1; r <= 6; ++r) {
        const double omega = 2 * std::sqrt(9.0 / 4) * std::sin((2 * r - 1) * std::numbers::pi / (2 * (2 * 40 + 1)));
        EXPECT_NEAR(static_cast<double>(result.eigenvalues[static_cast<std::size_t>(r)]) / (omega * omega), 1, 1e-10);
    }
    this->ExpectModes(system, result, 1e-5);
    EXPECT_TRUE(result.sturm.isMade);
    EXPECT_EQ(result.sturm.counted, result.sturm.expected);
    EXPECT_EQ(this->lines.back().second, L"OK");
}

// Two equal chains side by side: every eigenvalue stands twice, and so it is found.
TYPED_TEST(SubspaceIteration, RepeatedEigenvaluesAreFoundWithTheirMultiplicity)
{
    const std::size_t n = 10;
    std::vector<std::vector<double>> K(2 * n, std::vector<double>(2 * n));
    for (std::size_t i = 0; i < 2 * n; ++i) {
        K[i][i] = i % n + 1 == n ? 1 : 2;
        if (i % n + 1 < n)
            K[i][i + 1] = K[i + 1][i] = -1;
    }
    DenseEigenSystem system(K, std::vector<double>(2 * n, 1));

    const auto result = this->Solve(system, {.modes = 4, .vectors = 8, .tolerance = 1e-7, .maxIterations = 50});

    for (int r = 1; r <= 2; ++r) {
        const double omega = 2 * std::sin((2 * r - 1) * std::numbers::pi / (2 * (2 * 10 + 1)));
        for (const int twin : {2 * r - 1, 2 * r})
            EXPECT_NEAR(static_cast<double>(result.eigenvalues[static_cast<std::size_t>(twin)]), omega * omega, 1e-10);
    }
    this->ExpectModes(system, result, 1e-6);
    EXPECT_EQ(result.sturm.counted, result.sturm.expected);
}

// As many vectors as masses span all there is: the first projection is exact.
TYPED_TEST(SubspaceIteration, AsManyVectorsAsMasses)
{
    DenseEigenSystem system = SpringChain({4, 3, 2, 1, 1}, {1, 0, 2, 0, 3});
    const auto result = this->Solve(system, {.modes = 3, .vectors = 3, .tolerance = 1e-3});
    this->ExpectModes(system, result, 1e-6);
    EXPECT_EQ(result.sturm.counted, 3);
}

// One vector: the ratio of the projections is the eigenvalue at once, and the vector stays unscaled.
TYPED_TEST(SubspaceIteration, OneMass)
{
    DenseEigenSystem system = SpringChain({4, 400}, {0, 0.5});

    const auto result = this->Solve(system, {.modes = 1, .vectors = 1});

    EXPECT_NEAR(static_cast<double>(result.eigenvalues[1]), 1 / (1 / 4.0 + 1 / 400.0) / 0.5, 1e-12);
    EXPECT_LT(system.Residual(result.shapes[0], result.eigenvalues[1]), 1e-12);
}

TYPED_TEST(SubspaceIteration, MoreVectorsThanMassesAreRefused)
{
    DenseEigenSystem system = SpringChain({1, 1, 1}, {1, 0, 1});
    try {
        this->Solve(system, {.modes = 1, .vectors = 3});
        FAIL() << "three vectors over two masses were accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"\nNC IS LARGER THAN THE NUMBER OF MASS DEGREES OF FREEDOM");
    }
    EXPECT_EQ(system.factorizations, 0);
}

TYPED_TEST(SubspaceIteration, IndefiniteStiffnessIsRefused)
{
    DenseEigenSystem system({{1, 2}, {2, 1}}, {1, 1});
    try {
        this->Solve(system, {.modes = 1, .vectors = 2});
        FAIL() << "an indefinite stiffness was accepted";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"STIFFNESS MATRIX NOT POSITIVE DEFINITE IN DECOMP");
    }
}

// A system of one equation: nothing to factorize, nothing to project.
TYPED_TEST(SubspaceIteration, OneEquation)
{
    DenseEigenSystem system({{400}}, {4});
    EXPECT_NEAR(static_cast<double>(this->Solve(system, {.modes = 1, .vectors = 1}).eigenvalues[1]), 100, 1e-12);
}

// Convergence in the first step still costs the closing one.
TYPED_TEST(SubspaceIteration, ClosingIterationFollowsConvergence)
{
    DenseEigenSystem system = SpringChain({4, 400}, {0, 0.5});

    const auto result = this->Solve(system, {.modes = 1, .vectors = 1});

    EXPECT_EQ(result.iterations, 2);
    EXPECT_THAT(this->iterations, ElementsAre(L"ITERATION 1", L"ITERATION 2"));
    EXPECT_THAT(this->lines,
                ElementsAre(Line{L"START SUBSPACE ITERATION", L"..."}, Line{L"FINISHED SUBSPACE ITERATION", L"OK"},
                            Line{L"Calculating error measures", L"..."}, Line{L"Calculating error measures", L"OK"},
                            Line{L"Applying STURM SEQUENCE CHECK", L"..."}, Line{L"STURM SEQUENCE CHECK", L"OK"},
                            Line{L"WE FOUND THE LOWEST 1 EIGENVALUES", L"OK"}));
    EXPECT_EQ(system.factorizations, 2);
}

// Given up: told once, one more pass, error measures, and no count.
TYPED_TEST(SubspaceIteration, WithoutConvergenceThereIsNoSturmCheck)
{
    const std::size_t n = 30;
    DenseEigenSystem system = SpringChain(std::vector<double>(n, 1), std::vector<double>(n, 1));

    const auto result = this->Solve(system, {.modes = 2, .vectors = 3, .tolerance = 1e-9, .maxIterations = 2});

    EXPECT_FALSE(result.isConverged);
    EXPECT_EQ(result.iterations, 3);
    EXPECT_FALSE(result.sturm.isMade);
    EXPECT_GT(result.errorMeasures[2], 0);
    EXPECT_THAT(this->lines,
                ElementsAre(Line{L"START SUBSPACE ITERATION", L"..."},
                            Line{L"NO CONVERGENCE IN MAXIMUM NUMBER OF ITERATION PERMITTED", L"WARNING"},
                            Line{L"FINISHED SUBSPACE ITERATION", L"OK"}, Line{L"Calculating error measures", L"..."},
                            Line{L"Calculating error measures", L"OK"},
                            Line{L"Applying STURM SEQUENCE CHECK", L"..."}));
    EXPECT_EQ(system.factorizations, 1);
}

TYPED_TEST(SubspaceIteration, MissedAndSurplusEigenvaluesAreTold)
{
    DenseEigenSystem system = BathesPair({2, 2, 1, 1});
    for (const auto& [counted, text] :
         {std::pair{6, L"THERE ARE 2 EIGENVALUES MISSING"}, std::pair{1, L"THERE ARE -3 EIGENVALUES MISSING"}}) {
        system.countToTell = counted;
        const auto result = this->Solve(system, {.modes = 4, .vectors = 4});
        EXPECT_EQ(this->lines.back(), (Line{text, L"WARNING"}));
        EXPECT_EQ(result.sturm.counted, counted);
        EXPECT_NE(result.sturm.expected, counted);
    }
}

TYPED_TEST(SubspaceIteration, RunsRepeatBitForBitOnAnyNumberOfThreads)
{
    const std::size_t n = 60;
    DenseEigenSystem system = SpringChain(std::vector<double>(n, 3), std::vector<double>(n, 7));
    SubspaceSettings settings{.modes = 4, .vectors = 9, .tolerance = 1e-4, .maxIterations = 40};
    const auto first = this->Solve(system, settings);
    EXPECT_EQ(system.largestCall, 1u);
    settings.threads = 3;
    settings.solvesTogether = true;
    const auto second = this->Solve(system, settings);
    EXPECT_EQ(system.largestCall, 9u);

    for (std::size_t mode = 0; mode < 4; ++mode) {
        EXPECT_TRUE(first.eigenvalues[mode + 1] == second.eigenvalues[mode + 1]);
        EXPECT_TRUE(first.shapes[mode] == second.shapes[mode]);
        EXPECT_EQ(first.errorMeasures[mode + 1], second.errorMeasures[mode + 1]);
    }
}

TYPED_TEST(SubspaceIteration, WishToStopLeavesTheIteration)
{
    DenseEigenSystem system = BathesPair({2, 2, 1, 1});
    const SubspaceVoice voice{.list = [](const wchar_t*, const wchar_t*) {},
                              .status = [](const wchar_t*) {},
                              .poll = [] { throw jxException(L"SOLUTION ABORTED!"); }};
    EXPECT_THROW(IterateSubspace<TypeParam>(system, system.Diagonal<TypeParam>(), system.Masses<TypeParam>(),
                                            {.modes = 4, .vectors = 4}, voice),
                 jxException);
}

}  // namespace
}  // namespace qvx::test
