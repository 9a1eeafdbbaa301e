#include "tools/fixed_matrix.h"

#include <random>

#include "support/round_off.h"
#include "tools/geometry.h"
#include "tools/jx_point.h"

namespace qvx {
namespace {

using test::RoundOff;

template <class Real>
class FixedMatrixOf : public testing::Test
{
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(FixedMatrixOf, NumberTypes);

template <Number Real, int R, int C>
FixedMatrix<Real, R, C> RandomMatrix(std::mt19937& random)
{
    std::uniform_real_distribution<double> uniform(-1, 1);
    FixedMatrix<Real, R, C> m;
    for (int i = 0; i < R; ++i)
        for (int j = 0; j < C; ++j)
            m(i, j) = Real(uniform(random));
    return m;
}

template <Number Real>
Matrix12<Real> RandomSymmetric(std::mt19937& random)
{
    auto m = RandomMatrix<Real, 12, 12>(random);
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < i; ++j)
            m(i, j) = m(j, i);
    return m;
}

template <Number Real>
Matrix12<Real> BlockDiagonal(const Matrix3<Real>& c)
{
    Matrix12<Real> t;
    for (int block = 0; block < 12; block += 3)
        SetBlock3(t, block, block, c);
    return t;
}

TYPED_TEST(FixedMatrixOf, ProductsAgreeWithTheirSums)
{
    std::mt19937 random(1);
    const auto a = RandomMatrix<TypeParam, 2, 3>(random);
    const auto b = RandomMatrix<TypeParam, 3, 4>(random);
    const auto c = RandomMatrix<TypeParam, 2, 4>(random);

    const auto ab = a * b;
    const auto atc = TransposeTimes(a, c);
    const std::array<TypeParam, 2> ax = a * std::array<TypeParam, 3>{1, 2, 4};

    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 4; ++j)
            EXPECT_WITHIN(ab(i, j), a(i, 0) * b(0, j) + a(i, 1) * b(1, j) + a(i, 2) * b(2, j),
                          RoundOff(TypeParam(3), 4));
        const auto slot = static_cast<std::size_t>(i);
        EXPECT_WITHIN(ax[slot], a(i, 0) + 2 * a(i, 1) + 4 * a(i, 2), RoundOff(TypeParam(7), 4));
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 4; ++j)
            EXPECT_WITHIN(atc(i, j), a(0, i) * c(0, j) + a(1, i) * c(1, j), RoundOff(TypeParam(2), 4));
}

// T^t K T by blocks must be the product of the full matrices. c need not be orthogonal for that.
TYPED_TEST(FixedMatrixOf, RotationByBlocksIsTheFullTripleProduct)
{
    std::mt19937 random(2);
    const auto k = RandomSymmetric<TypeParam>(random);
    const auto c = RandomMatrix<TypeParam, 3, 3>(random);
    const auto t = BlockDiagonal(c);

    const auto byBlocks = RotateSymmetric(k, c);

    const auto full = TransposeTimes(t, k) * t;
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j) {
            EXPECT_WITHIN(byBlocks(i, j), full(i, j), RoundOff(TypeParam(9), 16));
            EXPECT_EQ(byBlocks(i, j), byBlocks(j, i));
        }
}

TYPED_TEST(FixedMatrixOf, VectorRotationsAreTheBlockMatrixAndItsTranspose)
{
    std::mt19937 random(3);
    const auto c = RandomMatrix<TypeParam, 3, 3>(random);
    const auto t = BlockDiagonal(c);
    std::array<TypeParam, 12> v;
    for (std::size_t i = 0; i < 12; ++i)
        v[i] = TypeParam(static_cast<int>(i) - 5);

    const auto local = ToLocalAxes(v, c);
    const auto global = ToGlobalAxes(v, c);

    const auto expectedLocal = t * v;
    for (std::size_t i = 0; i < 12; ++i) {
        TypeParam expectedGlobal(0);
        for (std::size_t k = 0; k < 12; ++k)
            expectedGlobal += t(static_cast<int>(k), static_cast<int>(i)) * v[k];
        EXPECT_WITHIN(local[i], expectedLocal[i], RoundOff(TypeParam(20), 4));
        EXPECT_WITHIN(global[i], expectedGlobal, RoundOff(TypeParam(20), 4));
    }
}

TEST(FixedMatrix, CosinesOfUnitAxesTakeThemToTheLocalBasis)
{
    const jxPoint axes[3] = {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};
    double cosines[3][3];
    calc_cos(cosines, axes);

    const std::array<double, 3> local = ToLocalAxes(std::array<double, 3>{0, 5, 0}, RotationMatrix<double>(cosines));

    EXPECT_EQ(local, (std::array<double, 3>{5, 0, 0}));
}

}  // namespace
}  // namespace qvx
