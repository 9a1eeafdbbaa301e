#include <algorithm>
#include <cmath>

#include "operations/sweep.h"
#include "operations/swept_pattern.h"

namespace {

// Only the distance of a node from the axis counts, not its bearing: the pattern is meant to lie at the angle 0. The last
// copy of a full turn would fall on the pattern, which closes the ring itself.
qvx::PatternPath AroundVertical(double startAngle, double endAngle, int copies)
{
    const auto place = [=](const jxNd& node, int copy) {
        const double angle = qvx::SweepAngle(startAngle, endAngle, copy, copies);
        const double r = std::sqrt(node.x * node.x + node.z * node.z);
        return jxPoint{r * std::cos(angle), node.y, -r * std::sin(angle)};
    };
    const bool isClosed = qvx::IsFullTurn(startAngle, endAngle);
    return {.nCopies = isClosed ? std::max(copies, 1) - 1 : std::max(copies, 0), .isClosed = isClosed, .place = place};
}

}  // namespace

void CjxStruct::RevolveBeams(const std::vector<jxNd>& pattern, const std::vector<jxBm>& members, double startAngle,
                             double endAngle, int copies, int nodeIncrement, int beamIncrement, int shellIncrement)
{
    qvx::SweepElements(*this, pattern, members, AroundVertical(startAngle, endAngle, copies),
                       {nodeIncrement, beamIncrement, shellIncrement});
}

void CjxStruct::RevolveShell4s(const std::vector<jxNd>& pattern, const std::vector<jxShell4>& shells, double startAngle,
                               double endAngle, int copies, int nodeIncrement, int shellIncrement, int brickIncrement)
{
    qvx::SweepElements(*this, pattern, shells, AroundVertical(startAngle, endAngle, copies),
                       {nodeIncrement, shellIncrement, brickIncrement});
}
