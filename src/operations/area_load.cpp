#include "operations/area_load.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <set>

#include "elements/invariants.h"
#include "model/find_record.h"
#include "operations/geometric_tolerance.h"
#include "platform/host_services.h"
#include "tools/geometry.h"
#include "tools/plane.h"

using qvx::kRelativeTolerance;

namespace {

constexpr int kMostSteps = 1024;  // of a walk round one sub-area

[[noreturn]] void ThrowInvalid(const jxAreaload& a, const wchar_t* reason)
{
    CString text;
    text.Format(L"Invalid area load defined by node (%d, %d, %d, %d): %s", a.node[0], a.node[1], a.node[2], a.node[3],
                reason);
    throw jxException(text);
}

int FarEnd(const jxBm& member, int node)
{
    return member.node1 == node ? member.node2 : member.node1;
}

// The same way round, seen from the other side.
std::vector<int> Reversed(const std::vector<int>& loop)
{
    std::vector<int> reversed = loop;
    std::reverse(reversed.begin() + 1, reversed.end());
    return reversed;
}

// A face is met once from each of its members: the first walk stands for all.
void KeepFirstOfEach(std::vector<qvxSubArea>& subAreas)
{
    std::set<std::vector<int>> seen;
    std::erase_if(subAreas, [&seen](const qvxSubArea& subArea) {
        return !seen.insert(std::min(subArea.nodes, Reversed(subArea.nodes))).second;
    });
}

}  // namespace

qvxAreaLoad::~qvxAreaLoad() = default;

void qvxAreaLoad::SetAreaLoad(const CjxStruct* model, const jxAreaload& load)
{
    nodes_.clear();
    members_.clear();
    nodeMembers_.clear();
    load_ = load;
    jxPoint p[4];
    for (int i = 0; i < 4; ++i)
        p[i] = qvx::FindById(model->nodes, load.node[i]).Point();

    const jxPlane plane(p[0], p[1], p[2], 0.0);
    if (calc_distance(p[1], p[2]) * kRelativeTolerance > calc_distance(p[0], p[1], p[2]))
        ThrowInvalid(load, L"first three nodes are colinear");
    plane.calc_cos(axes_);
    for (int i = 0; i < 4; ++i) {
        corners_[i] = transform_point(p[i], axes_);
        corners_[i].z = 0;
    }
    footprintArea_ = std::fabs(area(corners_, 4));
    if (footprintArea_ == 0)
        ThrowInvalid(load, L"zero load area");
    // The footprint itself has to be flat by its own size; members may lie as far off it as nodes that are one.
    const double tolerance = std::sqrt(footprintArea_) * kRelativeTolerance;
    if (plane.distance(p[3]) >= tolerance)
        ThrowInvalid(load, L"load area not coplanar");
    assert(qvx::IsRotation(qvx::RotationMatrix<double>(axes_)) && "axes of a footprint are orthonormal");
    GatherWithin(*model, std::max(tolerance, model->mergeTolerance));
    GatherNodeMembers();
}

void qvxAreaLoad::GatherWithin(const CjxStruct& model, double tolerance)
{
    const jxPlane plane(qvx::FindById(model.nodes, load_.node[0]).Point(),
                        qvx::FindById(model.nodes, load_.node[1]).Point(),
                        qvx::FindById(model.nodes, load_.node[2]).Point(), 0.0);
    for (const jxNd& node : model.nodes) {
        if (plane.distance(node.Point()) > tolerance)
            continue;
        jxPoint p = transform_point(node.Point(), axes_);
        p.z = 0;
        if (!inpolygon(corners_, 4, p) && !onpolygon(corners_, 4, p, tolerance))
            continue;
        jxNd inPlane = node;
        inPlane.x = p.x;
        inPlane.y = p.y;
        inPlane.z = 0;
        nodes_.push_back(inPlane);
    }
    for (const jxBm& beam : model.beams)
        if (qvx::FindOrNull(nodes_, beam.node1) != nullptr && qvx::FindOrNull(nodes_, beam.node2) != nullptr)
            members_.push_back(beam);
}

void qvxAreaLoad::GatherNodeMembers()
{
    for (const jxBm& member : members_) {
        nodeMembers_[member.node1].push_back(&member);
        nodeMembers_[member.node2].push_back(&member);
    }
    openSubArea_ = std::any_of(nodeMembers_.begin(), nodeMembers_.end(),
                               [](const auto& entry) { return entry.second.size() < 2; });
    if (openSubArea_)
        qvx::Host().DebugOutput(L"*** Open sub-area(s) detected within the area load footprint ***");
}

jxPoint qvxAreaLoad::PlaceOf(int node) const
{
    const jxNd* found = qvx::FindOrNull(nodes_, node);
    return found == nullptr ? jxPoint{} : found->Point();
}

double qvxAreaLoad::LengthOf(const jxBm& member) const
{
    return calc_distance(PlaceOf(member.node1), PlaceOf(member.node2));
}

/// The sharpest turn to the left, straight on included; never to the right. Such a walk keeps the enclosed area on its
/// left and closes only round a convex face: the way along the outside of a mesh would need turns to the right and dies
/// at the first corner. Among equal turns the later member is taken.
qvxAreaLoad::Step qvxAreaLoad::FindNextMember(const jxBm& current, int pivot) const
{
    Step next;
    const std::vector<const jxBm*>& atPivot = nodeMembers_.at(pivot);
    if (atPivot.size() == 1)
        return next;
    const jxPoint place = PlaceOf(pivot);
    const jxPoint in = place - PlaceOf(FarEnd(current, pivot));
    double best = 0;
    for (const jxBm* member : atPivot) {
        if (member->id == current.id)
            continue;
        const int farEnd = FarEnd(*member, pivot);
        double turn = CalcSignedAngle2D(in, PlaceOf(farEnd) - place);
        if (turn < 0 && turn > -kRelativeTolerance)
            turn = 0;
        if (turn < best)
            continue;
        best = turn;
        next = {.member = member, .node = farEnd};
    }
    return next;
}

void qvxAreaLoad::TraceSubArea(std::vector<qvxSubArea>& out, WalkedMembers& walked, const jxBm& member, int startPivot,
                               int target)
{
    qvxSubArea loop{.nodes = {startPivot}, .members = {member.id}};
    const jxBm* current = &member;
    int pivot = startPivot;
    bool isClosed = false;
    for (int count = 1; !isClosed; ++count) {
        const Step next = FindNextMember(*current, pivot);
        if (next.member == nullptr)
            return;
        loop.members.push_back(next.member->id);
        Walked& way = walked[current->id];
        (current->node2 == pivot ? way.forward : way.backward) = true;
        pivot = next.node;
        current = next.member;
        loop.nodes.push_back(pivot);
        isClosed = pivot == target;
        if (!isClosed && count > kMostSteps) {
            CString text;
            text.Format(L"*** Too many members for a sub-area at member %d, target node %d", member.id, target);
            qvx::Host().DebugOutput(text.Text());
            return;
        }
    }
    assert(loop.nodes.size() == loop.members.size());
    if (loop.nodes.size() < 3)
        return;
    if (std::set<int>(loop.nodes.begin(), loop.nodes.end()).size() < loop.nodes.size()) {
        duplicateNode_ = true;
        return;
    }
    const auto first = std::min_element(loop.nodes.begin(), loop.nodes.end()) - loop.nodes.begin();
    std::rotate(loop.nodes.begin(), loop.nodes.begin() + first, loop.nodes.end());
    std::rotate(loop.members.begin(), loop.members.begin() + first, loop.members.end());
    out.push_back(loop);
}

void qvxAreaLoad::FindSubAreas(std::vector<qvxSubArea>& out)
{
    duplicateNode_ = false;
    out.clear();
    WalkedMembers walked;
    for (const jxBm& member : members_) {
        if (!walked[member.id].forward)
            TraceSubArea(out, walked, member, member.node2, member.node1);
        if (!walked[member.id].backward)
            TraceSubArea(out, walked, member, member.node1, member.node2);
    }
    KeepFirstOfEach(out);
}
