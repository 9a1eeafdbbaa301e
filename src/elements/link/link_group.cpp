#include "elements/link/link_group.h"

#include <algorithm>
#include <cassert>

#include "elements/nodal_vector.h"
#include "elements/scatter.h"
#include "model/find_record.h"

namespace qvx {

namespace {

struct LinkEnds
{
    jxPoint start;
    jxPoint end;
};

LinkEnds EndsOf(const CjxStruct& model, const jxLink& link)
{
    return {.start = FindById(model.nodes, link.node1).Point(), .end = FindById(model.nodes, link.node2).Point()};
}

template <Number Real, class Sink>
void AssembleLinks(const CjxStruct& model, const jxSolutionData& data, const LinkStock& stock, const Sink& sink)
{
    for (std::size_t i = 0; i < model.links.size(); ++i) {
        const jxLink& link = model.links[i];
        const LinkEnds ends = EndsOf(model, link);
        double c[3][3];
        LinkAxes(c, ends.start, ends.end, link.normal);
        const auto local = LocalStiffness(LinkParts<Real>(PropertiesOf(model, stock, link)));
        // Rotated block by block, not written from the parts as a member is: in double the roundings of bars 1e4 times
        // stiffer than the structure show from the 9th digit of its displacements on, and another order of the sums
        // would change those digits of every model with a floor.
        const auto k = RotateSymmetric(local, RotationMatrix<Real>(c));
        ScatterInto(sink, data.lmLinks[static_cast<int>(i) + 1], kMemberDofs, k.data());
    }
}

}  // namespace

LinkStock StockOf(const CjxStruct& model)
{
    LinkStock stock;
    for (const jxMat& m : model.materials)
        if (m.E > stock.material.E)
            stock.material = m;
    double stiffest = 0;
    for (const jxSect& s : model.sections) {
        // Its numbers are 1e5 times those of the stiffest real section: links made of it would take all digits.
        if (model.bConsistentMechanics != 0 && CompareNoCase(s.label, L"RIGID_LINK") == 0)
            continue;
        if (const double I = std::max(s.Iz, s.Iy); I > stiffest) {
            stock.section = s;
            stiffest = I;
        }
    }
    return stock;
}

LinkProperties PropertiesOf(const CjxStruct& model, const LinkStock& stock, const jxLink& link)
{
    const LinkEnds ends = EndsOf(model, link);
    return {.E = stock.material.E,
            .A = stock.section.A,
            .I = std::max(stock.section.Iz, stock.section.Iy),
            .factor = model.diaphragmStiffnessFactor,
            .L = calc_distance(ends.start, ends.end)};
}

std::array<double, kMemberDofs> LinkForces(const CjxStruct& model, const LinkStock& stock, const jxLink& link, int comb)
{
    const LinkEnds ends = EndsOf(model, link);
    double c[3][3];
    LinkAxes(c, ends.start, ends.end, link.normal);
    auto u = NodalVectorOf(model, comb).Gather<kMemberDofs>(PositionsOf<2>(model, {link.node1, link.node2}));
    // less the translation of the start, before anything is rounded: a floor that moves as a whole strains no link
    for (std::size_t axis = 0; axis < 3; ++axis) {
        u[kDofCount + axis] -= u[axis];
        u[axis] = double128(0);
    }
    const Matrix3<double128> turn = RotationMatrix<double128>(c);
    const auto k = LocalStiffness(LinkParts<double128>(PropertiesOf(model, stock, link)));
    const auto global = ToGlobalAxes(k * ToLocalAxes(u, turn), turn);
    std::array<double, kMemberDofs> forces;
    std::transform(global.begin(), global.end(), forces.begin(),
                   [](const double128& f) { return static_cast<double>(f); });
    return forces;
}

void AddLinkStiffness(const CjxStruct& model, jxSolutionData& data, const LinkStock& stock)
{
    WithStiffnessSink(data, model.solverType, [&](const auto& sink) {
        WithNumberType(model.solverType,
                       [&](auto tag) { AssembleLinks<typename decltype(tag)::Real>(model, data, stock, sink); });
    });
}

}  // namespace qvx
