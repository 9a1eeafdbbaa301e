#include "elements/member/member_fixed_end.h"

#include <array>
#include <cassert>
#include <cmath>

#include "model/records/node.h"
#include "tools/jx_exception.h"

namespace {

/// Nodal forces and moments of one plane, at the start (i) and at the end (j).
struct EndActions
{
    double Vi = 0;
    double Vj = 0;
    double Mi = 0;
    double Mj = 0;
};

EndActions operator*(double s, const EndActions& a)
{
    return {.Vi = s * a.Vi, .Vj = s * a.Vj, .Mi = s * a.Mi, .Mj = s * a.Mj};
}

EndActions& operator+=(EndActions& a, const EndActions& b)
{
    a.Vi += b.Vi;
    a.Vj += b.Vj;
    a.Mi += b.Mi;
    a.Mj += b.Mj;
    return a;
}

/// Whether one degree of freedom is released at the start and at the end; Undefined for any character but '0' and '1'.
enum class Ends { FixedFixed, ReleasedFixed, FixedReleased, ReleasedReleased, Undefined };

Ends EndsOf(const wchar_t rels[2][7], int dof)
{
    const wchar_t i = rels[0][dof];
    const wchar_t j = rels[1][dof];
    if ((i != L'0' && i != L'1') || (j != L'0' && j != L'1'))
        return Ends::Undefined;
    if (i == L'1')
        return j == L'1' ? Ends::ReleasedReleased : Ends::ReleasedFixed;
    return j == L'1' ? Ends::FixedReleased : Ends::FixedFixed;
}

// A unit force at a: the values there of the shapes that the member takes under a unit displacement or rotation of each
// end, the cubic Hermite polynomials when both ends are fixed.
EndActions UnitForce(double a, double L, Ends ends)
{
    assert(L > 0);
    // a + b = L. Each closed form has the load at a shape function of unit height at the end in question; their two
    // forces add up to 1 and their moments about an end to a.
    const double b = L - a;
    switch (ends) {
    case Ends::FixedFixed:
        return {.Vi = b * b / (L * L) * (1 + 2 * a / L),
                .Vj = a * a / (L * L) * (1 + 2 * b / L),
                .Mi = a * b * b / (L * L),
                .Mj = -a * a * b / (L * L)};
    case Ends::ReleasedFixed:
        return {.Vi = b * b / (2 * L * L) * (3 - b / L),
                .Vj = a / (2 * L) * (3 - a * a / (L * L)),
                .Mi = 0,
                .Mj = -a * b / (2 * L) * (1 + a / L)};
    case Ends::FixedReleased:
        return {.Vi = b / (2 * L) * (3 - b * b / (L * L)),
                .Vj = a * a / (2 * L * L) * (3 - a / L),
                .Mi = a * b / (2 * L) * (1 + b / L),
                .Mj = 0};
    case Ends::ReleasedReleased:
        return {.Vi = b / L, .Vj = a / L, .Mi = 0, .Mj = 0};
    case Ends::Undefined:
        break;
    }
    return {};
}

// A unit moment at a: the slopes there of the same shapes.
EndActions UnitMoment(double a, double L, Ends ends)
{
    // Derivatives along a of what stands in UnitForce: the work of a couple is its moment times the slope.
    const double b = L - a;
    switch (ends) {
    case Ends::FixedFixed: {
        const double V = 6 * a * b / (L * L * L);
        return {.Vi = -V, .Vj = V, .Mi = -b / L * (2 - 3 * b / L), .Mj = -a / L * (2 - 3 * a / L)};
    }
    case Ends::ReleasedFixed: {
        const double V = 3 / (2 * L) * (1 - a * a / (L * L));
        return {.Vi = -V, .Vj = V, .Mi = 0, .Mj = -(1 - 3 * a * a / (L * L)) / 2};
    }
    case Ends::FixedReleased: {
        const double V = 3 / (2 * L) * (1 - b * b / (L * L));
        return {.Vi = -V, .Vj = V, .Mi = -(1 - 3 * b * b / (L * L)) / 2, .Mj = 0};
    }
    case Ends::ReleasedReleased:
        return {.Vi = -1 / L, .Vj = 1 / L, .Mi = 0, .Mj = 0};
    case Ends::Undefined:
        break;
    }
    return {};
}

/// Ordinates w1 at x1 to w2 at x2 [length].
struct Trapezoid
{
    double w1;
    double w2;
    double x1;
    double x2;

    double Total() const { return (w1 + w2) / 2 * (x2 - x1); }
};

// Integral of a unit action over the trapezoid by three Gauss points: exact, as the shapes are cubic, the ordinate
// linear and the rule right up to degree five. Every share is a sum without cancellation, however short the load is and
// wherever it stands.
template <class UnitAction>
EndActions Integrate(const Trapezoid& load, UnitAction unitAction)
{
    constexpr double kAbscissa = 0.77459666924148337704;  // sqrt(3/5)
    constexpr std::array<std::array<double, 2>, 3> kPoints = {
        {{-kAbscissa, 5.0 / 18.0}, {0.0, 8.0 / 18.0}, {kAbscissa, 5.0 / 18.0}}};
    EndActions sum;
    for (const auto& [abscissa, weight] : kPoints) {
        // x2 below x1 gives a negative length and so the negative of the load, which is what the sum of its ordinates
        // is.
        const double r = (1 + abscissa) / 2;  // from 0 at x1 to 1 at x2
        const double w = load.w1 * (1 - r) + load.w2 * r;
        sum += w * weight * (load.x2 - load.x1) * unitAction(load.x1 + r * (load.x2 - load.x1));
    }
    return sum;
}

// dir is the direction of the force, 1 or 2. Rotation about local y turns x towards -z: its moments change sign.
void AddForce(double fem[2][6], int dir, const EndActions& actions)
{
    assert(dir == kY || dir == kZ);
    const int rotation = dir == kY ? kOZ : kOY;
    const int sign = dir == kY ? 1 : -1;
    fem[0][dir] += actions.Vi;
    fem[1][dir] += actions.Vj;
    fem[0][rotation] += sign * actions.Mi;
    fem[1][rotation] += sign * actions.Mj;
}

// dir is the axis of the moment, 4 or 5: here it is the shears that change sign about local y.
void AddMoment(double fem[2][6], int dir, const EndActions& actions)
{
    assert(dir == kOY || dir == kOZ);
    const int force = dir == kOZ ? kY : kZ;
    const int sign = dir == kOZ ? 1 : -1;
    fem[0][force] += sign * actions.Vi;
    fem[1][force] += sign * actions.Vj;
    fem[0][dir] += actions.Mi;
    fem[1][dir] += actions.Mj;
}

/// Load along or about the axis: how much of it each end takes when both hold.
struct AxialShares
{
    double start;
    double end;
};

// An end that is released leaves the whole load to the other one; only '1' at the start outranks what the end says.
void AddAxial(double fem[2][6], int dir, const wchar_t rels[2][7], double total, const AxialShares& shares)
{
    assert((dir == kX || dir == kOX) && "along or about the axis");
    const bool bStartReleased = rels[0][dir] == L'1';
    const bool bEndReleased = rels[1][dir] == L'1';
    if (bStartReleased && bEndReleased)
        throw jxException(L"unstable axial or torsional direction");
    if (bStartReleased) {
        fem[1][dir] += total;
    } else if (bEndReleased) {
        fem[0][dir] += total;
    } else if (rels[0][dir] == L'0' && rels[1][dir] == L'0') {
        fem[0][dir] += shares.start;
        fem[1][dir] += shares.end;
    }
}

int RotationOfForce(int dir)
{
    return dir == kY ? kOZ : kOY;
}

}  // namespace

void _FEM_POINT1(double P, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6])
{
    AddForce(fem, dir, P * UnitForce(a, L, EndsOf(rels, RotationOfForce(dir))));
}

void _FEM_POINT2(double M, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6])
{
    AddMoment(fem, dir, M * UnitMoment(a, L, EndsOf(rels, dir)));
}

void _FEM_POINT3(double P, double a, double L, int dir, const wchar_t rels[2][7], double fem[2][6])
{
    const double b = L - a;
    AddAxial(fem, dir, rels, P, {.start = (1 - a / L) * P, .end = (1 - b / L) * P});
}

void _FEM_LINE1(double w1, double w2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                double fem[2][6])
{
    const Ends ends = EndsOf(rels, RotationOfForce(dir));
    const auto unitForce = [L, ends](double a) { return UnitForce(a, L, ends); };
    AddForce(fem, dir, Integrate({.w1 = w1, .w2 = w2, .x1 = x1, .x2 = x2}, unitForce));
}

void _FEM_LINE2(double m1, double m2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                double fem[2][6])
{
    const Trapezoid load{.w1 = m1, .w2 = m2, .x1 = x1, .x2 = x2};
    const Ends ends = EndsOf(rels, dir);
    if (ends == Ends::ReleasedReleased) {
        // The couple of the shears is the total moment T times L here, where a concentrated moment gives T. It is the
        // value of the exported closed form, and a host that calls the form to check a run must see what the run uses.
        // A distributed moment on a member that is released at both ends is better entered as point moments. Test:
        // MemberLineLoads.DistributedMomentOnReleasedMemberIsNotDividedByItsLength.
        const double T = load.Total();
        AddMoment(fem, dir, {.Vi = -T, .Vj = T, .Mi = 0, .Mj = 0});
        return;
    }
    AddMoment(fem, dir, Integrate(load, [L, ends](double a) { return UnitMoment(a, L, ends); }));
}

void _FEM_LINE3(double w1, double w2, double x1, double x2, double L, int dir, const wchar_t rels[2][7],
                double fem[2][6])
{
    const Trapezoid load{.w1 = w1, .w2 = w2, .x1 = x1, .x2 = x2};
    const auto share = [L](double a) { return EndActions{.Vi = 1 - a / L, .Vj = a / L, .Mi = 0, .Mj = 0}; };
    const EndActions shares = Integrate(load, share);
    assert(!(std::fabs(shares.Vi + shares.Vj - load.Total()) >
             1e-9 * (std::fabs(w1) + std::fabs(w2)) * std::fabs(x2 - x1)) &&
           "the two ends take the whole load");
    AddAxial(fem, dir, rels, load.Total(), {.start = shares.Vi, .end = shares.Vj});
}

void FEM_POINT(jxPtLoadIterator first, jxPtLoadIterator last, double L, const wchar_t rels[2][7], double fem[2][6])
{
    for (auto load = first; load != last; ++load) {
        if (load->value == 0)
            continue;
        const double a = load->bAbsoluteDistance != 0 ? load->distance : load->distance * L;
        switch (load->dir) {
        case kY:
        case kZ:
            _FEM_POINT1(load->value, a, L, load->dir, rels, fem);
            break;
        case kOY:
        case kOZ:
            _FEM_POINT2(load->value, a, L, load->dir, rels, fem);
            break;
        case kX:
        case kOX:
            _FEM_POINT3(load->value, a, L, load->dir, rels, fem);
            break;
        default:
            break;
        }
    }
}

void FEM_LINE(jxLnLoadIterator first, jxLnLoadIterator last, double L, const wchar_t rels[2][7], double fem[2][6])
{
    for (auto load = first; load != last; ++load) {
        if (load->value1 == 0 && load->value2 == 0)
            continue;
        const double unit = load->bAbsoluteDistance != 0 ? 1.0 : L;
        const double x1 = load->distance1 * unit;
        const double x2 = load->distance2 * unit;
        switch (load->dir) {
        case kY:
        case kZ:
            _FEM_LINE1(load->value1, load->value2, x1, x2, L, load->dir, rels, fem);
            break;
        case kOY:
        case kOZ:
            _FEM_LINE2(load->value1, load->value2, x1, x2, L, load->dir, rels, fem);
            break;
        case kX:
        case kOX:
            _FEM_LINE3(load->value1, load->value2, x1, x2, L, load->dir, rels, fem);
            break;
        default:
            break;
        }
    }
}

void FEM_THERMAL(jxThermalLoadIterator first, jxThermalLoadIterator last, double A, const jxMat& mat, double fem[2][6])
{
    for (auto load = first; load != last; ++load) {
        if (load->dT == 0)
            continue;
        const double F = A * mat.E * mat.Tc * load->dT;
        fem[0][kX] -= F;
        fem[1][kX] += F;
    }
}
