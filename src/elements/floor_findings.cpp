// Rigid diaphragms as they are made: a web of stiff bars from the first three nodes of a floor to all its others.

#include <algorithm>
#include <cassert>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "elements/element_findings.h"
#include "elements/link/link_group.h"
#include "model/find_record.h"
#include "model/freedoms.h"
#include "model/units.h"
#include "tools/geometry.h"

namespace qvx {

namespace {

double Length(const jxPoint& v)
{
    return std::sqrt(dot(v, v));
}

jxPoint Cross(const jxPoint& a, const jxPoint& b)
{
    jxPoint c;
    cross(c, a, b);
    return c;
}

// What the links give to one node of a floor.
struct LinkedNode
{
    jxPoint along;            // of the first link, a unit vector
    jxPoint normal;           // of the floor
    double spread = 0;        // largest sine between the first link and another
    double inverseCubes = 0;  // sum of 1 / L^3 of the links
};

using LinkedNodes = std::map<int, LinkedNode>;

LinkedNodes NodesOfLinks(const CjxStruct& m)
{
    LinkedNodes linked;
    for (const jxLink& link : m.links) {
        assert(std::fabs(dot(link.normal, link.normal) - 1) < 1e-9 && "the normal of a floor is a unit vector");
        const jxNd* start = FindOrNull(m.nodes, link.node1);
        const jxNd* end = FindOrNull(m.nodes, link.node2);
        if (start == nullptr || end == nullptr)
            continue;
        const jxPoint run = end->Point() - start->Point();
        const double L = Length(run);
        if (L == 0)
            continue;
        for (const int id : {link.node1, link.node2}) {
            LinkedNode& node = linked[id];
            if (node.inverseCubes == 0)
                node = {.along = (1 / L) * run, .normal = link.normal};
            node.spread = std::max(node.spread, Length(Cross(node.along, (1 / L) * run)));
            node.inverseCubes += 1 / (L * L * L);
        }
    }
    return linked;
}

// Nodes of a floor that no element stands at. As a mark, or as the place of a mass, they look apart from the structure;
// in the plane of a diaphragm they are part of it, and a support of theirs holds the whole floor.
void FindHeldByLinksAlone(InputCheck& check, const LinkedNodes& linked)
{
    const CjxStruct& m = check.model;
    std::vector<bool> isOfElement(m.nodes.size(), false);
    const auto mark = [&](const auto& elements) {
        for (const auto& element : elements) {
            std::vector<int> ids;
            if constexpr (requires { element.node1; })
                ids = {element.node1, element.node2};
            else
                ids.assign(std::begin(element.node), std::end(element.node));
            for (const int id : ids)
                if (const jxNd* node = FindOrNull(m.nodes, id))
                    isOfElement[static_cast<std::size_t>(node - m.nodes.data())] = true;
        }
    };
    mark(m.beams);
    mark(m.shell4s);
    mark(m.bricks);
    mark(m.multiDofConstraints);
    FindingOfMany held(check, FindingCode::DiaphragmHoldsNode, "diaphragms");
    assert(std::is_sorted(m.nodes.begin(), m.nodes.end()) && "nodes are looked up by id");
    for (const auto& [id, unused] : linked)
        if (!isOfElement[LowerBound(m.nodes, id)])
            held.Add(jxNd::name(), id, [] {
                return L"nodes of no element lie in the plane of a rigid diaphragm and are part of it: their supports "
                       L"hold the floor, their masses move with it";
            });
}

// Stiffness across the links of one node: of what stands on the floor, and of what lies in it beside the links.
struct Across
{
    double standing = 0;
    double lying = 0;
};

// In internal units, for the check runs in those of the model, in which E, I and L need not be of one system.
class Stiffnesses
{
public:
    Stiffnesses(const CjxStruct& m, const LinkedNodes& linked)
    {
        GetConversionFactors(f_, m.units, jxUnit());
        for (const jxBm& beam : m.beams)
            AddMember(m, linked, beam);
        for (const jxShell4& shell : m.shell4s)
            AddShell(m, linked, shell);
    }

    Across Of(int node) const
    {
        const auto at = across_.find(node);
        return at == across_.end() ? Across() : at->second;
    }

    // Bending stiffness of bars of second moment I [Dimension^4] and the sum of 1 / L^3 [1 / Length^3] across them.
    double Bending(double E, double I, double inverseCubes) const
    {
        return 12 * E * f_[kModulus] * I * std::pow(f_[kDimension], 4) * inverseCubes / std::pow(f_[kLength], 3);
    }

private:
    // A bar that leaves the floor resists its motion by bending, one that lies in it by its axial stiffness.
    void AddMember(const CjxStruct& m, const LinkedNodes& linked, const jxBm& beam)
    {
        const jxNd* start = FindOrNull(m.nodes, beam.node1);
        const jxNd* end = FindOrNull(m.nodes, beam.node2);
        const jxMat* material = FindOrNull(m.materials, beam.material);
        const jxSect* section = FindOrNull(m.sections, beam.section);
        if (start == nullptr || end == nullptr || material == nullptr || section == nullptr || beam.excluded != 0)
            return;
        const jxPoint run = end->Point() - start->Point();
        const double L = Length(run);
        for (const int id : {beam.node1, beam.node2}) {
            const auto at = linked.find(id);
            if (at == linked.end() || L == 0)
                continue;
            const double across = dot(run, Cross(at->second.normal, at->second.along)) / L;
            Across& sum = across_[id];
            sum.standing +=
                Bending(material->E, std::max(section->Iz, section->Iy), 1 / (L * L * L)) * (1 - across * across);
            sum.lying += material->E * f_[kModulus] * section->A * std::pow(f_[kDimension], 2) / (L * f_[kLength]) *
                         across * across;
        }
    }
    // A wall across the links stands, a slab lies: either resists by about its rigidity per width.
    void AddShell(const CjxStruct& m, const LinkedNodes& linked, const jxShell4& shell)
    {
        const jxMat* material = FindOrNull(m.materials, shell.material);
        const jxThick* thickness = FindOrNull(m.thicknesses, shell.thickness);
        const jxNd* corners[4];
        for (std::size_t i = 0; i < 4; ++i)
            corners[i] = FindOrNull(m.nodes, shell.node[i]);
        if (material == nullptr || thickness == nullptr || shell.excluded != 0 ||
            std::find(std::begin(corners), std::end(corners), nullptr) != std::end(corners))
            return;
        jxPoint normal = Cross(corners[2]->Point() - corners[0]->Point(), corners[3]->Point() - corners[1]->Point());
        normalize(normal);
        for (const int id : shell.node) {
            const auto at = linked.find(id);
            if (at == linked.end())
                continue;
            const double across = dot(normal, Cross(at->second.normal, at->second.along));
            const double inPlane = material->E * f_[kModulus] * thickness->t * f_[kDimension] * (1 - across * across);
            const double level = std::fabs(dot(normal, at->second.normal));
            (level > 0.9 ? across_[id].lying : across_[id].standing) += 0.4 * inPlane;
        }
    }

    double f_[kQuantityCount];
    std::map<int, Across> across_;
};

// All links of a node in one line: along it the floor is rigid, across it only as stiff as the links are in bending,
// 12 E I f / L^3 with the largest second moment of the model. Beside stiff walls, or with long links, that is soft, and
// the floor is no rigid one there.
void FindHeldByBending(InputCheck& check, const LinkedNodes& linked)
{
    constexpr double kInLine = 1e-3;
    constexpr double kSoft = 10;  // times what stands at the node
    const CjxStruct& m = check.model;
    const Freedoms freedoms(check.model);
    const LinkStock stock = StockOf(m);
    const double I = std::max(stock.section.Iz, stock.section.Iy) * m.diaphragmStiffnessFactor;
    const Stiffnesses stiffnesses(m, linked);
    FindingOfMany soft(check, FindingCode::DiaphragmBends, "diaphragms");
    for (const auto& [id, node] : linked) {
        const jxPoint side = Cross(node.normal, node.along);
        if (node.spread > kInLine || freedoms.LostShare(side, kX) > kInLine)
            continue;
        const Across across = stiffnesses.Of(id);
        if (stiffnesses.Bending(stock.material.E, I, node.inverseCubes) + across.lying < kSoft * across.standing)
            soft.Add(jxNd::name(), id, [] {
                return L"nodes of a rigid diaphragm are held across the line of its links by their bending alone, "
                       L"which "
                       L"is soft beside the elements that stand there: the floor is not rigid";
            });
    }
}

}  // namespace

void FindInFloors(InputCheck& check)
{
    if (check.model.links.empty())
        return;
    const LinkedNodes linked = NodesOfLinks(check.model);
    FindHeldByLinksAlone(check, linked);
    FindHeldByBending(check, linked);
}

}  // namespace qvx
