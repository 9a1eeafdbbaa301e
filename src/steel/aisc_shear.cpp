#include "steel/aisc_shear.h"

#include <algorithm>
#include <cassert>

namespace qvx {

namespace {

constexpr double kEdgePlate = 1.2;  // kv of stems, legs and flanges (G3, G6)
constexpr double kTubeWall = 5;     // kv of tube walls (G4) and of webs before 360-16

// Cv2, G2-9 to G2-11: yielding, inelastic and elastic buckling.
double Cv2(double lambda, double kv, double Fy)
{
    // Beyond u = 1 / 1.37 a web buckles elastically, with its square.
    const double u = std::sqrt(kv * kSteelE / Fy) / lambda;
    return u * 1.10 >= 1 ? 1 : u * 1.37 >= 1 ? 1.10 * u : 1.51 * u * u;
}

// Cv1, G2-3 and G2-4: 360-16 counts on the strength after buckling.
double Cv1(double lambda, double Fy)
{
    constexpr double kv = 5.34;
    return std::min(1.0, 1.10 * std::sqrt(kv * kSteelE / Fy) / lambda);
}

double PlateShear(const AiscBasis& basis, double area, double Cv, const char* clause, const char* equation)
{
    Noted(basis.trace, {"Cv", Cv, clause, ""});
    return Noted(basis.trace, {"Vn [kip]", 0.6 * basis.Fy * area * Cv, clause, equation});
}

double EdgePlateShear(const AiscBasis& basis, double area, double lambda, const char* clause, const char* equation)
{
    return PlateShear(basis, area, Cv2(lambda, kEdgePlate, basis.Fy), clause, equation);
}

// Two walls along the force; the corners do not count.
double TubeShear(const jxSect_AISC& s, const AiscBasis& basis, double lambda)
{
    assert(lambda > 0 && s.t > 0 && "walls of a tube");
    return PlateShear(basis, 2 * lambda * s.t * s.t, Cv2(lambda, kTubeWall, basis.Fy), basis.Number("G4", "G5"),
                      basis.Number("G4-1", "G2-1"));
}

double RoundShear(const jxSect_AISC& s, const AiscBasis& basis)
{
    const double Fcr = std::min(0.6 * basis.Fy, 0.78 * kSteelE / std::pow(s.lambda_w, 1.5));
    Noted(basis.trace, {"Fcr [ksi]", Fcr, basis.Number("G5", "G6"), basis.Number("G5-2b", "G6-2b")});
    return Noted(basis.trace, {"Vn [kip]", Fcr * s.A / 2, basis.Number("G5", "G6"), basis.Number("G5-1", "G6-1")});
}

ShearStrength WebShear(const jxSect_AISC& s, const AiscBasis& basis)
{
    // Rolled I webs of this slenderness reach full yield in tests, which is why their resistance factor is 1.
    const bool isStocky = IsIShape(s.shape) && s.lambda_w <= 2.24 * basis.Root();
    double Cv = 1;
    if (!isStocky)
        Cv = basis.Is16() ? Cv1(s.lambda_w, basis.Fy) : Cv2(s.lambda_w, kTubeWall, basis.Fy);
    return {PlateShear(basis, s.d * s.tw, Cv, "G2.1", "G2-1"), isStocky};
}

int LegsAlongForce(const jxSect_AISC& s)
{
    return s.shape == kShape2L ? 2 : 1;
}

}  // namespace

ShearStrength ShearAlong2(const jxSect_AISC& shape, const AiscBasis& basis)
{
    if (IsIShape(shape.shape) || IsChannel(shape.shape))
        return WebShear(shape, basis);
    if (IsTee(shape.shape))
        return {EdgePlateShear(basis, shape.d * shape.tw, shape.lambda_w, basis.Number("G3", "G2.1"),
                               basis.Number("G3-1", "G2-1"))};
    if (IsBox(shape.shape))
        return {TubeShear(shape, basis, shape.lambda_w)};
    if (IsRoundTube(shape.shape))
        return {RoundShear(shape, basis)};
    return {EdgePlateShear(basis, LegsAlongForce(shape) * shape.d * shape.t, shape.d / shape.t,
                           basis.Number("G3", "G4"), basis.Number("G3-1", "G2-1"))};
}

ShearStrength ShearAlong3(const jxSect_AISC& shape, const AiscBasis& basis)
{
    if (IsIShape(shape.shape) || IsChannel(shape.shape))
        return {EdgePlateShear(basis, 2 * shape.b * shape.tf, shape.lambda_f, basis.Number("G6", "G7"),
                               basis.Number("G6-1", "G2-1"))};
    if (IsTee(shape.shape))
        return {EdgePlateShear(basis, shape.b * shape.tf, shape.lambda_f, basis.Number("G6", "G7"),
                               basis.Number("G6-1", "G2-1"))};
    if (IsBox(shape.shape))
        return {TubeShear(shape, basis, shape.lambda_f)};
    if (IsRoundTube(shape.shape))
        return {RoundShear(shape, basis)};
    return {EdgePlateShear(basis, LegsAlongForce(shape) * shape.b * shape.t, shape.b / shape.t,
                           basis.Number("G3", "G4"), basis.Number("G3-1", "G2-1"))};
}

}  // namespace qvx
