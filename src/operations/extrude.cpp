#include <cassert>

#include "operations/generated_records.h"
#include "operations/swept_pattern.h"

namespace {

qvx::PatternPath AlongDirection(const std::vector<double>& steps, const jxPoint& direction)
{
    const auto place = [distances = qvx::GridPositions(steps), direction](const jxNd& node, int copy) {
        assert(copy > 0 && copy < static_cast<int>(distances.size()));
        return node.Point() + distances[static_cast<std::size_t>(copy)] * direction;
    };
    return {.nCopies = static_cast<int>(steps.size()), .place = place};
}

}  // namespace

void CjxStruct::ExtrudeNodes(const std::vector<jxNd>& pattern, const std::vector<double>& steps, jxPoint direction,
                             int nodeIncrement, int memberIncrement)
{
    qvx::SweepNodes(*this, pattern, AlongDirection(steps, direction),
                    {.nodeIncrement = nodeIncrement, .firstJoint = memberIncrement});
}

void CjxStruct::ExtrudeBeams(const std::vector<jxNd>& pattern, const std::vector<jxBm>& members,
                             const std::vector<double>& steps, jxPoint direction, int nodeIncrement, int beamIncrement,
                             int shellIncrement)
{
    qvx::SweepElements(*this, pattern, members, AlongDirection(steps, direction),
                       {nodeIncrement, beamIncrement, shellIncrement});
}

void CjxStruct::ExtrudeShell4s(const std::vector<jxNd>& pattern, const std::vector<jxShell4>& shells,
                               const std::vector<double>& steps, jxPoint direction, int nodeIncrement,
                               int shellIncrement, int brickIncrement)
{
    qvx::SweepElements(*this, pattern, shells, AlongDirection(steps, direction),
                       {nodeIncrement, shellIncrement, brickIncrement});
}
