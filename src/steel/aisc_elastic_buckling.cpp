#include "steel/aisc_elastic_buckling.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <numbers>

namespace qvx {

namespace {

constexpr double kPi2E = std::numbers::pi * std::numbers::pi * kSteelE;
constexpr double kInfinite = std::numeric_limits<double>::infinity();

// Squares of the shear centre's distances from the centroid along the principal axes, over ro^2. The centre lies where
// the middle lines of the legs cross.
struct AngleOffsets
{
    double w = 0;
    double z = 0;
};

AngleOffsets OffsetsOf(const jxSect_AISC& s)
{
    // From the centroid to the crossing of the middle lines, then turned into the principal axes by alpha.
    const double ex = s.x - s.t / 2, ey = s.y - s.t / 2;
    const double alpha = std::atan(s.tan_alpha);
    const double w0 = ex * std::cos(alpha) + ey * std::sin(alpha);
    const double z0 = ey * std::cos(alpha) - ex * std::sin(alpha);
    return {.w = w0 * w0 / (s.ro * s.ro), .z = z0 * z0 / (s.ro * s.ro)};
}

// Largest root of (v - a)(v - b)(v - c) - a c v2w (v - b) - b c v2z (v - a), a cubic with three real roots. From their
// sum, beyond them all, Newton's steps go down without passing it.
double LargestReciprocal(double a, double b, double c, const AngleOffsets& offset)
{
    const double couplingW = a * c * offset.w, couplingZ = b * c * offset.z;
    assert(a >= 0 && b >= 0 && c >= 0 && "reciprocals of stresses");
    double v = a + b + c;
    for (int step = 0; step < 100; ++step) {
        const double value = (v - a) * (v - b) * (v - c) - couplingW * (v - b) - couplingZ * (v - a);
        const double slope = (v - b) * (v - c) + (v - a) * (v - c) + (v - a) * (v - b) - couplingW - couplingZ;
        if (!(value > 0) || !(slope > 0))
            break;
        const double next = v - value / slope;
        if (!(next < v))
            break;
        v = next;
    }
    return v;
}

}  // namespace

double SlendernessAbout3(const jxSect_AISC& shape, const EffectiveLengths& lengths)
{
    if (shape.shape == kShapeL)
        return std::max(lengths.about3, lengths.about2) / shape.rz;
    return lengths.about3 / shape.rx;
}

double SlendernessAbout2(const jxSect_AISC& shape, const EffectiveLengths& lengths)
{
    if (shape.shape == kShapeL)
        return SlendernessAbout3(shape, lengths);
    const double built = lengths.about2 / shape.ry;
    if (shape.shape != kShape2L)
        return built;
    // A leg between two connectors may buckle by itself about its own weakest axis; the two slendernesses add as
    // squares.
    const double piece = lengths.connectors / shape.rz;
    constexpr double kNoSlip = 40, kBackToBack = 0.5;  // E6.1
    return piece > kNoSlip ? std::hypot(built, kBackToBack * piece) : built;
}

double EulerStress(double slenderness)
{
    return slenderness > 0 ? kPi2E / (slenderness * slenderness) : kInfinite;
}

double TorsionalStress(const jxSect_AISC& shape, double KLz)
{
    if (!(KLz > 0) || IsBox(shape.shape) || IsRoundTube(shape.shape))
        return kInfinite;
    // Shear centre and centroid coincide in an I; elsewhere ro is measured about the shear centre.
    const double polar = IsIShape(shape.shape) ? shape.Ix + shape.Iy : shape.A * shape.ro * shape.ro;
    assert(polar > 0 && "open shapes have their polar radius in the table");
    return (kPi2E * shape.Cw / (KLz * KLz) + kSteelG * shape.J) / polar;
}

double CombinedStress(double flexural, double torsional, double H)
{
    if (std::isinf(flexural) || std::isinf(torsional))
        return std::min(flexural, torsional);
    assert(H > 0 && H <= 1 && "1 - (distance of the shear centre / ro)^2");
    // The smaller root of the quadratic in which the offset of the shear centre couples both modes: below either of
    // them.
    const double sum = flexural + torsional;
    return sum / (2 * H) * (1 - std::sqrt(1 - 4 * flexural * torsional * H / (sum * sum)));
}

// E4-4 over the product of its three stresses, in their reciprocals: a stress that is infinite becomes 0.
double AngleTorsionalStress(const jxSect_AISC& shape, double slendernessLength, double KLz)
{
    assert(shape.shape == kShapeL && shape.Iw >= shape.Iz && "principal axes of an angle");
    const double rw = std::sqrt(shape.Iw / shape.A);
    const double w = 1 / EulerStress(slendernessLength / rw);
    const double z = 1 / EulerStress(slendernessLength / shape.rz);
    const double t = 1 / TorsionalStress(shape, KLz);
    const double v = LargestReciprocal(w, z, t, OffsetsOf(shape));
    return v > 0 ? 1 / v : kInfinite;
}

double EccentricAngleSlenderness(const jxSect_AISC& shape, double L, bool isLongConnected, AngleUse use)
{
    assert(shape.shape == kShapeL && shape.d >= shape.b && "an angle, its long leg first");
    const bool isPlanar = use == AngleUse::PlanarTruss;
    // The axis through the centroid along the connected leg: y along the long one.
    // E5: the eccentricity of the connection and the restraint by it are both in the raised slenderness, so that the
    // angle may be checked as loaded concentrically.
    const double slenderness = L / (isLongConnected ? shape.ry : shape.rx);
    const double stocky = isPlanar ? 72 + 0.75 * slenderness : 60 + 0.8 * slenderness;  // E5-1, E5-3
    const double slender = isPlanar ? 32 + 1.25 * slenderness : 45 + slenderness;       // E5-2, E5-4
    const double base = slenderness <= (isPlanar ? 80 : 75) ? stocky : slender;
    if (isLongConnected || shape.d == shape.b)
        return base;
    const double ratio = shape.d / shape.b;
    const double shortLeg = (isPlanar ? 4 : 6) * (ratio * ratio - 1);
    return std::max(base + shortLeg, (isPlanar ? 0.95 : 0.82) * L / shape.rz);
}

}  // namespace qvx
