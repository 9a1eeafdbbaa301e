#include "tools/section_stress.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace qvx {

std::vector<SectionPoint> RectanglePoints(double left, double right, double h)
{
    return {{-h / 2, left}, {-h / 2, right}, {h / 2, right}, {h / 2, left}};
}

std::vector<SectionPoint> RoundPoints(double diameter)
{
    const double r = diameter / 2;
    return {{r, 0}, {0, r}, {-r, 0}, {0, -r}};
}

std::vector<SectionPoint> TeePoints(double bf, double h, double bw, double top)
{
    return {{top, -bf / 2}, {top, bf / 2}, {top - h, bw / 2}, {top - h, -bw / 2}};
}

StressSection RectangleStressSection(double b, double h)
{
    return {
        .A = b * h, .Iz = b * h * h * h / 12, .Iy = h * b * b * b / 12, .points = RectanglePoints(-b / 2, b / 2, h)};
}

StressSection RoundStressSection(double diameter)
{
    const double squared = diameter * diameter;
    const double I = std::numbers::pi * squared * squared / 64;
    return {.A = std::numbers::pi * squared / 4,
            .Iz = I,
            .Iy = I,
            .edgeRadius = diameter / 2,
            .points = RoundPoints(diameter)};
}

StressSection TeeStressSection(double bf, double h, double hf, double bw)
{
    // Sections of flange and web, each about its own middle, then to the common centroid (parallel axes).
    const double stem = h - hf;
    const double flangeArea = bf * hf;
    const double webArea = bw * stem;
    const double A = flangeArea + webArea;
    const double top = (flangeArea * hf / 2 + webArea * (hf + stem / 2)) / A;  // centroid below the flange's face
    const double toFlange = top - hf / 2;
    const double toWeb = hf + stem / 2 - top;
    return {.A = A,
            .Iz = bf * hf * hf * hf / 12 + flangeArea * toFlange * toFlange + bw * stem * stem * stem / 12 +
                  webArea * toWeb * toWeb,
            .Iy = hf * bf * bf * bf / 12 + stem * bw * bw * bw / 12,
            .points = TeePoints(bf, h, bw, top)};
}

std::vector<double> NormalStresses(const StressSection& section, double N, double Mz, double My)
{
    // Slopes of the stress plane from -Mz = sy Iz + sz Iyz, -My = sy Iyz + sz Iy.
    // About axes that are not principal both moments bend both ways: the plane of stresses solves two equations.
    const double determinant = section.Iz * section.Iy - section.Iyz * section.Iyz;
    const double slopeY = -(Mz * section.Iy - My * section.Iyz) / determinant;
    const double slopeZ = -(My * section.Iz - Mz * section.Iyz) / determinant;
    assert(!(section.A < 0));
    std::vector<double> stresses;
    stresses.reserve(section.points.size() + 2);
    for (const SectionPoint& point : section.points)
        stresses.push_back(N / section.A + slopeY * point.y + slopeZ * point.z);
    // The four points of a round section miss the largest stress unless it lies on an axis.
    if (section.edgeRadius > 0) {
        const double bending = std::hypot(Mz, My) * section.edgeRadius / section.Iz;
        stresses.push_back(N / section.A - bending);
        stresses.push_back(N / section.A + bending);
    }
    return stresses;
}

}  // namespace qvx

double get_min_negative(const std::vector<double>& values)
{
    double least = 0;
    for (const double value : values)
        least = std::min(least, value);
    return least;
}

double get_max_positive(const std::vector<double>& values)
{
    double largest = 0;
    for (const double value : values)
        largest = std::max(largest, value);
    return largest;
}
