#include "elements/member/member_curve.h"

#include <cassert>

namespace {

// Where a load across the member acts, and the sense of a moment: a positive moment about local y turns x towards -z,
// so in the plane of My it has the sense opposite to that of a moment about z in the plane of Mz.
struct BendingPlane
{
    double& V;
    double& M;
    double sense;  ///< of a moment load
};

BendingPlane PlaneOf(int dir, double f[6])
{
    assert(dir == 1 || dir == 2 || dir == 4 || dir == 5);
    const bool isMajor = dir == 1 || dir == 5;
    return isMajor ? BendingPlane{f[1], f[5], +1} : BendingPlane{f[2], f[4], -1};
}

double PositionOf(double distance, int bAbsoluteDistance, double L)
{
    return bAbsoluteDistance ? distance : distance * L;
}

// Part of a load across the member: uniform (order 1) or a triangle that rises from x1 (order 2). Of a load with the
// total W the part (t / c)^order lies left of the section at x1 + t, with its centroid t / (order + 1) before it.
struct LoadPart
{
    double total;
    double centroid;
    int order;
};

void AddForcePart(const LoadPart& part, double x1, double x2, double L, double x, const BendingPlane& plane)
{
    assert(part.order == 1 || part.order == 2);
    const double W = part.total;
    const double h = L - part.centroid;
    // Simply supported span: reactions W h / L at the start and W centroid / L at the end. Left of the load the section
    // sees the first alone, right of it the second, and inside it the share that lies on its left besides.
    if (x1 >= x) {
        plane.M -= W * h * x / L;
        plane.V -= W * h / L;
    } else if (x > x2) {
        plane.M -= (1 - x / L) * W * part.centroid;
        plane.V += W * part.centroid / L;
    } else {
        const double t = x - x1;
        const double share = part.order == 1 ? t / (x2 - x1) : t * t / ((x2 - x1) * (x2 - x1));
        plane.V -= W * (h / L - share);
        plane.M -= W * (h * x / L - share * t / (part.order + 1));
    }
}

// Part of a distributed moment with the given total and the moment m per length that the part has on average.
void AddMomentPart(double total, double m, double x1, double x2, double L, double x, const BendingPlane& plane)
{
    const double s = plane.sense;
    // A moment has the same pair of reactions wherever it stands, so the shear is one number along the whole member.
    plane.V += total / L;  // without the sense: see the header
    if (x1 >= x)
        plane.M += total * x / L * s;
    else if (x > x2)
        plane.M -= (1 - x / L) * total * s;
    else
        plane.M += ((x2 - x1) * x / L - x + x1) * m * s;
}

}  // namespace

void _VMD_POINT1(double P, double a, double L, double x, int dir, double f[6])
{
    const BendingPlane plane = PlaneOf(dir, f);
    // Exactly at an end that carries the load there is nothing between load and support: the shear is the whole of it,
    // on the side of the span, and the moment 0.
    if (a == 0 && x == 0) {
        plane.V -= P;
    } else if (a == L && x == L) {
        plane.V += P;
    } else if (a < x) {
        plane.M -= (1 - x / L) * P * a;
        plane.V += P * a / L;
    } else {
        plane.M -= (L - a) * P * x / L;
        plane.V -= (L - a) * P / L;
    }
}

void _VMD_POINT2(double T, double a, double L, double x, int dir, double f[6])
{
    const BendingPlane plane = PlaneOf(dir, f);
    const double s = plane.sense;
    plane.V += s * T / L;
    if (a == 0 && x == 0)
        plane.M -= s * T;
    else if (a == L && x == L)
        plane.M += s * T;
    else if (a < x)
        plane.M -= (1 - x / L) * T * s;
    else
        plane.M += T * x / L * s;
}

void _VMD_POINT3(double P, double a, double /*L*/, double x, int dir, double f[6])
{
    if (a >= x)
        f[dir] += P;
}

void _VMD_LINE1(double w1, double w2, double x1, double x2, double L, double x, int dir, double f[6])
{
    const BendingPlane plane = PlaneOf(dir, f);
    const double c = x2 - x1;
    if (w1 != 0)
        AddForcePart({.total = c * w1, .centroid = x1 + c / 2, .order = 1}, x1, x2, L, x, plane);
    if (w1 != w2)
        AddForcePart({.total = c * (w2 - w1) / 2, .centroid = x1 + 2 * c / 3, .order = 2}, x1, x2, L, x, plane);
}

void _VMD_LINE2(double w1, double w2, double x1, double x2, double L, double x, int dir, double f[6])
{
    const BendingPlane plane = PlaneOf(dir, f);
    const double c = x2 - x1;
    if (w1 != 0)
        AddMomentPart(c * w1, w1, x1, x2, L, x, plane);
    if (w1 != w2)
        AddMomentPart(c * (w2 - w1) / 2, (w2 - w1) / 2, x1, x2, L, x, plane);
}

void _VMD_LINE3(double w1, double w2, double x1, double x2, double /*L*/, double x, int dir, double f[6])
{
    // Right of x the rest of the load, which the end node has still to hold: forces along the axis are kept as the sum
    // of what acts on the part towards the end.
    const double c = x2 - x1;
    if (x1 >= x) {
        f[dir] += (w1 + w2) / 2 * c;
    } else if (x <= x2) {
        const double w = w1 + (w2 - w1) * (x - x1) / c;
        f[dir] += (w + w2) / 2 * (x2 - x);
    }
}

void VMD_POINT(jxPtLoadIterator first, jxPtLoadIterator last, double L, double x, double f[6])
{
    for (; first != last; ++first) {
        if (first->value == 0)
            continue;
        const double a = PositionOf(first->distance, first->bAbsoluteDistance, L);
        switch (first->dir) {
        case 0:
        case 3:
            _VMD_POINT3(first->value, a, L, x, first->dir, f);
            break;
        case 1:
        case 2:
            _VMD_POINT1(first->value, a, L, x, first->dir, f);
            break;
        case 4:
        case 5:
            _VMD_POINT2(first->value, a, L, x, first->dir, f);
            break;
        default:
            break;
        }
    }
}

void VMD_LINE(jxLnLoadIterator first, jxLnLoadIterator last, double L, double x, double f[6])
{
    for (; first != last; ++first) {
        // A load that is 0 at both ends is skipped before its positions are looked at: they may be anything then.
        const double w1 = first->value1;
        const double w2 = first->value2;
        if (w1 == 0 && w2 == 0)
            continue;
        const double x1 = PositionOf(first->distance1, first->bAbsoluteDistance, L);
        const double x2 = PositionOf(first->distance2, first->bAbsoluteDistance, L);
        switch (first->dir) {
        case 0:
        case 3:
            _VMD_LINE3(w1, w2, x1, x2, L, x, first->dir, f);
            break;
        case 1:
        case 2:
            _VMD_LINE1(w1, w2, x1, x2, L, x, first->dir, f);
            break;
        case 4:
        case 5:
            _VMD_LINE2(w1, w2, x1, x2, L, x, first->dir, f);
            break;
        default:
            break;
        }
    }
}

void VMD_X(double f[6], jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint, jxLnLoadIterator firstLine,
           jxLnLoadIterator lastLine, double L, double x)
{
    for (int i = 0; i < 6; ++i)
        f[i] = 0;
    VMD_POINT(firstPoint, lastPoint, L, x, f);
    VMD_LINE(firstLine, lastLine, L, x, f);
}

void VMD(std::vector<jxVMD>& out, jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint, jxLnLoadIterator firstLine,
         jxLnLoadIterator lastLine, double L, int n)
{
    // One list for all members of a thread: no allocation per member.
    thread_local std::vector<double> stations = [] {
        std::vector<double> list;
        list.reserve(256);
        return list;
    }();
    assert(L > 0 && n > 0 && "a member with intervals");
    BREAK_POINTS(stations, firstPoint, lastPoint, firstLine, lastLine, L, n, nullptr);
    out.reserve(out.size() + stations.size());
    for (const double x : stations) {
        double f[6];
        VMD_X(f, firstPoint, lastPoint, firstLine, lastLine, L, x);
        out.push_back(
            {.x = x / L, .Fx = f[0], .Fy = f[1], .Fz = f[2], .Mx = f[3], .My = f[4], .Mz = f[5], .Dy = 0, .Dz = 0});
    }
}
