#include "elements/shell/shell_thin_plate.h"

#include <gtest/gtest.h>

#include "elements/shell/shell_samples.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using namespace qvx::test;

constexpr double kA = 3;
constexpr double kB = 2;
constexpr double kD1 = 5;  // all three rigidities differ from an isotropic plate's
constexpr double kD2 = 1.5;
constexpr double kD3 = 1.2;
constexpr std::array<double, 5> kX = {kA / 2, 0, kA, kA, 0};  // centre, corners
constexpr std::array<double, 5> kY = {kB / 2, 0, 0, kB, kB};

template <class Real>
class ThinPlate : public testing::Test
{
public:
    static PlaneRigidity<Real> Rigidity() { return {kD1, kD2, kD3}; }
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(ThinPlate, NumberTypes);

// x^p y^q differentiated i times in x and j times in y.
double Monomial(int p, int q, double x, double y, int i = 0, int j = 0)
{
    double factor = 1;
    for (int k = 0; k < i; ++k)
        factor *= p - k;
    for (int k = 0; k < j; ++k)
        factor *= q - k;
    return factor == 0 ? 0 : factor * std::pow(x, p - i) * std::pow(y, q - j);
}

template <class Real>
std::array<Real, 12> Nodal(int p, int q)
{
    std::array<Real, 12> u;
    for (std::size_t node = 0; node < 4; ++node) {
        const double x = kX[node + 1], y = kY[node + 1];
        u[3 * node] = Monomial(p, q, x, y);
        u[3 * node + 1] = Monomial(p, q, x, y, 0, 1);   // thx = w,y
        u[3 * node + 2] = -Monomial(p, q, x, y, 1, 0);  // thy = -w,x
    }
    return u;
}

constexpr std::array<std::array<int, 2>, 12> kTerms = {
    {{0, 0}, {1, 0}, {0, 1}, {2, 0}, {1, 1}, {0, 2}, {3, 0}, {2, 1}, {1, 2}, {0, 3}, {3, 1}, {1, 3}}};

// Each of the twelve states is represented exactly: moments D (w,xx w,yy 2 w,xy) and the shears that balance them.
TYPED_TEST(ThinPlate, EachTermOfItsPolynomialIsExact)
{
    using Real = TypeParam;
    for (const auto& [p, q] : kTerms) {
        const std::array<Real, 12> u = Nodal<Real>(p, q);
        for (std::size_t k = 0; k < 5; ++k) {
            const double x = kX[k], y = kY[k];
            const auto d = [&](int i, int j) { return Monomial(p, q, x, y, i, j); };
            const PlateForces<Real> f = ThinPlateForces<Real>(kA, kB, TestFixture::Rigidity(), u, x, y);
            EXPECT_NEAR(static_cast<double>(f.M[0]), kD1 * d(2, 0) + kD2 * d(0, 2), 1e-11);
            EXPECT_NEAR(static_cast<double>(f.M[1]), kD2 * d(2, 0) + kD1 * d(0, 2), 1e-11);
            EXPECT_NEAR(static_cast<double>(f.M[2]), 2 * kD3 * d(1, 1), 1e-11);
            EXPECT_NEAR(static_cast<double>(f.V[0]), kD1 * d(3, 0) + (kD2 + 2 * kD3) * d(1, 2), 1e-11);
            EXPECT_NEAR(static_cast<double>(f.V[1]), kD1 * d(0, 3) + (kD2 + 2 * kD3) * d(2, 1), 1e-11);
        }
    }
}

// The work of one polynomial state on another is the sum over the four Gauss points, and no exact integral: for
// w = x^3 y the rule loses part of w,xy^2 = 9 x^4.
TYPED_TEST(ThinPlate, StiffnessIsTheSumOverTwoByTwoPoints)
{
    using Real = TypeParam;
    const Matrix12<Real> k = ThinPlateStiffness<Real>(kA, kB, TestFixture::Rigidity());
    const double g = 1 / std::sqrt(3.0);
    for (const auto& [p, q] : kTerms)
        for (const auto& [m, n] : kTerms) {
            double expected = 0;
            for (const double r : {-g, g})
                for (const double s : {-g, g}) {
                    const double x = kA / 2 * (1 + r), y = kB / 2 * (1 + s);
                    const double a[3] = {Monomial(p, q, x, y, 2, 0), Monomial(p, q, x, y, 0, 2),
                                         2 * Monomial(p, q, x, y, 1, 1)};
                    const double b[3] = {Monomial(m, n, x, y, 2, 0), Monomial(m, n, x, y, 0, 2),
                                         2 * Monomial(m, n, x, y, 1, 1)};
                    expected +=
                        kA * kB / 4 *
                        (kD1 * (a[0] * b[0] + a[1] * b[1]) + kD2 * (a[0] * b[1] + a[1] * b[0]) + kD3 * a[2] * b[2]);
                }
            const std::array<Real, 12> left = Nodal<Real>(p, q);
            const std::array<Real, 12> right = k * Nodal<Real>(m, n);
            Real work(0);
            for (std::size_t i = 0; i < 12; ++i)
                work += left[i] * right[i];
            EXPECT_NEAR(static_cast<double>(work), expected, 1e-9);
        }
}

TYPED_TEST(ThinPlate, RuleIsSofterThanTheExactIntegral)
{
    using Real = TypeParam;
    const Matrix12<Real> k = ThinPlateStiffness<Real>(kA, kB, {Real(0), Real(0), Real(kD3)});
    const std::array<Real, 12> u = Nodal<Real>(3, 1);
    const std::array<Real, 12> f = k * u;
    Real work(0);
    for (std::size_t i = 0; i < 12; ++i)
        work += u[i] * f[i];
    // kD3 (2 w,xy)^2 = 36 kD3 x^4: exactly 36 kD3 b a^5 / 5, by two points 36 kD3 b a^5 7 / 36
    EXPECT_NEAR(static_cast<double>(work), 7 * kD3 * kB * std::pow(kA, 5), 1e-9);
    EXPECT_LT(static_cast<double>(work), 36.0 / 5 * kD3 * kB * std::pow(kA, 5));
}

TYPED_TEST(ThinPlate, HasThreeRigidMotionsAndNoOtherFreeMotion)
{
    using Real = TypeParam;
    const Matrix12<Real> k = ThinPlateStiffness<Real>(kA, kB, TestFixture::Rigidity());
    EXPECT_EQ(Rank(k), 9);
    const double limit = static_cast<double>(RoundOff(LargestTerm(k), 2000));
    for (int term = 0; term < 3; ++term) {
        const auto& [p, q] = kTerms[static_cast<std::size_t>(term)];
        EXPECT_LE(LargestValue(k * Nodal<Real>(p, q)), limit);
    }
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j)
            EXPECT_EQ(k(i, j), k(j, i));
}

// A unit of length a million times smaller multiplies w by 1e6 and leaves rotations: the same numbers after scaling.
TYPED_TEST(ThinPlate, KeepsItsDigitsInAnyUnitOfLength)
{
    using Real = TypeParam;
    const double unit = 1e6;
    const Matrix12<Real> k = ThinPlateStiffness<Real>(kA, kB, TestFixture::Rigidity());
    const Matrix12<Real> scaled = ThinPlateStiffness<Real>(kA * unit, kB * unit, TestFixture::Rigidity());
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j) {
            const double power = (i % 3 == 0 ? unit : 1) * (j % 3 == 0 ? unit : 1);
            EXPECT_NEAR(static_cast<double>(scaled(i, j)) * power, static_cast<double>(k(i, j)),
                        1e-12 * static_cast<double>(LargestTerm(k)));
        }
}

}  // namespace
