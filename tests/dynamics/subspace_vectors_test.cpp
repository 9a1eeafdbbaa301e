// Start vectors of the subspace iteration and the operations on its vectors.
#include "dynamics/subspace_vectors.h"

#include <cmath>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace qvx {
namespace {

template <class Real>
class SubspaceVectorTest : public testing::Test
{
};
using Reals = testing::Types<double, double128>;
TYPED_TEST_SUITE(SubspaceVectorTest, Reals);

/// Equation of the unit vector; 0 when there is none.
template <class Real>
std::size_t UnitPlace(const std::vector<Real>& vector)
{
    for (std::size_t i = 1; i < vector.size(); ++i)
        if (vector[i] == Real(1))
            return i;
    return 0;
}

TYPED_TEST(SubspaceVectorTest, FirstVectorIsTheMassesAndTheLastIsPartlyRandom)
{
    const std::vector<TypeParam> diagonal = {0, 1, 1, 1, 1, 1, 1}, masses = {0, 1, 9, 3, 4, 5, 6};

    const auto vectors = StartVectors(diagonal, masses, 3);

    ASSERT_EQ(vectors.size(), 3u);
    EXPECT_TRUE(vectors[0] == masses);
    EXPECT_EQ(UnitPlace(vectors[1]), 2u);  // the largest ratio of all
    // x -> fraction of (3.141592654 + x)^5, from one half on: 642.38..., then its fraction again.
    const double first = std::pow(3.641592654, 5) - 640;
    EXPECT_NEAR(static_cast<double>(vectors[2][1]), first, 1e-9);
    for (std::size_t i = 1; i <= 6; ++i)
        EXPECT_TRUE(vectors[2][i] >= TypeParam(0) && vectors[2][i] < TypeParam(2));
}

// Of equal ratios the later equation is taken in the lower range, the earlier one in the upper.
TYPED_TEST(SubspaceVectorTest, EqualRatiosAreTakenFromTheSplitOutward)
{
    const std::vector<TypeParam> ones = {0, 1, 1, 1, 1, 1, 1, 1, 1, 1};

    const auto vectors = StartVectors(ones, ones, 3);  // nine equations in steps of three: split at 6, then at 3

    EXPECT_EQ(UnitPlace(vectors[1]), 6u);
    std::vector<TypeParam> last = vectors[2];
    std::size_t place = 1;
    for (std::size_t i = 1; i < last.size(); ++i)
        if (last[i] > last[place])
            place = i;
    EXPECT_EQ(place, 3u);
}

TYPED_TEST(SubspaceVectorTest, RepeatBitForBit)
{
    const std::vector<TypeParam> ones(201, 1);
    EXPECT_TRUE(StartVectors(ones, ones, 5) == StartVectors(ones, ones, 5));
}

TYPED_TEST(SubspaceVectorTest, ProjectionIsTheTableOfInnerProducts)
{
    const SubspaceVectors<TypeParam> a = {{0, 1, 2, 3, 4, 5}, {0, 0, 1, 0, 1, 0}};
    const SubspaceVectors<TypeParam> b = {{0, 1, 1, 1, 1, 1}, {0, 6, 5, 4, 3, 2}};

    const PackedMatrix<TypeParam> product = Project<TypeParam>(a, b, 2, [] {});

    EXPECT_TRUE(product(1, 1) == TypeParam(15));
    EXPECT_TRUE(product(1, 2) == TypeParam(2));  // second of a with the first of b
    EXPECT_TRUE(product(2, 1) == TypeParam(2));
    EXPECT_TRUE(product(2, 2) == TypeParam(8));
}

TYPED_TEST(SubspaceVectorTest, RotationMixesTheVectorsRowByRow)
{
    SubspaceVectors<TypeParam> vectors = {{0, 1, 2, 3}, {0, 10, 20, 30}};
    SquareMatrix<TypeParam> turn(2);
    turn(1, 1) = 2;
    turn(2, 1) = 1;
    turn(1, 2) = -1;

    RotateBasis(vectors, turn, 1, [] {});

    EXPECT_TRUE((vectors == SubspaceVectors<TypeParam>{{0, 12, 24, 36}, {0, -1, -2, -3}}));
}

// More equations than one block holds.
TYPED_TEST(SubspaceVectorTest, LongVectorsGiveTheSameOnAnyNumberOfThreads)
{
    const std::size_t n = 5000;
    SubspaceVectors<TypeParam> a(3, std::vector<TypeParam>(n + 1));
    for (std::size_t j = 0; j < 3; ++j)
        for (std::size_t i = 1; i <= n; ++i)
            a[j][i] = 1.0 / static_cast<double>(i + j);
    const auto one = Project<TypeParam>(a, a, 1, [] {}), three = Project<TypeParam>(a, a, 3, [] {});
    EXPECT_TRUE(one(2, 3) == three(2, 3));
    EXPECT_NEAR(static_cast<double>(one(1, 1)), 1.6447340868469, 1e-10);  // pi^2/6 less the tail 1/5000.5
}

}  // namespace
}  // namespace qvx
