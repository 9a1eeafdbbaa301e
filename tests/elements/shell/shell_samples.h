#pragma once

#include <array>
#include <cmath>
#include <random>

#include "elements/shell/shell_stress.h"

namespace qvx::test {

/// A rotation in space as its three columns.
struct SpaceRotation
{
    std::array<jxPoint, 3> e = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

    jxPoint operator()(const jxPoint& v) const { return v.x * e[0] + v.y * e[1] + v.z * e[2]; }
};

/// Random quadrilaterals and rotations, the same in every run.
class ShellSamples
{
public:
    /// Convex, each corner of a 2 x 1.5 rectangle moved by up to 0.3 each way, in the x-y plane.
    QuadCorners Quad()
    {
        QuadCorners p = {{{0, 0, 0}, {2, 0, 0}, {2, 1.5, 0}, {0, 1.5, 0}}};
        for (jxPoint& corner : p)
            corner += {0.3 * Uniform(), 0.3 * Uniform(), 0};
        return p;
    }
    QuadCorners Parallelogram()
    {
        const jxPoint a = {1.5 + 0.4 * Uniform(), 0.6 * Uniform(), 0};
        const jxPoint b = {0.6 * Uniform(), 1.2 + 0.4 * Uniform(), 0};
        return {{{0, 0, 0}, a, a + b, b}};
    }
    SpaceRotation Rotation()
    {
        const jxPoint axis = {Uniform(), Uniform(), Uniform() + 0.01};
        const double angle = 3 * Uniform();
        SpaceRotation turn;
        for (jxPoint& e : turn.e)
            e = arbitrary_rotate(e, angle, axis);
        return turn;
    }
    jxPoint Vector() { return {Uniform(), Uniform(), Uniform()}; }
    /// Between -1 and 1.
    double Uniform() { return std::uniform_real_distribution<double>(-1, 1)(random_); }

private:
    std::mt19937_64 random_{20240611};
};

inline QuadCorners Turned(const QuadCorners& p, const SpaceRotation& turn, const jxPoint& shift = {})
{
    QuadCorners out;
    for (std::size_t i = 0; i < 4; ++i)
        out[i] = turn(p[i]) + shift;
    return out;
}

/// The same quadrilateral with its numbering begun at another corner.
inline QuadCorners Renumbered(const QuadCorners& p, std::size_t start)
{
    return {p[start % 4], p[(start + 1) % 4], p[(start + 2) % 4], p[(start + 3) % 4]};
}

template <Number Real>
PlaneQuad<Real> Plane(const QuadCorners& p)
{
    PlaneQuad<Real> q;
    for (std::size_t i = 0; i < 4; ++i) {
        q.x[i] = p[i].x;
        q.y[i] = p[i].y;
    }
    return q;
}

/// Displacements of the four nodes from a field of translation and rotation, both vectors in space.
template <Number Real, class Field>
std::array<Real, 24> NodalValues(const QuadCorners& p, const Field& field)
{
    std::array<Real, 24> u;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto [translation, rotation] = field(p[i]);
        const std::array<double, 6> values = {translation.x, translation.y, translation.z,
                                              rotation.x,    rotation.y,    rotation.z};
        for (std::size_t d = 0; d < 6; ++d)
            u[6 * i + d] = values[d];
    }
    return u;
}

/// Number of independent rows, by elimination with full pivoting.
template <Number Real, int N>
int Rank(FixedMatrix<Real, N, N> a)
{
    using std::fabs;
    Real first(0);
    for (int step = 0; step < N; ++step) {
        int row = step, column = step;
        for (int i = step; i < N; ++i)
            for (int j = step; j < N; ++j)
                if (fabs(a(row, column)) < fabs(a(i, j))) {
                    row = i;
                    column = j;
                }
        const Real pivot = a(row, column);
        if (step == 0)
            first = fabs(pivot);
        if (fabs(pivot) < first * 1e-9)
            return step;
        for (int k = 0; k < N; ++k)
            std::swap(a(row, k), a(step, k));
        for (int k = 0; k < N; ++k)
            std::swap(a(k, column), a(k, step));
        for (int i = step + 1; i < N; ++i) {
            const Real factor = a(i, step) / pivot;
            for (int j = step; j < N; ++j)
                a(i, j) -= factor * a(step, j);
        }
    }
    return N;
}

template <Number Real, int N>
Real LargestTerm(const FixedMatrix<Real, N, N>& a)
{
    using std::fabs;
    Real largest(0);
    for (int i = 0; i < N * N; ++i)
        if (const Real term = fabs(a.data()[i]); term > largest)
            largest = term;
    return largest;
}

template <Number Real, int N>
double LargestDifference(const FixedMatrix<Real, N, N>& a, const FixedMatrix<Real, N, N>& b)
{
    double largest = 0;
    for (int i = 0; i < N * N; ++i)
        largest = std::max(largest, std::fabs(static_cast<double>(a.data()[i] - b.data()[i])));
    return largest;
}

template <Number Real, std::size_t N>
double LargestValue(const std::array<Real, N>& v)
{
    double largest = 0;
    for (const Real& value : v)
        largest = std::max(largest, std::fabs(static_cast<double>(value)));
    return largest;
}

}  // namespace qvx::test
