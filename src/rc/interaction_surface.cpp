#include "rc/interaction_surface.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "rc/compression_block.h"
#include "rc/concrete_code.h"
#include "rc/surface_point.h"

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
    P_M_Point Point(double angle, std::size_t i) const;
    void Listen(DesignTrace* trace) { trace_ = trace; }

private:
    P_M_Point PureCompression() const;
    P_M_Point PureTension() const;
    P_M_Point PointAt(CompressionDirection direction, const std::vector<double>& depths, double u) const;
    P_M_Point Reduced(double P, double Mz, double My, double strain) const;
    std::vector<double> Depths(CompressionDirection direction) const;
    void TellBar(double depth, double strain, double stress, double force) const;
    double Note(const char* name, double value, const char* clause, const char* before, const char* equation) const;
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
    DesignTrace* trace_ = nullptr;
};

double SectionStrength::Note(const char* name, double value, const char* clause, const char* before,
                             const char* equation) const
{
    if (trace_ != nullptr)
        trace_->Note({name, value, ClauseOf(rules_.code, clause, before), equation});
    return value;
}

void SectionStrength::TellBar(double depth, double strain, double stress, double force) const
{
    if (trace_ == nullptr)
        return;
    Note("bar: depth x [in]", depth, "", "", "from the extreme compression fibre");
    Note("bar: strain", strain, "22.2.1.2", "10.2.2", "0.003 (1 - x/c), compression positive");
    Note("bar: fs [ksi]", stress, "20.2.2.1", "10.2.4", "within fy; less 0.85 f'c within the block");
    Note("bar: force [kip]", force, "", "", "fs times the area of the bar");
}

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
    Note("Ag [in^2]", Ag_, "", "", "gross area");
    Note("Ast [in^2]", Ast, "", "", "all bars");
    const double Po = Note("Po [kip]", blockStress_ * (Ag_ - Ast) + section_.fy * Ast, "22.4.2.2", "10.3.6",
                           "0.85 f'c (Ag - Ast) + fy Ast");
    const double phi =
        Note("phi", ColumnPhi(rules_.code, isSpiral_, -kCrushingStrain, section_.fy, Po, section_.fc * Ag_), "21.2.2",
             "9.3.2.2", "compression-controlled");
    // Accidental eccentricity stands in the factors 0.80 and 0.85, for ties and spirals.
    return Note("phi Pn,max [kip]", (isSpiral_ ? 0.85 : 0.80) * phi * Po, "22.4.2.1", "10.3.6",
                isSpiral_ ? "0.85 phi Po" : "0.80 phi Po");
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
    Note("eps_t", strain, "21.2.2", "10.3.3", "of the extreme tension bar, tension positive");
    const double phi = Note("phi", ColumnPhi(rules_.code, isSpiral_, strain, section_.fy, P, section_.fc * Ag_),
                            "21.2.2", "9.3.2.2", "by eps_t");
    assert(phi > 0 && phi <= 1 && "a strength reduction factor");
    Note("Pn [kip]", P, "22.4", "10.2", "block and bars");
    Note("Mn3 [kip-ft]", Mz / kFootInInches, "22.4", "10.2", "forces times y");
    Note("Mn2 [kip-ft]", My / kFootInInches, "22.4", "10.2", "forces times z");
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
    Note("c [in]", dt / u, "22.2.1", "10.2.2", "depth of the neutral axis");
    const double a = Note("a [in]", beta1_ * dt / u, "22.2.2.4.1", "10.2.7.1", "beta1 c");
    const CompressionBlock block = Block(direction, a);
    Note("block: area [in^2]", block.area, "22.2.2.4.1", "10.2.7.1", "of the section within a");
    Note("block: y [in]", block.y, "", "", "its centroid from the middle");
    Note("block: z [in]", block.z, "", "", "");
    double P =
        Note("block: force [kip]", blockStress_ * block.area, "22.2.2.4.1", "10.2.7.1", "0.85 f'c times its area");
    double Mz = P * block.y;
    double My = P * block.z;
    // A bar on the edge of the block is in it, whatever rounding says.
    const double edge = a + 1e-9 * dt;
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        const double elastic = kSteelModulus * kCrushingStrain * (1 - u * depths[i] / dt);
        double stress = std::clamp(elastic, -section_.fy, section_.fy);
        if (rules_.isDisplacedExcluded && depths[i] <= edge)
            stress -= blockStress_;
        TellBar(depths[i], elastic / kSteelModulus, stress, stress * section_.barArea);
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

/// Of the bars from the extreme compression fibre.
std::vector<double> SectionStrength::Depths(CompressionDirection direction) const
{
    const double extreme = Depth(direction) / 2;
    std::vector<double> depths;
    for (const BarPlace& bar : bars_)
        depths.push_back(extreme - (bar.z * direction.z + bar.y * direction.y));
    return depths;
}

CompressionDirection DirectionOf(double angle)
{
    return {.z = std::sin(angle), .y = std::cos(angle)};
}

P_M_Int SectionStrength::Curve(double angle) const
{
    const CompressionDirection direction = DirectionOf(angle);
    const std::vector<double> depths = Depths(direction);
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

P_M_Point SectionStrength::Point(double angle, std::size_t i) const
{
    assert(i < PointCount() && "a point of the curve");
    Note("direction of compression [deg]", angle * 180 / kPi, "", "", "from +y towards +z");
    if (i == 0)
        return PureCompression();
    if (i + 1 == PointCount())
        return PureTension();
    const CompressionDirection direction = DirectionOf(angle);
    return PointAt(direction, Depths(direction), Strains()[i - 1]);
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

P_M_Point SurfacePoint(const jxConcreteSection& section, const SurfaceRules& rules, double angle, std::size_t i,
                       DesignTrace* trace)
{
    SectionStrength strength(section, rules);
    strength.Listen(trace);
    return strength.Point(angle, i);
}

double LargestAxialStrength(const jxConcreteSection& section, const SurfaceRules& rules, DesignTrace* trace)
{
    SectionStrength strength(section, rules);
    strength.Listen(trace);
    return strength.Cap();
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
