#include "steel/aisc_slender_elements.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <span>

namespace qvx {

namespace {

// Plates of one kind in a section: how often, width over thickness, thickness, and how they buckle.
struct Plate
{
    int count = 0;
    double lambda = 0;
    double t = 0;           // [in]
    double lambdaR = 0;     // limit in compression, Table B4.1a
    double c1 = 0, c2 = 0;  // imperfection, Table E7.1
};

struct Imperfection
{
    double c1, c2;
};

// Table E7.1
constexpr Imperfection kWeb{0.18, 1.31};
constexpr Imperfection kTubeWall{0.20, 1.38};
constexpr Imperfection kOther{0.22, 1.49};

struct Plates
{
    std::array<Plate, 2> plate;
    int count = 0;

    void Add(int n, double lambda, double t, double lambdaR, Imperfection c)
    {
        assert(count < static_cast<int>(plate.size()) && "two kinds of plates at most");
        plate[static_cast<std::size_t>(count++)] = {n, lambda, t, lambdaR, c.c1, c.c2};
    }
    std::span<const Plate> All() const { return {plate.data(), static_cast<std::size_t>(count)}; }
};

// Table B4.1a
Plates PlatesOf(const jxSect_AISC& s, double root)
{
    const double flange = 0.56 * root, web = 1.49 * root, stem = 0.75 * root, leg = 0.45 * root, wall = 1.40 * root;
    Plates plates;
    if (IsIShape(s.shape)) {
        plates.Add(4, s.lambda_f, s.tf, flange, kOther);
        plates.Add(1, s.lambda_w, s.tw, web, kWeb);
    } else if (IsChannel(s.shape)) {
        plates.Add(2, s.lambda_f, s.tf, flange, kOther);
        plates.Add(1, s.lambda_w, s.tw, web, kWeb);
    } else if (IsTee(s.shape)) {
        plates.Add(2, s.lambda_f, s.tf, flange, kOther);
        plates.Add(1, s.lambda_w, s.tw, stem, kOther);
    } else if (s.shape == kShapeL || s.shape == kShape2L) {
        const int n = s.shape == kShapeL ? 1 : 2;
        const double limit = s.shape == kShape2L && s.sep == 0 ? flange : leg;  // in continuous contact
        plates.Add(n, s.d / s.t, s.t, limit, kOther);
        plates.Add(n, s.b / s.t, s.t, limit, kOther);
    } else if (IsBox(s.shape)) {
        plates.Add(2, s.lambda_f, s.t, wall, kTubeWall);
        plates.Add(2, s.lambda_w, s.t, wall, kTubeWall);
    }
    return plates;
}

// E7-2, E7-3, E7-5
double EffectiveWidth(const Plate& plate, double Fy, double Fcr)
{
    const double b = plate.lambda * plate.t;
    // The limit rises where the column buckles before it yields: its plates then have less stress to bear.
    if (plate.lambda <= plate.lambdaR * std::sqrt(Fy / Fcr))
        return b;
    const double elastic = plate.c2 * plate.lambdaR / plate.lambda;
    const double q = elastic * std::sqrt(Fy / Fcr);  // sqrt(Fel / Fcr)
    return std::min(b, b * (1 - plate.c1 * q) * q);
}

// E7-6, E7-7 of 360-16; E7-19 of the editions before. Beyond 0.45 E / Fy the wall counts as at that limit.
double RoundWallFactor(const jxSect_AISC& s, double Fy)
{
    const double ratio = s.lambda_w * Fy / kSteelE;
    // A round wall has no effective width: its buckling takes from the whole circumference.
    return ratio > 0.11 ? 0.038 / std::min(ratio, 0.45) + 2.0 / 3.0 : 1;
}

// The form of the three rules of E7.1: 1, a straight line, a hyperbola in lambda / root.
double UnstiffenedRule(double lambda, double root, double low, double high, double a, double slope, double c)
{
    const double u = lambda / root;
    return u <= low ? 1 : u < high ? a - slope * u : c / (u * u);
}

double FlangeQs(double lambda, double root)  // E7-4 to E7-6
{
    return UnstiffenedRule(lambda, root, 0.56, 1.03, 1.415, 0.74, 0.69);
}

double LegQs(double lambda, double root)  // E7-10 to E7-12
{
    return UnstiffenedRule(lambda, root, 0.45, 0.91, 1.34, 0.76, 0.53);
}

double StemQs(double lambda, double root)  // E7-13 to E7-15
{
    return UnstiffenedRule(lambda, root, 0.75, 1.03, 1.908, 1.22, 0.69);
}

// E7-17 (c 0.34, from 1.49) and E7-18 (c 0.38, from 1.40)
double StiffenedWidth(double lambda, double t, double f, double limit, double c)
{
    const double root = std::sqrt(kSteelE / f), b = lambda * t;
    return lambda < limit * root ? b : std::min(b, 1.92 * t * root * (1 - c / lambda * root));
}

double WebLoss(const jxSect_AISC& s, double f)
{
    return (s.lambda_w * s.tw - StiffenedWidth(s.lambda_w, s.tw, f, 1.49, 0.34)) * s.tw;
}

double WallLoss(const jxSect_AISC& s, double lambda, double f)
{
    return 2 * (lambda * s.t - StiffenedWidth(lambda, s.t, f, 1.40, 0.38)) * s.t;
}

}  // namespace

double EffectiveArea(const jxSect_AISC& shape, const AiscBasis& basis, double Fcr)
{
    assert(Fcr > 0 && Fcr <= basis.Fy * (1 + 1e-12) && "stress of the gross section");
    if (IsRoundTube(shape.shape))
        return RoundWallFactor(shape, basis.Fy) * shape.A;
    double area = shape.A;
    const Plates plates = PlatesOf(shape, basis.Root());
    for (const Plate& plate : plates.All()) {
        const double be = Noted(basis.trace, {"be [in]", EffectiveWidth(plate, basis.Fy, Fcr), "E7.1", "E7-2, E7-3"});
        area -= plate.count * (plate.lambda * plate.t - be) * plate.t;
    }
    return area;
}

double UnstiffenedFactor(const jxSect_AISC& shape, const AiscBasis& basis)
{
    const double root = basis.Root();
    if (IsIShape(shape.shape) || IsChannel(shape.shape))
        return FlangeQs(shape.lambda_f, root);
    if (IsTee(shape.shape))
        return std::min(FlangeQs(shape.lambda_f, root), StemQs(shape.lambda_w, root));
    if (shape.shape == kShapeL || shape.shape == kShape2L)
        return LegQs(std::max(shape.d, shape.b) / shape.t, root);
    return 1;
}

double StiffenedFactor(const jxSect_AISC& shape, const AiscBasis& basis, double Fcr)
{
    if (IsRoundTube(shape.shape))
        return RoundWallFactor(shape, basis.Fy);
    double loss = 0;
    if (IsIShape(shape.shape) || IsChannel(shape.shape))
        loss = WebLoss(shape, Fcr);
    else if (IsBox(shape.shape))
        // Walls of a tube take f as Fy, as the note to E7-18 permits, which needs no iteration.
        loss = WallLoss(shape, shape.lambda_f, basis.Fy) + WallLoss(shape, shape.lambda_w, basis.Fy);
    return (shape.A - loss) / shape.A;
}

}  // namespace qvx
