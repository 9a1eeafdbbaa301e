#include <cassert>
#include <cmath>
#include <limits>

#include "model/near_nodes.h"
#include "operations/record_references.h"
#include "tools/spatial_index.h"

namespace {

using qvx::PointTree;

std::vector<jxPoint> PointsOf(const std::vector<jxNd>& nodes)
{
    std::vector<jxPoint> points;
    points.reserve(nodes.size());
    for (const jxNd& node : nodes)
        points.push_back(node.Point());
    return points;
}

// Finds the node that stands for a removed one, among those that stay.
class Survivors
{
public:
    Survivors(const std::vector<jxNd>& kept, double tolerance)
        : kept_(kept), tolerance_(tolerance), points_(PointsOf(kept)), tree_(points_)
    {
    }

    // The first by id that is nearer than the tolerance. A chain of nodes may end in one that stays farther off than
    // that: then the nearest of all.
    int Of(const jxPoint& place) const
    {
        std::size_t first = points_.size();
        tree_.VisitNear(place, place, tolerance_, [&](std::size_t i) {
            if (i < first && Squared(i, place) < tolerance_ * tolerance_)
                first = i;
            return true;
        });
        return kept_[first < points_.size() ? first : Nearest(place)].id;
    }

private:
    double Squared(std::size_t i, const jxPoint& place) const
    {
        const jxPoint way = points_[i] - place;
        return dot(way, way);
    }

    // The reach doubles until it holds a node: no nearer one can then lie outside.
    std::size_t Nearest(const jxPoint& place) const
    {
        for (double reach = 2 * tolerance_; std::isfinite(reach); reach *= 2) {
            std::size_t nearest = points_.size();
            double least = reach * reach;
            tree_.VisitNear(place, place, reach, [&](std::size_t i) {
                const double squared = Squared(i, place);
                if (squared < least || (squared == least && i < nearest)) {
                    least = squared;
                    nearest = i;
                }
                return true;
            });
            if (nearest < points_.size())
                return nearest;
        }
        return points_.size() - 1;
    }

    const std::vector<jxNd>& kept_;
    double tolerance_;
    std::vector<jxPoint> points_;
    PointTree tree_;
};

}  // namespace

std::vector<jxNd> CjxStruct::MergeNodes()
{
    if (nodes.size() < 2)
        return {};
    qvx::SortById(nodes);
    const std::vector<std::pair<int, int>> duplicates = qvx::FindDuplicateNodes(nodes, mergeTolerance);
    if (duplicates.empty())
        return {};
    std::vector<jxNd> kept;
    std::vector<jxNd> dropped;
    auto duplicate = duplicates.begin();
    for (const jxNd& node : nodes) {
        const bool isDropped = duplicate != duplicates.end() && duplicate->first == node.id;
        (isDropped ? dropped : kept).push_back(node);
        duplicate += isDropped;
    }
    assert(duplicate == duplicates.end() && !kept.empty() && "the node farthest from the origin stays");

    const Survivors survivors(kept, mergeTolerance);
    for (jxNd& node : dropped)
        node.no = survivors.Of(node.Point());
    qvx::RewriteReferences(*this, qvx::Reference::Node, qvx::IdMap(qvx::NewIdsOf(dropped)));
    // Two supports of one node, or two springs, that stand side by side now were entered for one place.
    qvx::KeepFirstOfRuns(supports);
    qvx::KeepFirstOfRuns(nodalSprings);
    qvx::KeepFirstOfRuns(coupledSprings);
    nodes = kept;
    qvx::SortLists(*this);
    return dropped;
}
