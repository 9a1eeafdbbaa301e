#include <algorithm>
#include <cassert>

#include "steel/aisc_flexure_kinds.h"

namespace qvx {

namespace {

// A rectangular tube seen along the axis it bends about.
struct Box
{
    double depth;       // across the axis [in]
    double flange;      // width over thickness of the walls in compression
    double web;         // of the walls along the bending plane
    double I, S, Z, t;  // [in4], [in3], [in3], [in]
};

// F7-4
double EffectiveFlange(const Box& box, const AiscBasis& basis)
{
    const double root = basis.Root(), b = box.flange * box.t;
    return std::min(b, 1.92 * box.t * root * (1 - 0.38 / box.flange * root));
}

// F7-3. What buckling takes from the compression flange is taken from both: the section stays symmetric, on the safe
// side.
double SlenderFlange(const Box& box, const AiscBasis& basis)
{
    const double lost =
        box.flange * box.t - Noted(basis.trace, {"be [in]", EffectiveFlange(box, basis), "F7.2", "F7-4"});
    const double arm = (box.depth - box.t) / 2;
    const double Ie = box.I - 2 * lost * box.t * (arm * arm + box.t * box.t / 12);
    return basis.Fy * Noted(basis.trace, {"Se [in3]", Ie / (box.depth / 2), "F7.2", "F7-3"});
}

double FlangeBuckling(const Box& box, const AiscBasis& basis, double Mp)
{
    const double root = basis.Root(), My = basis.Fy * box.S;
    if (box.flange <= 1.12 * root)
        return Mp;
    if (box.flange > 1.40 * root)
        return SlenderFlange(box, basis);
    assert(box.flange > 1.12 * root && box.flange <= 1.40 * root && "the noncompact range");
    return Mp - (Mp - My) * (3.57 * box.flange / root - 4.0);  // F7-2
}

double WebBuckling(const Box& box, const AiscBasis& basis, double Mp)
{
    const double root = basis.Root(), My = basis.Fy * box.S;
    if (box.web <= 2.42 * root)
        return Mp;
    return Mp - (Mp - My) * (0.305 * box.web / root - 0.738);  // F7-5 of 360-05, beyond 5.70 too
}

double BoxFlexure(const Box& box, const AiscBasis& basis)
{
    const double Mp = Noted(basis.trace, {"Mp [kip-in]", basis.Fy * box.Z, "F7.1", "F7-1"});
    const double flange =
        Noted(basis.trace, {"Mn, flange buckling [kip-in]", FlangeBuckling(box, basis, Mp), "F7.2", "F7-2, F7-3"});
    const double web = Noted(basis.trace, {"Mn, web buckling [kip-in]", WebBuckling(box, basis, Mp), "F7.3", "F7-5"});
    return std::min({Mp, flange, web});
}

// 360-16, F7.4: rectangular tubes bent about their strong axis.
double LateralBuckling(const jxSect_AISC& s, const AiscBasis& basis, const LateralBracing& bracing)
{
    const double Mp = basis.Fy * s.Zx, M07 = 0.7 * basis.Fy * s.Sx, torsion = std::sqrt(s.J * s.A);
    const double Lp = Noted(basis.trace, {"Lp [in]", 0.13 * kSteelE * s.ry * torsion / Mp, "F7.4", "F7-12"});
    const double Lr = Noted(basis.trace, {"Lr [in]", 2 * kSteelE * s.ry * torsion / M07, "F7.4", "F7-13"});
    if (bracing.Lb <= Lp)
        return Mp;
    const double M =
        bracing.Lb <= Lr ? BetweenLimits(bracing.Lb, Lp, Lr, Mp, M07) : 2 * kSteelE * torsion / (bracing.Lb / s.ry);
    return Noted(basis.trace, {"Mn, lateral-torsional [kip-in]", std::min(Mp, bracing.Cb * M), "F7.4", "F7-10, F7-11"});
}

}  // namespace

double BoxMajorFlexure(const jxSect_AISC& shape, const AiscBasis& basis, const LateralBracing& bracing)
{
    const Box box{shape.d, shape.lambda_f, shape.lambda_w, shape.Ix, shape.Sx, shape.Zx, shape.t};
    const double local = BoxFlexure(box, basis);
    // A square tube is as stiff sideways as in its plane and has no lower mode to turn into.
    const bool mayTurn = basis.Is16() && shape.shape == kShapeHssRect && bracing.Lb > 0;
    return mayTurn ? std::min(local, LateralBuckling(shape, basis, bracing)) : local;
}

double BoxMinorFlexure(const jxSect_AISC& shape, const AiscBasis& basis)
{
    return BoxFlexure({shape.b, shape.lambda_w, shape.lambda_f, shape.Iy, shape.Sy, shape.Zy, shape.t}, basis);
}

double RoundFlexure(const jxSect_AISC& shape, const AiscBasis& basis)
{
    const double Mp = Noted(basis.trace, {"Mp [kip-in]", basis.Fy * shape.Zx, "F8.1", "F8-1"});
    const double ratio = shape.lambda_w, unit = kSteelE / basis.Fy;
    if (ratio <= 0.07 * unit)
        return Mp;
    const double stress = ratio <= 0.31 * unit ? 0.021 * kSteelE / ratio + basis.Fy : 0.33 * kSteelE / ratio;
    return std::min(Mp, Noted(basis.trace, {"Mn, wall buckling [kip-in]", stress * shape.Sx, "F8.2", "F8-2 to F8-4"}));
}

}  // namespace qvx
