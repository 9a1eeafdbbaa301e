#include "support/value_comparison.h"

#include <algorithm>
#include <cmath>

namespace qvx::test {
namespace {

using nlohmann::json;

// Below this part of its family a kind is what rounding leaves.
constexpr double kNoise = 1e-9;

enum { kTranslation = 0, kRotation = 1 };  // also force, moment

void Append(std::vector<KindValue>& out, const json& array, int kind)
{
    for (const json& value : array)
        out.push_back({kind, value.get<double>()});
}

// The kind changes from translation or force to rotation or moment behind the third value.
void AppendSix(std::vector<KindValue>& out, const json& six)
{
    for (std::size_t dof = 0; dof < six.size(); ++dof)
        out.push_back({dof < 3 ? kTranslation : kRotation, six[dof].get<double>()});
}

std::vector<KindValue> SixValues(const json& record)
{
    std::vector<KindValue> values;
    AppendSix(values, record.at("value"));
    return values;
}

std::vector<KindValue> ConstraintForces(const json& record)
{
    std::vector<KindValue> values;
    for (std::size_t end = 0; end < 2; ++end)
        values.push_back({record.at("dof")[end].get<int>() < 3 ? kTranslation : kRotation,
                          record.at("force").at(end).get<double>()});
    return values;
}

std::vector<KindValue> EndForces(const json& record)
{
    std::vector<KindValue> values;
    AppendSix(values, record.at("start"));
    AppendSix(values, record.at("end"));
    return values;
}

std::vector<KindValue> ShellStresses(const json& record)
{
    enum { kMembrane, kMoment, kShear, kNodalForce, kNodalMoment };
    std::vector<KindValue> values;
    for (const json& row : record.at("F"))
        Append(values, row, kMembrane);
    for (const json& row : record.at("P"))
        for (std::size_t k = 0; k < row.size(); ++k)
            values.push_back({k < 3 ? kMoment : kShear, row[k].get<double>()});
    Append(values, record.at("fm"), kNodalForce);
    const json& fp = record.at("fp");
    for (std::size_t k = 0; k < fp.size(); ++k)  // deflection, then the two rotations of each node
        values.push_back({k % 3 == 0 ? kNodalForce : kNodalMoment, fp[k].get<double>()});
    return values;
}

std::vector<KindValue> BrickStresses(const json& record)
{
    std::vector<KindValue> values;
    for (const json& row : record.at("S"))
        Append(values, row, 0);
    Append(values, record.at("f"), 1);
    return values;
}

}  // namespace

const std::vector<Family>& ComparedFamilies()
{
    static const std::vector<Family> families = {
        {"displacements", {"id"}, SixValues},
        {"supportReactions", {"id"}, SixValues},
        {"multiDofConstraintForces", {"id", "node", "dof"}, ConstraintForces},
        {"nodalSpringReactions", {"id"}, SixValues},
        {"coupledSpringReactions", {"id"}, SixValues},
        {"beamSpringReactions", {"id"}, SixValues},
        {"shell4SpringReactions", {"id"}, SixValues},
        {"beamEndForces", {"id"}, EndForces},
        {"shell4Stresses", {"id"}, ShellStresses},
        {"brickStresses", {"id"}, BrickStresses},
    };
    return families;
}

void KindScales::Take(const std::vector<KindValue>& values)
{
    for (const KindValue& v : values) {
        const auto kind = static_cast<std::size_t>(v.kind);
        if (largest_.size() <= kind)
            largest_.resize(kind + 1, 0.0);
        largest_[kind] = std::max(largest_[kind], std::fabs(v.value));
    }
}

double KindScales::Tolerance(int kind) const
{
    double family = 0;
    for (const double largest : largest_)
        family = std::max(family, largest);
    const auto k = static_cast<std::size_t>(kind);
    const double own = k < largest_.size() ? largest_[k] : 0;
    return kResultTolerance * (own > kNoise * family ? own : family);
}

}  // namespace qvx::test
