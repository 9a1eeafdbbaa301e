#include "tools/principal_stress.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "platform/host_services.h"

namespace {

constexpr int kSize = 3;
constexpr int kMaxSweeps = 50;
constexpr int kPairs[3][2] = {{0, 1}, {0, 2}, {1, 2}};

/// Rotation in the plane p, q that makes a[p][q] 0: tangent of the smaller angle.
double TangentOf(double apq, double difference)
{
    const double theta = 0.5 * difference / apq;
    const double t = 1 / (std::fabs(theta) + std::sqrt(1 + theta * theta));
    return theta < 0 ? -t : t;
}

struct Rotation
{
    double s;
    double tau;

    void Turn(double& first, double& second) const
    {
        const double g = first;
        const double h = second;
        first = g - s * (h + g * tau);
        second = h + s * (g - h * tau);
    }
};

bool IsLost(double value, double against)
{
    // Beyond the last digit of the other even a hundred times.
    return std::fabs(against) + 100 * std::fabs(value) == std::fabs(against);
}

/// Term (p, q) of the upper triangle.
double& Upper(double a[3][3], int p, int q)
{
    return p < q ? a[p][q] : a[q][p];
}

void RotateAway(double a[3][3], double d[3], double z[3], double v[3][3], int p, int q)
{
    assert(0 <= p && p < q && q < kSize);
    const double difference = d[q] - d[p];
    const double t = IsLost(a[p][q], difference) ? a[p][q] / difference : TangentOf(a[p][q], difference);
    const double c = 1 / std::sqrt(1 + t * t);
    const Rotation rotation{.s = t * c, .tau = t * c / (1 + c)};
    const double h = t * a[p][q];
    z[p] -= h;
    z[q] += h;
    d[p] -= h;
    d[q] += h;
    a[p][q] = 0;
    const int other = kSize - p - q;
    rotation.Turn(Upper(a, other, p), Upper(a, other, q));
    for (int j = 0; j < kSize; ++j)
        rotation.Turn(v[j][p], v[j][q]);
}

}  // namespace

void jacobi(double a[3][3], double d[3], double v[3][3])
{
    double b[3], z[3] = {};  // diagonal at the start of a sweep, its change during the sweep
    for (int i = 0; i < kSize; ++i) {
        for (int j = 0; j < kSize; ++j)
            v[i][j] = i == j ? 1 : 0;
        b[i] = d[i] = a[i][i];
    }
    for (int sweep = 1; sweep <= kMaxSweeps; ++sweep) {
        const double sum = std::fabs(a[0][1]) + std::fabs(a[0][2]) + std::fabs(a[1][2]);
        if (sum == 0)
            return;
        // The threshold of the first sweeps leaves small terms alone until the large ones, which would make them grow
        // again, are gone.
        const double threshold = sweep < 4 ? 0.2 * sum / (kSize * kSize) : 0;
        for (const auto& [p, q] : kPairs) {
            if (sweep > 4 && IsLost(a[p][q], d[p]) && IsLost(a[p][q], d[q]))
                a[p][q] = 0;
            else if (std::fabs(a[p][q]) > threshold)
                RotateAway(a, d, z, v, p, q);
        }
        for (int i = 0; i < kSize; ++i) {
            b[i] += z[i];
            d[i] = b[i];
            z[i] = 0;
        }
    }
    AfxMessageBox(L"Too many iterations in routine jacobi.");
}

namespace qvx {

PrincipalStresses PrincipalStressesOf(const double (&stress)[6])
{
    const auto& [xx, yy, zz, xy, yz, xz] = stress;
    double a[3][3] = {{xx, xy, xz}, {xy, yy, yz}, {xz, yz, zz}};
    double d[3], v[3][3];
    jacobi(a, d, v);

    int order[3] = {0, 1, 2};
    std::stable_sort(order, order + 3, [&d](int i, int j) { return d[i] > d[j]; });
    assert(!(d[order[0]] < d[order[1]]) && !(d[order[1]] < d[order[2]]));
    PrincipalStresses result;
    for (int k = 0; k < kSize; ++k) {
        result.S[k] = d[order[k]];
        for (int i = 0; i < kSize; ++i)
            result.v[k][i] = v[i][order[k]];
    }
    return result;
}

double VonMisesStress(const double (&stress)[6])
{
    const auto& [xx, yy, zz, xy, yz, xz] = stress;
    // sqrt(3 J2), in components so that no principal value is needed.
    const double normal = (xx - yy) * (xx - yy) + (yy - zz) * (yy - zz) + (zz - xx) * (zz - xx);
    return std::sqrt(normal / 2 + 3 * (xy * xy + yz * yz + xz * xz));
}

}  // namespace qvx
