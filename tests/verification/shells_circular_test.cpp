// Circular plates under uniform load: closed forms of thin plate theory on meshes without a single rectangle.
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "verification/shell_grid.h"

namespace {

using namespace qvx::test;

constexpr double kR = 1, kT = 0.01, kE = 1e4, kNu = 0.3;
constexpr double kD = kE * kT * kT * kT / 12 / (1 - kNu * kNu);

/// Quarter of a disc of radius 1: a square block of n x n shells at the centre and a ring of 2 n x n around it.
class QuarterDisc : public ShellGrid
{
public:
    QuarterDisc(int n, bool isClamped, bool bSigned) : n_(n)
    {
        model.modelType = PlateBending2D;
        model.bAverageStresses = 1;
        model.bSignedShearAngle = bSigned;
        Material(kE, kNu);
        Thickness(kT);
        Mesh(n, n, [&](int i, int j) { return Core(i, j); });
        AddRing();
        HoldEdges(isClamped);
        SurfaceLoadOnAll(kGlobal, kZ, -1);
        Run(DoubleSkyline);
    }
    double CentreDeflection() const { return -Displacement(At(0, 0), kZ); }
    double CentreMoment() const { return Stress(ShellAt(0, 0)).P[1][0]; }
    /// Radial moment at the rim on the x axis.
    double RimMoment() const { return Stress(n_ * n_ + n_).P[2][0]; }

private:
    jxPoint Core(int i, int j) const { return {0.5 * kR * i / n_, 0.5 * kR * j / n_, 0}; }
    /// Node k of 2 n + 1 around, m of n + 1 outwards; m = 0 are nodes of the block.
    int RingNode(int k, int m) const
    {
        const int inner = k <= n_ ? At(n_, k) : At(2 * n_ - k, n_);
        return m == 0 ? inner : (n_ + 1) * (n_ + 1) + k * n_ + m;
    }
    void AddRing()
    {
        for (int k = 0; k <= 2 * n_; ++k)
            for (int m = 1; m <= n_; ++m) {
                const jxPoint inner = k <= n_ ? Core(n_, k) : Core(2 * n_ - k, n_);
                const double angle = std::numbers::pi * k / (4 * n_), f = static_cast<double>(m) / n_;
                Node((1 - f) * inner.x + f * kR * std::cos(angle), (1 - f) * inner.y + f * kR * std::sin(angle), 0);
            }
        for (int k = 0; k < 2 * n_; ++k)
            for (int m = 0; m < n_; ++m)
                Shell(RingNode(k, m), RingNode(k, m + 1), RingNode(k + 1, m + 1), RingNode(k + 1, m));
    }
    /// Symmetry about both axes; the rim is held down, and against rotation when clamped.
    void HoldEdges(bool isClamped)
    {
        for (int k = 0; k <= n_; ++k) {
            Hold(At(0, k), {kOY});
            Hold(At(k, 0), {kOX});
            Hold(RingNode(0, k), {kOX});
            Hold(RingNode(2 * n_, k), {kOY});
        }
        for (int k = 0; k <= 2 * n_; ++k) {
            Hold(RingNode(k, n_), {kZ});
            if (isClamped)
                Hold(RingNode(k, n_), {kOX, kOY});
        }
    }

    int n_;
};

class CircularPlate : public testing::TestWithParam<bool>
{
};
INSTANTIATE_TEST_SUITE_P(ShearAngles, CircularPlate, testing::Bool(),
                         [](const auto& p) { return p.param ? "Signed" : "Unsigned"; });

// Deflection by shear over that by bending of the clamped plate: q R^2 / (4 k G t) over q R^4 / (64 D), k = 5/6.
constexpr double kShear = 16 * kD / (5.0 / 6 * kE / (2 * (1 + kNu)) * kT * kR * kR);

// Timoshenko & Woinowsky-Krieger, Theory of Plates and Shells, 2nd ed. (1959), art. 16, clamped rim: w = q R^4 / (64 D),
// M = (1 + nu) q R^2 / 16 at the centre and -q R^2 / 8 at the rim. Errors fall with the square of the mesh; the moment at
// the rim only linearly, as an element has one Mxx along x, that of its middle.
TEST_P(CircularPlate, ClampedMeetsTheClosedForm)
{
    const QuarterDisc coarse(8, true, GetParam()), fine(16, true, GetParam());
    const double w = (1 + kShear) / (64 * kD), centre = (1 + kNu) / 16;

    EXPECT_NEAR(fine.CentreDeflection() / w, 1, 5e-4);
    EXPECT_NEAR((1 - coarse.CentreDeflection() / w) / (1 - fine.CentreDeflection() / w), 4, 0.5);
    EXPECT_NEAR(fine.CentreMoment() / centre, 1, 1e-3);
    EXPECT_NEAR((1 - coarse.CentreMoment() / centre) / (1 - fine.CentreMoment() / centre), 4, 0.5);
    EXPECT_NEAR((2 * fine.RimMoment() - coarse.RimMoment()) / (-1.0 / 8), 1, 5e-3);
    RecordConvergence("clamped-disc", "rim moment", 8, coarse.RimMoment() / (-1.0 / 8));
    RecordConvergence("clamped-disc", "rim moment", 16, fine.RimMoment() / (-1.0 / 8));
}

// Simply supported rim: w = (5 + nu) q R^4 / (64 (1 + nu) D) and M = (3 + nu) q R^2 / 16 at the centre.
TEST_P(CircularPlate, SimplySupportedMeetsTheClosedForm)
{
    const double w = ((5 + kNu) / (1 + kNu) + kShear) / (64 * kD), centre = (3 + kNu) / 16;
    double errorBefore = 0;
    for (const int n : {4, 8, 16}) {
        const QuarterDisc disc(n, false, GetParam());
        const double error = 1 - disc.CentreDeflection() / w;
        RecordConvergence("supported-disc", "deflection", n, disc.CentreDeflection() / w);
        if (n > 4) {
            EXPECT_NEAR(errorBefore / error, 4, 0.5) << n;
        }
        errorBefore = error;
        if (n == 16) {
            EXPECT_NEAR(error, 0, 5e-4);
            EXPECT_NEAR(disc.CentreMoment() / centre, 1, 1e-3);
        }
    }
}

}  // namespace
