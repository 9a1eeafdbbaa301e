#include "model/near_nodes.h"

#include <algorithm>

#include "model/find_record.h"
#include "tools/geometry.h"
#include "tools/spatial_index.h"

namespace qvx {

namespace {

std::vector<jxPoint> PointsOf(const std::vector<jxNd>& nodes)
{
    std::vector<jxPoint> points;
    points.reserve(nodes.size());
    for (const jxNd& node : nodes)
        points.push_back(node.Point());
    return points;
}

double SquaredDistance(const jxPoint& a, const jxPoint& b)
{
    return dot(a - b, a - b);
}

}  // namespace

std::vector<std::pair<int, int>> FindDuplicateNodes(const std::vector<jxNd>& nodes, double tolerance)
{
    const std::vector<jxPoint> points = PointsOf(nodes);
    const PointTree tree(points);
    std::vector<std::pair<int, int>> duplicates;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const jxPoint& p = points[i];
        const double radius = dot(p, p);
        tree.VisitNear(p, p, tolerance, [&](std::size_t j) {
            const double other = dot(points[j], points[j]);
            const bool isLater = other > radius || (other == radius && j > i);
            if (!isLater || SquaredDistance(p, points[j]) >= tolerance * tolerance)
                return true;
            duplicates.emplace_back(nodes[i].id, nodes[j].id);
            return false;
        });
    }
    return duplicates;
}

std::vector<std::pair<int, int>> FindNodesOnMembers(const std::vector<jxBm>& beams, const std::vector<jxNd>& nodes,
                                                    double tolerance)
{
    const std::vector<jxPoint> points = PointsOf(nodes);
    const PointTree tree(points);
    std::vector<std::pair<int, int>> found;
    std::vector<std::size_t> onMember;
    for (const jxBm& beam : beams) {
        const jxNd* start = FindOrNull(nodes, beam.node1);
        const jxNd* end = FindOrNull(nodes, beam.node2);
        if (start == nullptr || end == nullptr)
            continue;
        const jxPoint a = start->Point();
        const jxPoint b = end->Point();
        onMember.clear();
        tree.VisitNear(a, b, tolerance, [&](std::size_t i) {
            const int id = nodes[i].id;
            if (id != beam.node1 && id != beam.node2 && calc_distance3(points[i], a, b) < tolerance)
                onMember.push_back(i);
            return true;
        });
        std::sort(onMember.begin(), onMember.end());
        for (const std::size_t i : onMember)
            found.emplace_back(beam.id, nodes[i].id);
    }
    return found;
}

}  // namespace qvx
