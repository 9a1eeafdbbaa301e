#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <optional>

#include "rc/surface_point.h"

namespace qvx {
namespace {

using Vector = std::array<double, 3>;  // P, M3, M2

Vector VectorOf(const P_M_Point& p)
{
    return {p.P, p.M3, p.M2};
}

double Dot(const Vector& a, const Vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Where a ray meets a triangle.
struct Meeting
{
    double reach = 0;        ///< how many times the ray goes that far
    double weights[3] = {};  ///< of the corners, in parts of 1
};

/// Meeting of the ray with the triangle A, B, C; nothing when it passes beside it or runs the other way.
///
/// wA A + wB B + wC C = V ray for the triple products wA = ray (B x C) and so on and V = A (B x C): the weights of the
/// corners but for their sum, whatever the scales of force and moment.
std::optional<Meeting> Meet(const Vector& ray, const Vector& A, const Vector& B, const Vector& C)
{
    constexpr double kInside = -1e-9;  // of the sum: on an edge, but for rounding
    const Vector BxC = Cross(B, C);
    const double weights[3] = {Dot(ray, BxC), Dot(ray, Cross(C, A)), Dot(ray, Cross(A, B))};
    const double sum = weights[0] + weights[1] + weights[2];
    if (sum ==
        0)  // along the plane of the triangle, or no triangle: the curves meet where tension or compression is pure
        return std::nullopt;
    for (const double weight : weights)
        if (!(weight / sum >= kInside))
            return std::nullopt;
    const double reach = Dot(A, BxC) / sum;
    if (!(reach > 0))
        return std::nullopt;
    return Meeting{reach, {weights[0] / sum, weights[1] / sum, weights[2] / sum}};
}

/// The two curves of a strip of patches.
struct Strip
{
    const std::vector<P_M_Point>& left;
    const std::vector<P_M_Point>& right;

    std::size_t PatchCount() const
    {
        assert(!left.empty() && left.size() == right.size() && "curves of one surface have equally many points");
        return left.size() - 1;
    }
};

double LengthOf(const jxSectionLoad& load)
{
    return std::sqrt(load.P * load.P + load.M3 * load.M3 + load.M2 * load.M2);
}

P_M_Point PointOf(const Vector& v)
{
    return {.P = v[0], .M3 = v[1], .M2 = v[2]};
}

std::optional<SurfaceHit> HitOfPatch(const Vector& ray, const Strip& strip, std::size_t i)
{
    const std::array<Vector, 4> corners = {VectorOf(strip.left[i]), VectorOf(strip.right[i]),
                                           VectorOf(strip.right[i + 1]), VectorOf(strip.left[i + 1])};
    Vector mean{};
    // A patch of four points is not plane: four triangles about its mean make a surface without gaps, the same seen
    // from either neighbor.
    for (const Vector& corner : corners)
        for (std::size_t j = 0; j < 3; ++j)
            mean[j] += corner[j] / 4;
    for (std::size_t j = 0; j < 4; ++j)
        if (const auto meeting = Meet(ray, corners[j], corners[(j + 1) % 4], mean))
            return SurfaceHit{.point = i,
                              .side = static_cast<int>(j),
                              .corners = {PointOf(corners[j]), PointOf(corners[(j + 1) % 4]), PointOf(mean)},
                              .weights = {meeting->weights[0], meeting->weights[1], meeting->weights[2]},
                              .reach = meeting->reach};
    return std::nullopt;
}

bool IsIn(const Vector& unitRay, const RayCone& cone)
{
    return unitRay[0] * cone.axis[0] + unitRay[1] * cone.axis[1] + unitRay[2] * cone.axis[2] >= cone.leastCosine;
}

/// Cone of the patches `first` to `last` of a strip. The mean of four corners lies in every cone that holds them.
RayCone ConeOf(const Strip& strip, std::size_t first, std::size_t last)
{
    constexpr double kSlack = 1e-7;  // far above rounding and the tolerance of a triangle's edges
    assert(first <= last && last < strip.left.size() && "patches of the strip");
    std::vector<Vector> directions;
    Vector axis{};
    for (std::size_t i = first; i <= last; ++i)
        for (const std::vector<P_M_Point>* curve : {&strip.left, &strip.right}) {
            Vector direction = VectorOf((*curve)[i]);
            const double length = std::sqrt(Dot(direction, direction));
            if (!(length > 0))
                return {};
            for (std::size_t j = 0; j < 3; ++j) {
                direction[j] /= length;
                axis[j] += direction[j];
            }
            directions.push_back(direction);
        }
    const double length = std::sqrt(Dot(axis, axis));
    double cosine = 1;
    for (const Vector& direction : directions)
        cosine = std::min(cosine, Dot(direction, axis) / length);
    if (!(cosine > kSlack))  // wider than a half space: not a cone that tells anything
        return {};
    RayCone cone{.leastCosine = cosine - kSlack};
    for (std::size_t j = 0; j < 3; ++j)
        cone.axis[j] = axis[j] / length;
    return cone;
}

std::optional<SurfaceHit> HitOfStrip(const Vector& ray, const Vector& unitRay, const Strip& strip,
                                     const std::vector<RayCone>& cones)
{
    const std::size_t patches = strip.PatchCount();
    for (std::size_t first = 0; first < patches; first += kPatchesPerCone) {
        const std::size_t group = first / kPatchesPerCone;
        if (group < cones.size() && !IsIn(unitRay, cones[group]))
            continue;
        for (std::size_t i = first; i < std::min(first + kPatchesPerCone, patches); ++i)
            if (const auto hit = HitOfPatch(ray, strip, i))
                return hit;
    }
    return std::nullopt;
}

}  // namespace

void FormCones(std::vector<P_M_Int>& curves)
{
    for (std::size_t k = 0; k < curves.size(); ++k) {
        const Strip strip{curves[k].points, curves[(k + 1) % curves.size()].points};
        curves[k].cones.clear();
        for (std::size_t first = 0; first < strip.PatchCount(); first += kPatchesPerCone)
            curves[k].cones.push_back(ConeOf(strip, first, std::min(first + kPatchesPerCone, strip.PatchCount())));
    }
}

std::optional<SurfaceHit> FindHit(const std::vector<P_M_Int>& curves, const jxSectionLoad& load)
{
    const Vector ray = {load.P, load.M3, load.M2};
    const double length = LengthOf(load);
    if (length == 0)
        return std::nullopt;
    const Vector unitRay = {ray[0] / length, ray[1] / length, ray[2] / length};
    for (std::size_t k = 0; k < curves.size(); ++k) {
        const Strip strip{curves[k].points, curves[(k + 1) % curves.size()].points};
        assert(strip.left.size() == strip.right.size() && strip.left.size() > 1);
        if (auto hit = HitOfStrip(ray, unitRay, strip, curves[k].cones)) {
            hit->curve = k;
            return hit;
        }
    }
    return std::nullopt;
}

double CapacityRatio(const std::vector<P_M_Int>& curves, const jxSectionLoad& load)
{
    if (LengthOf(load) == 0)
        return 0;
    const std::optional<SurfaceHit> hit = FindHit(curves, load);
    if (!hit)
        return kNoCapacity;
    // The ray scales axial force and moments together; the cap on the axial force (22.4.2.1) stands beside it, as the
    // surface is that of the section without it.
    return load.P > 0 ? std::max(1 / hit->reach, load.P / curves[hit->curve].cap) : 1 / hit->reach;
}

}  // namespace qvx
