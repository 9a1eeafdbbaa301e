#include "elements/member/member_curve.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace {

constexpr int kMaxIntervals = 255;
constexpr std::size_t kMaxBeforePoint = 256;  // the list stays near its reserved size
constexpr std::size_t kMaxBeforeLine = 254;
constexpr double kJumpOffset = 1e-6;  // of L: a second station on the far side of a jump

void AddRegularStations(std::vector<double>& out, double L, int n)
{
    assert(n > 0 && L > 0);
    const int m = std::min(n, kMaxIntervals);
    const double step = L / m;
    for (int i = 0; i <= m; ++i)
        // The last of them is added as L itself: m times the step may miss it by a rounding on either side.
        if (i * step < L)
            out.push_back(i * step);
    out.push_back(L);
}

// Extra stations of the model's own loads at the very ends of the member. End forces (id below 1) need none: the curve
// shows them at the ends themselves.
void AddEndLoadStation(std::vector<double>& out, const jxPtLoad& load, double p, double L)
{
    // A fraction of 0 or 1 is at the end exactly; whether a distance in length is would hang on a rounding.
    if (load.bAbsoluteDistance || load.id < 1)
        return;
    if (load.distance == 0 && p + kJumpOffset * L < L)
        out.push_back(p + kJumpOffset * L);
    if (load.distance == 1.0 && p - kJumpOffset * L > 0)
        out.push_back(p - kJumpOffset * L);
}

void AddPointLoadStations(std::vector<double>& out, jxPtLoadIterator first, jxPtLoadIterator last, double L)
{
    for (; first != last; ++first) {
        const double p = first->bAbsoluteDistance ? first->distance : first->distance * L;
        out.push_back(p);
        AddEndLoadStation(out, *first, p, L);
        if (p == 0 || !(p + kJumpOffset * L < L))
            continue;
        // Members with hundreds of point loads lose stations, not forces: every station that there is sees all loads.
        if (out.size() >= kMaxBeforePoint)
            return;
        out.push_back(p + kJumpOffset * L);
    }
}

void AddLineLoadStations(std::vector<double>& out, jxLnLoadIterator first, jxLnLoadIterator last, double L)
{
    for (; first != last && out.size() < kMaxBeforeLine; ++first) {
        const double scale = first->bAbsoluteDistance ? 1 : L;
        const double x1 = first->distance1 * scale;
        const double x2 = first->distance2 * scale;
        // The middle too: under a part load the moment is a curve of its own between stations that may lie far apart.
        out.insert(out.end(), {x1, (x1 + x2) * 0.5, x2});
    }
}

// Zero of the straight line from (x0, y0) to (x1, y1), y0 and y1 of opposite signs; never outside the interval.
double ZeroOfLine(double x0, double y0, double x1, double y1)
{
    assert(x0 <= x1 && y0 * y1 < 0 && "a change of sign");
    return std::clamp(x0 + (x1 - x0) * (y0 / (y0 - y1)), x0, x1);
}

// Zero that the interval between two stations contributes, as a fraction of the length. Fy is looked at only where Mz
// is not 0 and does not change its sign: a zero of Mz takes precedence.
void AddZero(std::vector<double>& out, const jxVMD& a, const jxVMD& b, double L)
{
    if (a.Mz == 0) {
        if (b.Mz != 0)
            out.push_back(L * a.x);
    } else if (a.Mz * b.Mz < 0) {
        out.push_back(L * ZeroOfLine(a.x, a.Mz, b.x, b.Mz));
    } else if (a.Fy == 0) {
        out.push_back(L * a.x);
    } else if (a.Fy * b.Fy < 0) {
        out.push_back(L * ZeroOfLine(a.x, a.Fy, b.x, b.Fy));
    }
}

void AddZerosAndExtremes(std::vector<double>& out, const std::vector<jxVMD>& curve, double L)
{
    double largestM = -std::numeric_limits<double>::infinity();
    double largestD = 0;
    double posM = 0;
    double posD = 0;
    // The extreme of each interval is at its left station. The last station is the end of the member, which has its
    // station in any case.
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        if (curve[i].Mz > largestM) {
            largestM = curve[i].Mz;
            posM = L * curve[i].x;
        }
        if (std::fabs(curve[i].Dy) > largestD) {
            largestD = std::fabs(curve[i].Dy);
            posD = L * curve[i].x;
        }
        AddZero(out, curve[i], curve[i + 1], L);
    }
    out.push_back(posM);
    out.push_back(posD);
}

}  // namespace

int BREAK_POINTS(std::vector<double>& out, jxPtLoadIterator firstPoint, jxPtLoadIterator lastPoint,
                 jxLnLoadIterator firstLine, jxLnLoadIterator lastLine, double L, int n,
                 const std::vector<jxVMD>* previous)
{
    out.clear();
    AddRegularStations(out, L, n);
    AddPointLoadStations(out, firstPoint, lastPoint, L);
    AddLineLoadStations(out, firstLine, lastLine, L);
    if (previous != nullptr)
        AddZerosAndExtremes(out, *previous, L);
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
    assert(std::is_sorted(out.begin(), out.end()) && out.size() >= 2 && "both ends at least");
    return static_cast<int>(out.size());
}
