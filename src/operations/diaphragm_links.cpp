// The web of links that stands for the rigid diaphragms of a model.

#include <algorithm>
#include <cassert>
#include <cmath>

#include "model/find_record.h"
#include "operations/diaphragm.h"

namespace {

enum DiaphragmType : int { kGeneric = 0, kXzPlane = 1, kYzPlane = 2, kXyPlane = 3 };

double Coordinate(const jxNd& node, int axis)
{
    return axis == 0 ? node.x : axis == 1 ? node.y : node.z;
}

jxPoint UnitVector(int axis)
{
    return {axis == 0 ? 1.0 : 0.0, axis == 1 ? 1.0 : 0.0, axis == 2 ? 1.0 : 0.0};
}

}  // namespace

void CjxStruct::CreateDiaphragmLinks()
{
    links.clear();
    if (bRigidDiaphragms == 0)
        return;
    int count = 0;
    int axis = 0;
    for (const jxDiaphragm& d : diaphragms) {
        if (d.type == kGeneric) {
            qvxDiaphragm floor(this);
            floor.SetDiaphragm(d);
            CreateLinks(floor.Nodes(), count, floor.Normal());
        } else {
            std::vector<jxNd> level;
            jxNd reference;
            GetRegularDiaphragmNodes(level, reference, axis, d);
            CreateLinks(level, count, UnitVector(axis));
        }
    }
}

// The first three nodes form a rigid triangle to which each other node is tied three times: that holds its two
// translations in the plane, and the third tie makes up for one of the others running along the same line.
void CjxStruct::CreateLinks(const std::vector<jxNd>& levelNodes, int& count, const jxPoint& normal)
{
    assert(std::fabs(dot(normal, normal) - 1) < 1e-9 && "the normal of a floor is a unit vector");
    const std::size_t n = levelNodes.size();
    if (n < 2)
        return;
    for (std::size_t i = 0; i < std::min<std::size_t>(n, 3); ++i)
        for (std::size_t j = i + 1; j < n; ++j) {
            jxLink& link = links.emplace_back();
            link.id = ++count;
            link.node1 = levelNodes[i].id;
            link.node2 = levelNodes[j].id;
            link.normal = normal;
            assert(link.node1 != link.node2 && "a link joins two nodes");
        }
}

void CjxStruct::GetRegularDiaphragmNodes(std::vector<jxNd>& levelNodes, jxNd& reference, int& axis,
                                         const jxDiaphragm& d) const
{
    reference = qvx::FindById(nodes, d.node[0]);
    switch (d.type) {
    case kXzPlane:
        axis = 1;
        break;
    case kYzPlane:
        axis = 0;
        break;
    case kXyPlane:
        axis = 2;
        break;
    default:
        break;  // of unknown type: the axis stays as it is
    }
    assert(axis >= 0 && axis <= 2);
    levelNodes.clear();
    const double level = Coordinate(reference, axis);
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(levelNodes),
                 [&](const jxNd& node) { return is_equal(Coordinate(node, axis), level, mergeTolerance); });
}
