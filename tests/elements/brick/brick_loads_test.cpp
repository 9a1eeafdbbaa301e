#include "elements/brick/brick_loads.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "elements/brick/brick_stress.h"

using qvx::BrickCorners;
using qvx::double128;

namespace {

BrickCorners Distorted(std::mt19937& engine)
{
    std::uniform_real_distribution<double> random(-0.2, 0.2);
    BrickCorners corners{{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}, {0, 0, 3}, {2, 0, 3}, {2, 1, 3}, {0, 1, 3}}};
    for (jxPoint& p : corners)
        p += jxPoint{random(engine), random(engine), random(engine)};
    return corners;
}

// Volume by the divergence theorem would need faces; the integral of 1 by the same rule is exact for det, which has
// degree 2 in each coordinate.
double VolumeOf(const BrickCorners& corners)
{
    double volume = 0;
    for (const auto& g : qvx::GradientsAtGaussPoints<double>(corners))
        volume += g.det;
    return volume;
}

}  // namespace

// Physics: the shares sum up to the weight; on a box each node has an eighth.
TEST(BrickLoads, BodyForceIsSharedByTheShapeFunctions)
{
    const BrickCorners box{{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}, {0, 0, 3}, {2, 0, 3}, {2, 1, 3}, {0, 1, 3}}};
    for (const double q : qvx::BrickBodyForces<double>(box, -4.0))
        EXPECT_NEAR(q, -4.0 * 6 / 8, 1e-14);

    std::mt19937 engine(1);
    const BrickCorners corners = Distorted(engine);
    double sum = 0;
    for (const double q : qvx::BrickBodyForces<double>(corners, 2.0))
        sum += q;
    EXPECT_NEAR(sum, 2 * VolumeOf(corners), 1e-13);
}

// Physics: free expansion u = e x is what the thermal forces produce, K u = f, and leaves no stress anywhere, with and
// without modes, on any shape.
TEST(BrickLoads, FreeExpansionIsFreeOfStress)
{
    std::mt19937 engine(2);
    const double e = 2.3e-4;
    for (int trial = 0; trial < 20; ++trial) {
        const BrickCorners corners = Distorted(engine);
        const auto D = qvx::SolidElasticityOf<double>(210e3, 0.3);
        const auto element = qvx::FormBrick<double>(corners, D, trial % 2 == 0);
        std::array<double, 24> u;
        for (std::size_t i = 0; i < 8; ++i) {
            u[3 * i] = e * corners[i].x;
            u[3 * i + 1] = e * corners[i].y;
            u[3 * i + 2] = e * corners[i].z;
        }
        const auto f = qvx::BrickThermalForces<double>(corners, D, e);
        const auto Ku = qvx::BrickNodalForces(element, u);
        for (std::size_t i = 0; i < 24; ++i)
            EXPECT_NEAR(Ku[i], f[i], 1e-10);
        for (const auto& S : qvx::BrickStresses(element, u, e))
            for (const double s : S)
                EXPECT_NEAR(s, 0, 1e-10);
    }
}

// Physics: fully held, heating gives -E alpha dT / (1 - 2 nu) in all three directions: -120.75 for these numbers.
TEST(BrickLoads, RestrainedHeatingGivesHydrostaticPressure)
{
    std::mt19937 engine(3);
    const auto element = qvx::FormBrick<double>(Distorted(engine), qvx::SolidElasticityOf<double>(210e3, 0.3), true);
    for (const auto& S : qvx::BrickStresses(element, {}, 2.3e-4))
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_NEAR(S[i], i < 3 ? -120.75 : 0, 1e-10);
}

TEST(BrickLoads, BothNumberTypesAgree)
{
    std::mt19937 engine(4);
    const BrickCorners corners = Distorted(engine);
    const auto q = qvx::BrickBodyForces<double>(corners, 3.0);
    const auto qq = qvx::BrickBodyForces<double128>(corners, double128(3.0));
    const auto f = qvx::BrickThermalForces<double>(corners, qvx::SolidElasticityOf<double>(1e6, 0.2), 1e-3);
    const auto ff =
        qvx::BrickThermalForces<double128>(corners, qvx::SolidElasticityOf<double128>(1e6, 0.2), double128(1e-3));
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_NEAR(q[i], static_cast<double>(qq[i]), 1e-13);
    for (std::size_t i = 0; i < 24; ++i)
        EXPECT_NEAR(f[i], static_cast<double>(ff[i]), 1e-10);
}
