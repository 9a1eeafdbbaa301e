#include "elements/brick/brick_stiffness.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "elements/brick/brick_stress.h"
#include "support/round_off.h"
#include "tools/jx_exception.h"

using qvx::BrickCorners;
using qvx::BrickElement;
using qvx::double128;
using qvx::test::RoundOff;

namespace {

BrickCorners Box(double a, double b, double c)
{
    return {{{0, 0, 0}, {a, 0, 0}, {a, b, 0}, {0, b, 0}, {0, 0, c}, {a, 0, c}, {a, b, c}, {0, b, c}}};
}

BrickCorners Distorted(std::mt19937& engine, double amount)
{
    std::uniform_real_distribution<double> random(-amount, amount);
    BrickCorners corners = Box(1, 1, 1);
    for (jxPoint& p : corners)
        p += jxPoint{random(engine), random(engine), random(engine)};
    return corners;
}

template <class Real>
double LargestTerm(const qvx::Matrix24<Real>& k)
{
    double largest = 0;
    for (int i = 0; i < 24; ++i)
        for (int j = 0; j < 24; ++j)
            largest = std::max(largest, std::fabs(static_cast<double>(k(i, j))));
    return largest;
}

template <class Real>
Real Scale(double value)
{
    return Real(value);
}

// Displacement field u = c + A x at the corners.
template <class Real>
std::array<Real, 24> LinearField(const BrickCorners& corners, const double (&c)[3], const double (&A)[3][3])
{
    std::array<Real, 24> u;
    for (std::size_t i = 0; i < 8; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            u[3 * i + k] =
                Real(c[k]) + Real(A[k][0]) * corners[i].x + Real(A[k][1]) * corners[i].y + Real(A[k][2]) * corners[i].z;
    return u;
}

template <class Real>
class BrickStiffness : public testing::Test
{
protected:
    BrickElement<Real> Form(const BrickCorners& corners, bool isIncompatible, double E = 1e6, double nu = 0.25)
    {
        return qvx::FormBrick<Real>(corners, qvx::SolidElasticityOf<Real>(E, nu), isIncompatible);
    }
};

using Numbers = testing::Types<double, double128>;
TYPED_TEST_SUITE(BrickStiffness, Numbers);

}  // namespace

// E = 1e6, nu = 0.25: A = E / (0.5 * 1.25) = 1.6e6; shear modulus E / (2 * 1.25).
TYPED_TEST(BrickStiffness, ElasticityIsHookesLaw)
{
    const auto D = qvx::SolidElasticityOf<TypeParam>(1e6, 0.25);
    EXPECT_WITHIN(D.direct, TypeParam(1.2e6), RoundOff(TypeParam(1e6), 8));
    EXPECT_WITHIN(D.coupling, TypeParam(4e5), RoundOff(TypeParam(1e6), 8));
    EXPECT_WITHIN(D.shear, TypeParam(4e5), RoundOff(TypeParam(1e6), 8));
}

// Unit cube: the natural volume is 8, so every point has det = 1/8; the diagonal is positive.
TYPED_TEST(BrickStiffness, UnitCubeHasDeterminantAnEighthAndPositiveDiagonal)
{
    for (const auto& g : qvx::GradientsAtGaussPoints<TypeParam>(Box(1, 1, 1)))
        EXPECT_WITHIN(g.det, TypeParam(0.125), RoundOff(TypeParam(1), 4));
    for (const auto& g : qvx::GradientsAtStressPoints<TypeParam>(Box(1, 1, 1)))
        EXPECT_WITHIN(g.det, TypeParam(0.125), RoundOff(TypeParam(1), 4));
    for (const bool isIncompatible : {false, true}) {
        const auto k = this->Form(Box(1, 1, 1), isIncompatible).stiffness;
        for (int i = 0; i < 24; ++i)
            EXPECT_GT(static_cast<double>(k(i, i)), 0);
    }
}

// Swapping the two layers of nodes turns the solid inside out: all volumes, and with them the diagonal, are negative.
TYPED_TEST(BrickStiffness, SolidInsideOutHasNegativeDiagonal)
{
    const BrickCorners c = Box(1, 1, 1);
    const BrickCorners swapped{c[4], c[5], c[6], c[7], c[0], c[1], c[2], c[3]};
    for (const bool isIncompatible : {false, true}) {
        const auto k = this->Form(swapped, isIncompatible).stiffness;
        for (int i = 0; i < 24; ++i)
            EXPECT_LT(static_cast<double>(k(i, i)), 0);
    }
}

TYPED_TEST(BrickStiffness, GradientsAreThoseOfTheShapeFunctions)
{
    std::mt19937 engine(1);
    const BrickCorners corners = Distorted(engine, 0.2);
    const double zero[3] = {}, A[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const auto x = LinearField<TypeParam>(corners, zero, A);
    for (const auto& g : qvx::GradientsAtGaussPoints<TypeParam>(corners)) {
        TypeParam xx(0), xy(0), sum(0);
        for (std::size_t i = 0; i < 8; ++i) {
            xx += g.x[i] * x[3 * i];  // dx/dx = 1
            xy += g.y[i] * x[3 * i];  // dx/dy = 0
            sum += g.z[i];            // d(1)/dz = 0
        }
        EXPECT_WITHIN(xx, TypeParam(1), RoundOff(TypeParam(1), 40));
        EXPECT_WITHIN(xy, TypeParam(0), RoundOff(TypeParam(1), 40));
        EXPECT_WITHIN(sum, TypeParam(0), RoundOff(TypeParam(1), 40));
    }
}

// Physics: six rigid motions cost no force, whatever the shape; everything else stores energy.
TYPED_TEST(BrickStiffness, RigidMotionsCostNothingAndAllElseStoresEnergy)
{
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> random(-1, 1);
    for (int trial = 0; trial < 40; ++trial) {
        const BrickCorners corners = Distorted(engine, 0.2);
        const auto e = this->Form(corners, trial % 2 == 0);
        const double size = LargestTerm(e.stiffness);
        const double w[3] = {random(engine), random(engine), random(engine)};
        const double c[3] = {random(engine), random(engine), random(engine)};
        const double spin[3][3] = {{0, -w[2], w[1]}, {w[2], 0, -w[0]}, {-w[1], w[0], 0}};
        for (const TypeParam& f : qvx::BrickNodalForces(e, LinearField<TypeParam>(corners, c, spin)))
            ASSERT_LE(std::fabs(static_cast<double>(f)), RoundOff(Scale<TypeParam>(size), 400));

        std::array<TypeParam, 24> u;
        for (TypeParam& value : u)
            value = TypeParam(random(engine));
        const auto f = qvx::BrickNodalForces(e, u);
        TypeParam energy(0);
        for (std::size_t i = 0; i < 24; ++i)
            energy += u[i] * f[i];
        ASSERT_GT(static_cast<double>(energy), 0);
        for (int i = 0; i < 24; ++i)
            for (int j = 0; j < i; ++j)
                ASSERT_EQ(e.stiffness(i, j), e.stiffness(j, i));
    }
}

// Physics: under a linear displacement field the element has its constant stress at all nine points, and its nodal
// forces are those of the plain element: the modes stay silent, which is what the patch test asks.
TYPED_TEST(BrickStiffness, LinearFieldGivesConstantStressOnAnyShape)
{
    std::mt19937 engine(3);
    const double c[3] = {}, A[3][3] = {{1e-3, 5e-4, 5e-4}, {5e-4, 1e-3, 5e-4}, {5e-4, 5e-4, 1e-3}};
    for (int trial = 0; trial < 40; ++trial) {
        const BrickCorners corners = Distorted(engine, 0.25);
        const auto u = LinearField<TypeParam>(corners, c, A);
        const auto e = this->Form(corners, true);
        for (const auto& S : qvx::BrickStresses(e, u, TypeParam(0)))
            for (std::size_t i = 0; i < 6; ++i)
                ASSERT_NEAR(static_cast<double>(S[i]), i < 3 ? 2000 : 400, 1e-9);
        const auto f = qvx::BrickNodalForces(e, u);
        const auto plain = qvx::BrickNodalForces(this->Form(corners, false), u);
        for (std::size_t i = 0; i < 24; ++i)
            ASSERT_NEAR(static_cast<double>(f[i]), static_cast<double>(plain[i]), 1e-9);
    }
}

// Physics: a rectangular solid in pure bending has the curvature of beam theory exactly: strain ex = -y kappa and, by
// Poisson's ratio, ey = ez = nu y kappa. The plain form answers with parasitic shear. The means of the modes vanish.
TYPED_TEST(BrickStiffness, RectangularSolidBendsExactly)
{
    const double E = 1000, nu = 0.3, L = 4, b = 1, h = 2, kappa = 0.01;
    BrickCorners corners = Box(L, h, b);
    for (jxPoint& p : corners)
        p -= jxPoint{L / 2, h / 2, b / 2};
    std::array<TypeParam, 24> u;
    for (std::size_t i = 0; i < 8; ++i) {
        u[3 * i] = TypeParam(-kappa * corners[i].x * corners[i].y);
        u[3 * i + 1] = TypeParam(0);
        u[3 * i + 2] = TypeParam(nu * kappa * corners[i].y * corners[i].z);
    }
    const auto e = this->Form(corners, true, E, nu);
    for (const auto& mean : e.meanGradients)
        for (const TypeParam& component : mean)
            EXPECT_WITHIN(component, TypeParam(0), RoundOff(TypeParam(1), 20));

    const auto f = qvx::BrickNodalForces(e, u);
    // Moment of the end face about its middle: M = E I kappa, I = b h^3 / 12.
    double M = 0;
    for (const std::size_t i : {1U, 2U, 5U, 6U})
        M -= static_cast<double>(f[3 * i]) * corners[i].y;
    EXPECT_NEAR(M, E * b * h * h * h / 12 * kappa, 1e-12);
    const auto S = qvx::BrickStresses(e, u, TypeParam(0));
    for (std::size_t k = 1; k < 9; ++k) {
        EXPECT_NEAR(static_cast<double>(S[k][0]), -E * kappa * corners[k - 1].y, 1e-12);
        for (std::size_t i = 1; i < 6; ++i)
            EXPECT_NEAR(static_cast<double>(S[k][i]), 0, 1e-12);
    }
}

// Physics: turning the element turns its forces; a proper renumbering of the nodes leaves them as they are.
TYPED_TEST(BrickStiffness, RenumberingKeepsThePhysics)
{
    std::mt19937 engine(5);
    std::uniform_real_distribution<double> random(-1, 1);
    // Quarter turns of the node numbers about t and about r.
    const int aboutT[8] = {1, 2, 3, 0, 5, 6, 7, 4}, aboutR[8] = {3, 2, 6, 7, 0, 1, 5, 4};
    for (int trial = 0; trial < 24; ++trial) {
        const BrickCorners corners = Distorted(engine, 0.2);
        std::array<int, 8> map{0, 1, 2, 3, 4, 5, 6, 7};
        for (int turn = 0; turn <= trial; ++turn) {
            const int(&quarter)[8] = turn % 3 ? aboutT : aboutR;
            const std::array<int, 8> old = map;
            for (std::size_t i = 0; i < 8; ++i)
                map[i] = old[static_cast<std::size_t>(quarter[i])];
        }
        BrickCorners renumbered;
        std::array<TypeParam, 24> u, v;
        for (std::size_t i = 0; i < 8; ++i) {
            renumbered[i] = corners[static_cast<std::size_t>(map[i])];
            for (std::size_t k = 0; k < 3; ++k)
                u[3 * i + k] = TypeParam(random(engine));
        }
        for (std::size_t i = 0; i < 8; ++i)
            for (std::size_t k = 0; k < 3; ++k)
                v[3 * i + k] = u[3 * static_cast<std::size_t>(map[i]) + k];
        const auto f = qvx::BrickNodalForces(this->Form(corners, true), u);
        const auto g = qvx::BrickNodalForces(this->Form(renumbered, true), v);
        for (std::size_t i = 0; i < 8; ++i)
            for (std::size_t k = 0; k < 3; ++k)
                ASSERT_NEAR(static_cast<double>(g[3 * i + k]),
                            static_cast<double>(f[3 * static_cast<std::size_t>(map[i]) + k]), 1e-7);
    }
}

// A material without stiffness leaves the modes singular.
TYPED_TEST(BrickStiffness, ModesWithoutStiffnessAreRefused)
{
    try {
        this->Form(Box(1, 1, 1), true, 0);
        FAIL();
    } catch (const jxException& e) {
        EXPECT_STREQ(e.GetText(), L"Singular matrix in routine ludcmp");
    }
    EXPECT_NO_THROW(this->Form(Box(1, 1, 1), false, 0));
}
