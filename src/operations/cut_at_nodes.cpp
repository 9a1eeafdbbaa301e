#include <algorithm>
#include <cmath>

#include "model/find_record.h"
#include "operations/member_cuts.h"
#include "operations/record_references.h"
#include "operations/selection_bits.h"
#include "platform/host_services.h"
#include "tools/geometry.h"
#include "tools/segment_index.h"
#include "tools/spatial_index.h"

namespace {

using qvx::MemberCuts;
using Segment = qvx::SegmentTree::Segment;

// Nodes at which members are cut, found by a tree of their places.
class NodesOnMembers
{
public:
    explicit NodesOnMembers(const CjxStruct& model) : model_(model), points_(PointsOf(model)), tree_(points_) {}

    // The ends of a member and the nodes on it, in their order from its start. Nodes at one place keep the order of
    // their ids, between the ends of the member.
    std::vector<const jxNd*> ChainOf(const jxBm& beam) const
    {
        const jxNd& start = qvx::FindById(model_.nodes, beam.node1);
        const jxNd& end = qvx::FindById(model_.nodes, beam.node2);
        std::vector<std::pair<double, std::size_t>> between;
        tree_.VisitNear(start.Point(), end.Point(), model_.mergeTolerance, [&](std::size_t i) {
            const int id = model_.nodes[i].id;
            double distance = 0;
            if (id != beam.node1 && id != beam.node2 &&
                calc_distance3(distance, points_[i], start.Point(), end.Point()) && distance < model_.mergeTolerance)
                between.emplace_back(calc_distance(start.Point(), points_[i]), i);
            return true;
        });
        std::sort(between.begin(), between.end());
        std::vector<const jxNd*> chain{&start};
        for (const auto& [distance, i] : between)
            chain.push_back(&model_.nodes[i]);
        chain.push_back(&end);
        return chain;
    }

private:
    static std::vector<jxPoint> PointsOf(const CjxStruct& model)
    {
        std::vector<jxPoint> points;
        points.reserve(model.nodes.size());
        for (const jxNd& node : model.nodes)
            points.push_back(node.Point());
        return points;
    }

    const CjxStruct& model_;
    std::vector<jxPoint> points_;
    qvx::PointTree tree_;
};

// Whether two members cross within their lengths: nearer than 5e-7, and farther than 5e-7 of their lengths from every
// end. A member that ends on another makes no crossing.
bool Cross(jxPoint& place, const Segment& first, const Segment& second)
{
    constexpr double kTolerance = 5e-7;
    constexpr double kLast = 0.9999995;
    double s = 0;
    double t = 0;
    jxPoint onSecond;
    const double squared = closestPtSegmentSegment(s, t, place, onSecond, {first[0], first[1]}, {second[0], second[1]});
    return std::sqrt(squared) < kTolerance && s > kTolerance && s < kLast && t > kTolerance && t < kLast;
}

std::vector<Segment> SegmentsOf(const std::vector<jxNd>& nodes, const std::vector<jxBm>& beams)
{
    std::vector<Segment> segments;
    segments.reserve(beams.size());
    for (const jxBm& beam : beams)
        segments.push_back({qvx::FindById(nodes, beam.node1).Point(), qvx::FindById(nodes, beam.node2).Point()});
    return segments;
}

}  // namespace

std::vector<int> CjxStruct::ExplodeSelectedBeamsAtNodes()
{
    if (nodes.size() < 2 || beams.empty())
        return {};
    const NodesOnMembers onMembers(*this);
    MemberCuts cuts(*this);
    for (const jxBm& beam : beams) {
        if (!qvx::IsPicked(beam))
            continue;
        const std::vector<const jxNd*> chain = onMembers.ChainOf(beam);
        const double length = calc_distance(chain.front()->Point(), chain.back()->Point());
        if (chain.size() > 2 && length > 0)
            cuts.AtNodes(beam, length, chain);
    }
    std::vector<int> cutIds;
    for (const qvx::MemberCut& cut : cuts.Cuts())
        cutIds.push_back(cut.id);
    const std::size_t before = beams.size();
    cuts.Apply(MemberCuts::LineSprings::LeftOnFirstPiece);
    if (bInteractive != 0) {
        CString text;
        text.Format(L"%d new members are generated from exploding the selected members",
                    static_cast<int>(beams.size() - before));
        AfxMessageBox(text);
    }
    return cutIds;
}

std::vector<int> CjxStruct::ClearSelectionAndExplodeBeamsAtNodesForSpecifiedBeams(const std::vector<int>& ids)
{
    SelectAll(0, 0);
    std::vector<int> ordered = ids;
    std::sort(ordered.begin(), ordered.end());
    for (jxBm& beam : beams)
        if (std::binary_search(ordered.begin(), ordered.end(), beam.id))
            beam.bSelected |= qvx::kSelectedBit;
    return ExplodeSelectedBeamsAtNodes();
}

std::vector<jxIntersectionNode> CjxStruct::InsertNodesAtBeamIntersectionsForBeams(const std::vector<int>& ids)
{
    std::vector<int> ordered = ids;
    std::sort(ordered.begin(), ordered.end());
    std::vector<jxBm> named;
    for (const jxBm& beam : beams)
        if (std::binary_search(ordered.begin(), ordered.end(), beam.id))
            named.push_back(beam);
    return InsertNodesAtBeamIntersectionsForBeams(named);
}

std::vector<jxIntersectionNode> CjxStruct::InsertNodesAtBeamIntersectionsForBeams(const std::vector<jxBm>& crossing)
{
    constexpr double kReach = 1e-6;  // beyond the distance at which members still cross
    if (crossing.size() < 2)
        return {};
    const std::vector<Segment> segments = SegmentsOf(nodes, crossing);
    const qvx::SegmentTree tree(segments);
    std::vector<jxIntersectionNode> found;
    std::vector<std::size_t> candidates;
    for (std::size_t i = 0; i + 1 < crossing.size(); ++i) {
        candidates.clear();
        tree.VisitTouchingFrom(i + 1, segments[i], kReach, [&](std::size_t j) { candidates.push_back(j); });
        std::sort(candidates.begin(), candidates.end());
        for (const std::size_t j : candidates) {
            jxPoint place;
            if (!Cross(place, segments[i], segments[j]))
                continue;
            const int id = qvx::LargestId(nodes) + 1;
            nodes.push_back({.id = id, .x = place.x, .y = place.y, .z = place.z});
            found.push_back({.node = id, .member1 = crossing[i].id, .member2 = crossing[j].id});
        }
    }
    return found;
}
