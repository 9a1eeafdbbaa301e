#include "rc/interaction_surface.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "rc/compression_block.h"
#include "rc/concrete_code.h"

namespace qvx {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kFootInInches = 12;

/// What all points of a surface share.
class SectionStrength
{
public:
    SectionStrength(const jxConcreteSection& section, const SurfaceRules& rules);

    double Cap() const;
    std::size_t PointCount() const { return static_cast<std::size_t>(rules_.steps[1] + rules_.steps[2] + 1); }
    P_M_Int Curve(double angle) const;

private:
    P_M_Point PureCompression() const;
    P_M_Point PureTension() const;
    P_M_Point PointAt(CompressionDirection direction, const std::vector<double>& depths, double u) const;
    P_M_Point Reduced(double P, double Mz, double My, double strain) const;
    double Depth(CompressionDirection direction) const;
    CompressionBlock Block(CompressionDirection direction, double depth) const;
    std::vector<double> Strains() const;

    const jxConcreteSection& section_;
    SurfaceRules rules_;
    std::vector<BarPlace> bars_;
    double Ag_;
    double beta1_;
    double blockStress_;  ///< [ksi]
    bool isSpiral_;
};

SectionStrength::SectionStrength(const jxConcreteSection& section, const SurfaceRules& rules)
    : section_(section), rules_(rules), bars_(BarPlaces(section)),
      Ag_(section.type == jxConcreteSection::kRound ? kPi * section.b * section.b / 4 : section.b * section.h),
      beta1_(Beta1(section.fc)), blockStress_(kBlockStress * section.fc),
      isSpiral_(section.type == jxConcreteSection::kRound && section.bSpiral != 0)
{
    assert(rules.steps[0] > 0 && rules.steps[1] > 0 && rules.steps[2] > 0);
    assert(section.fc > 0 && section.fy > 0);
}

// Po (22.4.2.2) is of the code whatever the surface makes of the displaced concrete.
double SectionStrength::Cap() const
{
    const double Ast = section_.barArea * static_cast<double>(bars_.size());
    const double Po = blockStress_ * (Ag_ - Ast) + section_.fy * Ast;
    // Accidental eccentricity stands in the factors 0.80 and 0.85 (22.4.2.1), for ties and spirals.
    const double phi = ColumnPhi(rules_.code, isSpiral_, -kCrushingStrain, section_.fy, Po, section_.fc * Ag_);
    return (isSpiral_ ? 0.85 : 0.80) * phi * Po;
}

double SectionStrength::Depth(CompressionDirection direction) const
{
    return section_.type == jxConcreteSection::kRound ? section_.b : RectangleDepth(section_.b, section_.h, direction);
}

CompressionBlock SectionStrength::Block(CompressionDirection direction, double depth) const
{
    return section_.type == jxConcreteSection::kRound ? CircleBlock(section_.b, direction, depth)
                                                      : RectangleBlock(section_.b, section_.h, direction, depth);
}

/// @param Mz, My  sums of force times y and z [kip-in]
P_M_Point SectionStrength::Reduced(double P, double Mz, double My, double strain) const
{
    const double phi = ColumnPhi(rules_.code, isSpiral_, strain, section_.fy, P, section_.fc * Ag_);
    assert(phi > 0 && phi <= 1 && "a strength reduction factor");
    return {.P = phi * P, .M3 = phi * Mz / kFootInInches, .M2 = phi * My / kFootInInches};
}

P_M_Point SectionStrength::PureCompression() const
{
    const double stress =
        std::min(section_.fy, kSteelModulus * kCrushingStrain) - (rules_.isDisplacedExcluded ? blockStress_ : 0);
    double P = blockStress_ * Ag_;
    double Mz = 0;
    double My = 0;
    for (const BarPlace& bar : bars_) {
        // An unsymmetrical layout has moments under a uniform strain too: the sums are kept, though they vanish in
        // most.
        P += stress * section_.barArea;
        Mz += stress * section_.barArea * bar.y;
        My += stress * section_.barArea * bar.z;
    }
    return Reduced(P, Mz, My, -kCrushingStrain);
}

P_M_Point SectionStrength::PureTension() const
{
    const double force = -section_.fy * section_.barArea;
    double P = 0;
    double Mz = 0;
    double My = 0;
    for (const BarPlace& bar : bars_) {
        P += force;
        Mz += force * bar.y;
        My += force * bar.z;
    }
    return Reduced(P, Mz, My, std::numeric_limits<double>::infinity());
}

/// @param depths  of the bars from the extreme compression fibre [in]
/// @param u       dt/c > 0
P_M_Point SectionStrength::PointAt(CompressionDirection direction, const std::vector<double>& depths, double u) const
{
    const double dt = *std::max_element(depths.begin(), depths.end());
    assert(u > 0 && dt > 0 && "a neutral axis within reach");
    const double a = beta1_ * dt / u;
    const CompressionBlock block = Block(direction, a);
    double P = blockStress_ * block.area;
    double Mz = P * block.y;
    double My = P * block.z;
    // A bar on the edge of the block is in it, whatever rounding says.
    const double edge = a + 1e-9 * dt;
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        const double elastic = kSteelModulus * kCrushingStrain * (1 - u * depths[i] / dt);
        double stress = std::clamp(elastic, -section_.fy, section_.fy);
        if (rules_.isDisplacedExcluded && depths[i] <= edge)
            stress -= blockStress_;
        P += stress * section_.barArea;
        Mz += stress * section_.barArea * bars_[i].y;
        My += stress * section_.barArea * bars_[i].z;
    }
    return Reduced(P, Mz, My, kCrushingStrain * (u - 1));
}

/// The values u = dt/c between pure compression and pure tension.
std::vector<double> SectionStrength::Strains() const
{
    const double limit = (kCrushingStrain + LimitStrain(rules_.code, section_.fy)) / kCrushingStrain;
    // Up to the limit strain in equal steps, where the concrete governs; beyond it in equal steps of 1/u, so that the
    // curve closes towards pure tension without bunching.
    std::vector<double> strains;
    for (int i = 1; i <= rules_.steps[1]; ++i)
        strains.push_back(limit * i / rules_.steps[1]);
    for (int i = 1; i < rules_.steps[2]; ++i)
        strains.push_back(limit * rules_.steps[2] / (rules_.steps[2] - i));
    return strains;
}

P_M_Int SectionStrength::Curve(double angle) const
{
    const CompressionDirection direction{.z = std::sin(angle), .y = std::cos(angle)};
    const double extreme = Depth(direction) / 2;
    std::vector<double> depths;
    for (const BarPlace& bar : bars_)
        depths.push_back(extreme - (bar.z * direction.z + bar.y * direction.y));

    P_M_Int curve;
    curve.angle = angle;
    curve.cap = Cap();
    curve.points.reserve(PointCount());
    curve.points.push_back(PureCompression());
    for (const double u : Strains())
        curve.points.push_back(PointAt(direction, depths, u));
    curve.points.push_back(PureTension());
    assert(curve.points.size() == PointCount());
    return curve;
}

std::vector<BarPlace> RectangleBars(const jxConcreteSection& s)
{
    const double width = s.b - 2 * s.cover;
    const double depth = s.h - 2 * s.cover;
    std::vector<BarPlace> bars;
    for (int i = 0; i < s.nx; ++i) {
        const double z = -width / 2 + width * i / (s.nx - 1);
        bars.push_back({z, depth / 2});
        bars.push_back({z, -depth / 2});
    }
    for (int j = 1; j + 1 < s.ny; ++j) {
        const double y = -depth / 2 + depth * j / (s.ny - 1);
        bars.push_back({-width / 2, y});
        bars.push_back({width / 2, y});
    }
    return bars;
}

}  // namespace

std::vector<BarPlace> BarPlaces(const jxConcreteSection& section)
{
    if (section.type != jxConcreteSection::kRound) {
        assert(section.nx >= 2 && section.ny >= 2);
        return RectangleBars(section);
    }
    const double radius = section.b / 2 - section.cover;
    std::vector<BarPlace> bars;
    for (int j = 0; j < section.barCount; ++j) {
        const double angle = 2 * kPi * j / section.barCount;
        bars.push_back({radius * std::sin(angle), radius * std::cos(angle)});
    }
    return bars;
}

P_M_Sect InteractionSurface(const jxConcreteSection& section, const SurfaceRules& rules)
{
    const SectionStrength strength(section, rules);
    P_M_Sect surface;
    surface.name = section.name;
    surface.cap = strength.Cap();
    for (int k = 0; k < rules.steps[0]; ++k)
        surface.curves.push_back(strength.Curve(2 * kPi * k / rules.steps[0]));
    FormCones(surface.curves);
    return surface;
}

}  // namespace qvx
