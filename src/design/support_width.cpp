#include <algorithm>
#include <cmath>

#include "elements/member/beam_stress_calculator.h"
#include "model/find_record.h"
#include "model/jx_struct.h"
#include "tools/geometry.h"

namespace {

constexpr double kFiveDegrees = 0.08726646261111111;
constexpr double kRightAngle = 1.5707963267948966;

jxPoint PointOf(const CjxStruct& model, int node)
{
    const jxNd& nd = model.nodes[static_cast<std::size_t>(qvx::NodePosition(model.nodes, node) - 1)];
    return {nd.x, nd.y, nd.z};
}

/// Towards the other end, away from the node.
jxPoint DirectionFrom(const CjxStruct& model, const jxBm& beam, int node)
{
    return PointOf(model, node == beam.node2 ? beam.node1 : beam.node2) - PointOf(model, node);
}

jxPoint VerticalAxis(const CjxStruct& model)
{
    // The axis of gravity tells what stands upright; which way it points decides between a column above and one below.
    const double sign = model.selfWeightFactor < 0 ? -1 : 1;
    jxPoint axis;
    (model.selfWeightDir == 1 ? axis.y : model.selfWeightDir == 2 ? axis.z : axis.x) = sign;
    return axis;
}

/// The member at the node that supports this one: across it within 5 degrees; a vertical one at once, else the last.
const jxBm* SupportAt(const CjxStruct& model, const jxBm& beam, int node, const std::vector<int>& meeting)
{
    const jxPoint direction = DirectionFrom(model, beam, node);
    const jxPoint vertical = VerticalAxis(model);
    const jxBm* support = nullptr;
    for (const int id : meeting) {
        const jxBm& other = qvx::FindById(model.beams, id);
        const jxPoint across = DirectionFrom(model, other, node);
        // A beam that goes on beyond the node, and a brace, are no supports.
        if (!(std::fabs(calc_angle(across, direction) - kRightAngle) < kFiveDegrees))
            continue;
        support = &other;
        if (calc_angle(across, vertical) < kFiveDegrees)
            break;
    }
    return support;
}

double WidthOf(const CjxStruct& model, const jxBm& support)
{
    const jxSect& section = qvx::FindById(model.sections, support.section);
    // A turned or another section counts as a square of its area.
    if (support.angle == 0 && qvx::RegularSectionOf(section.label) == qvx::kRegularRect)
        return section.dim[0];
    return std::sqrt(section.A);
}

}  // namespace

void CjxStruct::GetNodeBeamsMap()
{
    nodeBeams.clear();
    for (const jxBm& beam : beams) {
        nodeBeams[beam.node1].push_back(beam.id);
        nodeBeams[beam.node2].push_back(beam.id);
    }
}

// A column below and one above point opposite ways from the node: only the one along the vertical axis counts as vertical,
// and the sense of the axis follows the sign of the self weight.
void CjxStruct::CalcBeamSupportWidth(double& width, const jxBm& bm, int end) const
{
    width = 0;
    if (design.bUseBeamFaceMoments == 0)
        return;
    const int node = end == 0 ? bm.node1 : bm.node2;
    const auto meeting = nodeBeams.find(node);
    if (meeting == nodeBeams.end())
        return;
    const jxBm* support = SupportAt(*this, bm, node, meeting->second);
    if (support == nullptr)
        return;
    constexpr double kLargestShare = 0.35;  // of the length: not all of a short member is support
    const double L = calc_distance(PointOf(*this, bm.node1), PointOf(*this, bm.node2));
    width = std::min(WidthOf(*this, *support), kLargestShare * L);
}
