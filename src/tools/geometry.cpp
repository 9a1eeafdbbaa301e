#include "tools/geometry.h"

#include <algorithm>
#include <cassert>
#include <cmath>

void cos_matrix(double* T, const double c[3][3], int n)
{
    assert(n > 0 && n % 3 == 0);
    std::fill(T, T + n * n, 0.0);
    for (int block = 0; block < n; block += 3)
        for (int r = 0; r < 3; ++r)
            for (int k = 0; k < 3; ++k)
                T[(block + r) * n + block + k] = c[r][k];
}

double area(const jxPoint* p, int n)
{
    assert(n >= 0);
    // Shoelace formula about the first vertex, so that a polygon far from the origin keeps its digits.
    double twice = 0;
    for (int i = 1; i + 1 < n; ++i)
        twice += (p[i].x - p[0].x) * (p[i + 1].y - p[0].y) - (p[i + 1].x - p[0].x) * (p[i].y - p[0].y);
    return twice / 2;
}

bool is_rectangle(const jxPoint& a, const jxPoint& b, const jxPoint& c, const jxPoint& d)
{
    constexpr double kTolerance = 5e-7;
    // A quadrilateral is a rectangle when its diagonals bisect each other (a parallelogram) and are equal: no angle is
    // measured, so a long thin one is judged as sharply as a square.
    const double ac = calc_distance(a, c);
    const double bd = calc_distance(b, d);
    const double limit = kTolerance * std::max(ac, bd);
    const jxPoint centreAc = 0.5 * (a + c);
    const jxPoint centreBd = 0.5 * (b + d);
    return std::fabs(ac - bd) <= limit && calc_distance(centreAc, centreBd) <= limit;
}

double calc_angle(const jxPoint& a, const jxPoint& b)
{
    // atan2 of |a x b| and a . b keeps its digits near 0 and pi, where acos loses half of them.
    jxPoint normal;
    cross(normal, a, b);
    return std::atan2(std::sqrt(dot(normal, normal)), dot(a, b));
}

double CalcSignedAngle3D(const jxPoint& from, const jxPoint& to, const jxPoint& normal)
{
    jxPoint turn;
    cross(turn, from, to);
    // Along the normal the turn has its sign; the normal need not be a unit vector.
    const double length = std::sqrt(dot(normal, normal));
    return length > 0 ? std::atan2(dot(turn, normal) / length, dot(from, to)) : 0.0;
}

/// Walks round the polygon and adds up the turns at its vertices: 2 pi in all, always the same way, is convex.
int test_convex(const jxPoint* p, int n)
{
    assert(n >= 3);
    int positive = 0;
    int negative = 0;
    double turned = 0;
    for (int i = 0; i < n; ++i) {
        const jxPoint e1 = p[(i + 1) % n] - p[i];
        const jxPoint e2 = p[(i + 2) % n] - p[(i + 1) % n];
        const double sine = e1.x * e2.y - e1.y * e2.x;
        const double cosine = e1.x * e2.x + e1.y * e2.y;
        // A vertex is straight when its sine is lost in the rounding of the edges.
        const double limit = 1e-12 * (std::hypot(e1.x, e1.y) * std::hypot(e2.x, e2.y));
        if (std::fabs(sine) <= limit && cosine <= 0)
            return 0;  // an edge of no length, or one that runs back on the last
        positive += sine > limit;
        negative += sine < -limit;
        turned += std::atan2(sine, cosine);
    }
    if ((positive > 0) == (negative > 0) || std::fabs(turned) > 7)
        return 0;
    return std::max(positive, negative) == n ? 1 : 2;
}

double calc_distance3(const jxPoint& p, const jxPoint& a, const jxPoint& b)
{
    const jxPoint ab = b - a;
    const double squared = dot(ab, ab);
    // The foot of the perpendicular, or the end that lies nearer to it.
    const double t = squared > 0 ? std::clamp(dot(p - a, ab) / squared, 0.0, 1.0) : 0.0;
    return calc_distance(p, a + t * ab);
}

bool calc_distance3(double& distance, const jxPoint& p, const jxPoint& a, const jxPoint& b)
{
    jxPoint foot;
    double t = 0;
    distance = calc_distance2(foot, t, a, b, p);
    return t >= 0 && t <= 1;
}

double calc_distance2(jxPoint& foot, double& t, const jxPoint& a, const jxPoint& b, const jxPoint& p)
{
    const jxPoint ab = b - a;
    const double squared = dot(ab, ab);
    t = squared > 0 ? dot(p - a, ab) / squared : 0.0;
    foot = a + t * ab;
    return calc_distance(p, foot);
}

jxPoint centroid(const jxPoint* p, int n)
{
    assert(n >= 1);
    // First moments of the triangles that the first vertex makes with the edges, over their area; about the first
    // vertex, so that a polygon far from the origin keeps its digits.
    double twice = 0;
    jxPoint moment;
    jxPoint mean;
    for (int i = 0; i < n; ++i) {
        const jxPoint u = p[i] - p[0];
        const jxPoint v = p[(i + 1) % n] - p[0];
        const double w = u.x * v.y - v.x * u.y;
        twice += w;
        moment += w * (u + v);
        mean += (1.0 / n) * u;
    }
    const jxPoint c = p[0] + (twice != 0 ? 1 / (3 * twice) * moment : mean);
    return {c.x, c.y, 0};
}

bool is_parallel_two_ways(const jxPoint& u, const jxPoint& v)
{
    constexpr double kTolerance = 5e-7;
    jxPoint normal;
    cross(normal, u, v);
    return dot(normal, normal) <= kTolerance * kTolerance * dot(u, u) * dot(v, v);
}

double CalcSignedAngle2D(const jxPoint& u, const jxPoint& v)
{
    return std::atan2(u.x * v.y - u.y * v.x, u.x * v.x + u.y * v.y);
}

void pt_interpolate(jxPoint& point, const jxPoint& a, const jxPoint& b, double t)
{
    point = a + t * (b - a);
}

double closestPtSegmentSegment(double& s, double& t, jxPoint& c1, jxPoint& c2, const jxPoint (&first)[2],
                               const jxPoint (&second)[2])
{
    const jxPoint d1 = first[1] - first[0];
    const jxPoint d2 = second[1] - second[0];
    const jxPoint r = first[0] - second[0];
    const double a = dot(d1, d1);
    const double e = dot(d2, d2);
    const double b = dot(d1, d2);
    const double c = dot(d1, r);
    const double f = dot(d2, r);
    // a e - b^2 = a e sin^2: below the rounding of its terms the segments are parallel, and any s will do.
    const double denominator = a * e - b * b;
    s = denominator > 1e-14 * a * e ? std::clamp((b * f - c * e) / denominator, 0.0, 1.0) : 0.0;
    t = e > 0 ? (b * s + f) / e : 0.0;
    if (t < 0 || t > 1 || e == 0) {
        t = std::clamp(t, 0.0, 1.0);
        s = a > 0 ? std::clamp((b * t - c) / a, 0.0, 1.0) : 0.0;
    }
    c1 = first[0] + s * d1;
    c2 = second[0] + t * d2;
    return dot(c1 - c2, c1 - c2);
}
