#include "model/near_nodes.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>

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

/// Positions of the nodes by distance from the origin, equal ones in their order; a node without a place stands last.
std::vector<std::size_t> OrderFromOrigin(const std::vector<jxNd>& nodes)
{
    std::vector<double> radius;
    radius.reserve(nodes.size());
    for (const jxNd& node : nodes) {
        const double squared = dot(node.Point(), node.Point());
        // A comparison with NaN would break the order that the sort relies on.
        radius.push_back(std::isnan(squared) ? std::numeric_limits<double>::infinity() : squared);
    }
    std::vector<std::size_t> order(nodes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t i, std::size_t j) { return radius[i] < radius[j]; });
    return order;
}

}  // namespace

std::vector<std::pair<int, int>> FindDuplicateNodes(const std::vector<jxNd>& nodes, double tolerance)
{
    // From the origin outward a node has its duplicates within the tolerance of its own radius, which is how a merge
    // meets them: the one farther out stands, the others go.
    const std::vector<std::size_t> order = OrderFromOrigin(nodes);
    std::vector<jxPoint> points;
    points.reserve(nodes.size());
    for (const std::size_t position : order)
        points.push_back(nodes[position].Point());
    const PointTree tree(points);

    assert(points.size() == nodes.size() && "an order leaves nobody out");
    // A tree of boxes instead of all pairs: n log n for nodes that are spread out, as those of a structure are.
    std::vector<const jxNd*> twin(nodes.size(), nullptr);  // by position
    for (std::size_t i = 0; i < points.size(); ++i)
        tree.VisitNearFrom(i + 1, points[i], points[i], tolerance, [&](std::size_t later) {
            if (!(SquaredDistance(points[i], points[later]) < tolerance * tolerance))
                return true;
            twin[order[i]] = &nodes[order[later]];
            return false;
        });
    assert(nodes.empty() || twin[order.back()] == nullptr);  // the last one has no later node
    std::vector<std::pair<int, int>> duplicates;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (twin[i] != nullptr)
            duplicates.emplace_back(nodes[i].id, twin[i]->id);
    return duplicates;
}

std::vector<std::pair<int, int>> FindNodesOnMembers(const std::vector<jxBm>& beams, const std::vector<jxNd>& nodes,
                                                    double tolerance)
{
    assert(std::is_sorted(nodes.begin(), nodes.end()));
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
        // In the order of the nodes; the tree meets them in its own.
        std::sort(onMember.begin(), onMember.end());
        for (const std::size_t i : onMember)
            found.emplace_back(beam.id, nodes[i].id);
    }
    return found;
}

}  // namespace qvx
