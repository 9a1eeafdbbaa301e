#include "elements/shell/shell_stiffness.h"

#include <gtest/gtest.h>

#include "elements/shell/shell_samples.h"
#include "support/round_off.h"

namespace {

using namespace qvx;
using namespace qvx::test;
using enum ShearDirections;

constexpr double kE = 1000;
constexpr double kNu = 0.3;
constexpr double kThickness = 0.5;

template <class Real>
class ShellStiffnessOf : public testing::Test
{
public:
    static ShellElement<Real> Form(const QuadCorners& p, const ShellOptions& options = {})
    {
        return FormShell(p, ShellRigidityOf<Real>(kE, kNu, kThickness, {}), options);
    }
};
using NumberTypes = testing::Types<double, double128>;
TYPED_TEST_SUITE(ShellStiffnessOf, NumberTypes);

const std::array<ShellOptions, 4> kAllForms = {
    {{false, false, Unsigned}, {false, true, Unsigned}, {false, true, Signed}, {true, true, Unsigned}}};

// Shapes for a form: any quadrilateral, or rectangles where the thin plate is wanted.
QuadCorners Shape(ShellSamples& samples, const ShellOptions& options)
{
    if (!options.isThinPlateWanted)
        return samples.Quad();
    const double a = 2 + samples.Uniform(), b = 1.5 + samples.Uniform();
    return {{{0, 0, 0}, {a, 0, 0}, {a, b, 0}, {0, b, 0}}};
}

// Laid into a plane of three square vectors of integers, with coordinates rounded to 1/1024: exactly flat in double,
// where a general rotation would leave the corners 1e-16 off their plane.
QuadCorners ExactlyFlat(const QuadCorners& p, std::size_t plane)
{
    const std::array<jxPoint, 3> e = {{{1, 2, 2}, {2, 1, -2}, {2, -2, 1}}};
    QuadCorners out;
    for (std::size_t i = 0; i < 4; ++i)
        out[i] = std::round(1024 * p[i].x) / 1024 * e[plane] + std::round(1024 * p[i].y) / 1024 * e[(plane + 1) % 3];
    return out;
}

// The shell itself resists no rigid motion; the drilling spring goes to the ground and is left out here.
TYPED_TEST(ShellStiffnessOf, SixRigidMotionsIsZero)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 20; ++sample)
        for (const ShellOptions& options : kAllForms) {
            const QuadCorners p = ExactlyFlat(Shape(samples, options), static_cast<std::size_t>(sample % 3));
            const Matrix24<Real> k = ShellStiffness(TestFixture::Form(p, options), 0);
            const double limit = static_cast<double>(RoundOff(LargestTerm(k), 2000));
            for (const jxPoint& e : {jxPoint{1, 0, 0}, jxPoint{0, 1, 0}, jxPoint{0, 0, 1}}) {
                const auto moved = NodalValues<Real>(p, [&](const jxPoint&) { return std::pair(e, jxPoint{}); });
                EXPECT_LE(LargestValue(k * moved), limit);
                const auto turned = NodalValues<Real>(p, [&](const jxPoint& x) {
                    jxPoint u;
                    cross(u, e, x);
                    return std::pair(u, e);
                });
                EXPECT_LE(LargestValue(k * turned), limit);
            }
        }
}

TYPED_TEST(ShellStiffnessOf, AnyShellIsSymmetricToTheLastBit)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (const ShellOptions& options : kAllForms) {
        const Matrix24<Real> k =
            ShellStiffness(TestFixture::Form(Turned(Shape(samples, options), samples.Rotation()), options), 1e-7);
        for (int i = 0; i < 24; ++i)
            for (int j = 0; j < 24; ++j)
                EXPECT_EQ(k(i, j), k(j, i));
    }
}

// The local matrix, written by degrees of freedom into full size and turned as T^t K T.
TYPED_TEST(ShellStiffnessOf, GlobalAxesIsTheTurnedLocalMatrix)
{
    using Real = TypeParam;
    ShellSamples samples;
    const ShellElement<Real> e = TestFixture::Form(Turned(samples.Quad(), samples.Rotation()));
    Matrix24<Real> local;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            for (int a = 0; a < 2; ++a)
                for (int b = 0; b < 2; ++b)
                    local(6 * i + a, 6 * j + b) = e.membrane.stiffness(2 * i + a, 2 * j + b);
            for (int a = 0; a < 3; ++a)
                for (int b = 0; b < 3; ++b)
                    local(6 * i + 2 + a, 6 * j + 2 + b) = e.plate(3 * i + a, 3 * j + b);
        }
    for (int i = 0; i < 4; ++i)
        local(6 * i + 5, 6 * i + 5) = DrillingStiffness(e, 1e-3);
    const double scale = static_cast<double>(LargestTerm(local));
    EXPECT_LE(LargestDifference(ShellStiffness(e, 1e-3), RotateSymmetric(local, e.frame.c)), 1e-14 * scale);
}

TYPED_TEST(ShellStiffnessOf, ATurnedShellIsTheTurnedStiffness)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 20; ++sample)
        for (const ShellOptions& options : kAllForms) {
            const QuadCorners p = Turned(Shape(samples, options), samples.Rotation());
            const SpaceRotation turn = samples.Rotation();
            Matrix3<Real> c;  // local = c global for axes that turn along
            for (int r = 0; r < 3; ++r) {
                const jxPoint& e = turn.e[static_cast<std::size_t>(r)];
                c(r, 0) = e.x;
                c(r, 1) = e.y;
                c(r, 2) = e.z;
            }
            const Matrix24<Real> k = ShellStiffness(TestFixture::Form(p, options), 1e-5);
            const Matrix24<Real> turned = ShellStiffness(TestFixture::Form(Turned(p, turn), options), 1e-5);
            EXPECT_LE(LargestDifference(turned, RotateSymmetric(k, c)), 1e-13 * static_cast<double>(LargestTerm(k)));
        }
}

// Roofs and ramps of a few percent: x of the user axes is global X to the last bit there and leaves the plane. The
// stiffness is formed in square axes all the same, or a slope of 4 % would couple membrane and plate by 4 %.
TYPED_TEST(ShellStiffnessOf, AGentlyInclinedShellIsTheTurnedStiffness)
{
    using Real = TypeParam;
    ShellSamples samples;
    const SpaceRotation lay = {{{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}}};  // local z to the vertical, global Y
    for (int sample = 0; sample < 20; ++sample) {
        const QuadCorners flat = Turned(samples.Quad(), lay);
        SpaceRotation tilt;
        const jxPoint horizontal = {samples.Uniform(), 0, samples.Uniform()};
        for (jxPoint& e : tilt.e)
            e = arbitrary_rotate(e, 0.04, horizontal);
        Matrix3<Real> c;
        for (int r = 0; r < 3; ++r) {
            const jxPoint& e = tilt.e[static_cast<std::size_t>(r)];
            c(r, 0) = e.x;
            c(r, 1) = e.y;
            c(r, 2) = e.z;
        }
        const Matrix24<Real> k = ShellStiffness(TestFixture::Form(flat), 1e-5);
        const Matrix24<Real> tilted = ShellStiffness(TestFixture::Form(Turned(flat, tilt)), 1e-5);
        EXPECT_LE(LargestDifference(tilted, RotateSymmetric(k, c)), 1e-13 * static_cast<double>(LargestTerm(k)));
    }
}

// Beginning the numbering at another corner permutes the matrix and does nothing else: with signed shear directions on
// any quadrilateral, with unsigned ones on parallelograms. The drilling spring is left out: the smallest diagonal term
// depends on the axes in which it is looked for.
TYPED_TEST(ShellStiffnessOf, ARenumberedShellIsThePermutedStiffness)
{
    using Real = TypeParam;
    ShellSamples samples;
    for (int sample = 0; sample < 20; ++sample)
        for (const ShellOptions& options : kAllForms) {
            const bool isAnyShapeRight = options.shearDirections == Signed;
            const QuadCorners flat = options.isThinPlateWanted ? Shape(samples, options)
                                     : isAnyShapeRight         ? samples.Quad()
                                                               : samples.Parallelogram();
            const QuadCorners p = Turned(flat, samples.Rotation());
            const Matrix24<Real> k = ShellStiffness(TestFixture::Form(p, options), 0);
            for (int start = 1; start < 4; ++start) {
                const QuadCorners other = Renumbered(p, static_cast<std::size_t>(start));
                const Matrix24<Real> k2 = ShellStiffness(TestFixture::Form(other, options), 0);
                Matrix24<Real> permuted;
                for (int i = 0; i < 24; ++i)
                    for (int j = 0; j < 24; ++j)
                        permuted((i + 18 * start) % 24, (j + 18 * start) % 24) = k(i, j);
                EXPECT_LE(LargestDifference(k2, permuted), 1e-12 * static_cast<double>(LargestTerm(k)));
            }
        }
}

// Unsigned directions on a general quadrilateral depend on which side is 3-4.
TYPED_TEST(ShellStiffnessOf, ADistortedShellChangesWithItsNumberingUnderUnsignedAngles)
{
    using Real = TypeParam;
    const QuadCorners p = {{{0, 0, 0}, {2, 0.2, 0}, {1.7, 1.4, 0}, {-0.2, 1.1, 0}}};
    const ShellElement<Real> a = TestFixture::Form(p);
    const ShellElement<Real> b = TestFixture::Form(Renumbered(p, 1));
    const Real change = a.plate(0, 0) - b.plate(9, 9);  // the same corner
    EXPECT_GT(std::fabs(static_cast<double>(change / a.plate(0, 0))), 1e-3);
}

TYPED_TEST(ShellStiffnessOf, DrillingIsAFractionOfTheSmallestDiagonalTerm)
{
    using Real = TypeParam;
    ShellSamples samples;
    const ShellElement<Real> e = TestFixture::Form(samples.Quad());
    Real smallest(1e100);
    for (int i = 0; i < 12; ++i)
        smallest = e.plate(i, i) < smallest ? e.plate(i, i) : smallest;
    for (int i = 0; i < 8; ++i)
        smallest = e.membrane.stiffness(i, i) < smallest ? e.membrane.stiffness(i, i) : smallest;
    const Matrix24<Real> k = ShellStiffness(e, 1e-4);  // the shell lies in the x-y plane
    for (int node = 0; node < 4; ++node)
        for (int j = 0; j < 24; ++j) {
            const Real expected = j == 6 * node + 5 ? smallest * 1e-4 : Real(0);
            EXPECT_WITHIN(k(6 * node + 5, j), expected, RoundOff(smallest, 10));
        }
}

// Whichever of the 20 diagonal terms of membrane and plate is the smallest is the one that counts.
TYPED_TEST(ShellStiffnessOf, DrillingLooksAtEveryDiagonalTerm)
{
    using Real = TypeParam;
    for (int smallest = 0; smallest < 20; ++smallest) {
        ShellElement<Real> e{};
        for (int i = 0; i < 8; ++i)
            e.membrane.stiffness(i, i) = Real(i == smallest ? 3 : 10);
        for (int i = 0; i < 12; ++i)
            e.plate(i, i) = Real(8 + i == smallest ? 3 : 10);
        EXPECT_EQ(static_cast<double>(DrillingStiffness(e, 0.5)), 1.5) << smallest;
    }
}

TYPED_TEST(ShellStiffnessOf, DrillingIsZeroWhenAnotherDiagonalTermIs)
{
    using Real = TypeParam;
    ShellSamples samples;
    const ShellFactors noShear = {.cracking = 0, .vxx = 0, .vyy = 0};
    const ShellElement<Real> e = FormShell(samples.Quad(), ShellRigidityOf<Real>(kE, kNu, kThickness, noShear), {});
    EXPECT_EQ(e.plate(0, 0), Real(0));
    EXPECT_EQ(DrillingStiffness(e, 1e-4), Real(0));
}

TYPED_TEST(ShellStiffnessOf, ARectangleTakesTheThinPlateFromItsSides12And14)
{
    using Real = TypeParam;
    ShellSamples samples;
    const QuadCorners p = Turned({{{0, 0, 0}, {3, 0, 0}, {3, 2, 0}, {0, 2, 0}}}, samples.Rotation());
    const ShellElement<Real> e = TestFixture::Form(p, {.isThinPlateWanted = true});
    EXPECT_TRUE(e.isThinPlate);
    EXPECT_EQ(e.referenceAngle, 0.0);
    EXPECT_NEAR(static_cast<double>(e.a), 3, 1e-14);
    EXPECT_NEAR(static_cast<double>(e.b), 2, 1e-14);
    const Matrix12<Real> expected = ThinPlateStiffness(e.a, e.b, e.rigidity.bending);
    EXPECT_EQ(LargestDifference(e.plate, expected), 0);
}

TYPED_TEST(ShellStiffnessOf, ASkewParallelogramStaysMitc4)
{
    using Real = TypeParam;
    ShellSamples samples;
    const QuadCorners p = samples.Parallelogram();
    const ShellElement<Real> wanted = TestFixture::Form(p, {.isThinPlateWanted = true});
    EXPECT_FALSE(wanted.isThinPlate);
    EXPECT_EQ(LargestDifference(wanted.plate, TestFixture::Form(p).plate), 0);
}

// No correction for warping: corners off the mean plane act as if they lay in it.
TYPED_TEST(ShellStiffnessOf, AWarpedShellIsThatOfItsProjection)
{
    using Real = TypeParam;
    const QuadCorners warped = {{{0, 0, 0.1}, {2, 0, -0.1}, {2, 2, 0.1}, {0, 2, -0.1}}};
    const QuadCorners flat = {{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}};
    const ShellElement<Real> e = TestFixture::Form(warped, {.isThinPlateWanted = true});
    EXPECT_FALSE(e.isThinPlate);  // in space it is no rectangle
    EXPECT_LE(LargestDifference(e.plate, TestFixture::Form(flat).plate), 1e-12);
    EXPECT_LE(LargestDifference(e.membrane.stiffness, TestFixture::Form(flat).membrane.stiffness), 1e-12);
}

struct NamedFactor
{
    const char* name;
    double ShellFactors::*field;
};

// Each factor scales its own rigidities: fxx both direct terms of the membrane, fyy the coupling, cracking all bending.
TYPED_TEST(ShellStiffnessOf, FactorsActOnExactlyTheirTerms)
{
    using Real = TypeParam;
    const double D = kE * kThickness / (1 - kNu * kNu);
    const double B = D * kThickness * kThickness / 12;
    const double S = kE / (2 * (1 + kNu)) * kThickness * 5 / 6;
    const std::array<double, 8> plain = {D, kNu * D, (1 - kNu) / 2 * D, B, kNu * B, (1 - kNu) / 2 * B, S, S};
    const NamedFactor factors[] = {
        {"fxx", &ShellFactors::fxx}, {"fyy", &ShellFactors::fyy}, {"fxy", &ShellFactors::fxy},
        {"mxx", &ShellFactors::mxx}, {"myy", &ShellFactors::myy}, {"mxy", &ShellFactors::mxy},
        {"vxx", &ShellFactors::vxx}, {"vyy", &ShellFactors::vyy}, {"cracking", &ShellFactors::cracking}};
    for (std::size_t f = 0; f < 9; ++f) {
        ShellFactors set;
        set.*factors[f].field = 0.25;
        const ShellRigidity<Real> r = ShellRigidityOf<Real>(kE, kNu, kThickness, set);
        const std::array<Real, 8> actual = {r.membrane.direct,  r.membrane.coupling, r.membrane.shear, r.bending.direct,
                                            r.bending.coupling, r.bending.shear,     r.shearX,         r.shearY};
        for (std::size_t term = 0; term < 8; ++term) {
            const bool isScaled = term == f || (f == 8 && term >= 3 && term <= 5);
            EXPECT_NEAR(static_cast<double>(actual[term]), plain[term] * (isScaled ? 0.25 : 1), 1e-13 * D)
                << factors[f].name << " on term " << term;
        }
    }
}

}  // namespace
