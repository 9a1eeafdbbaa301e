// Displacements, reactions and constraint forces of nodes.

#include "model/jx_struct.h"

#include <cassert>

#include "report/report.h"
#include "report/report_combinations.h"
#include "report/report_selection.h"
#include "report/report_six_values.h"

using namespace qvx;

namespace {

// Reactions are the forces of the supports on the structure, in global axes.
constexpr Column<jxResult6Val> kReactionColumns[] = {
    {"Node", 8, IdOf<jxResult6Val>}, {"Rx", 12, Reaction::At<0>},  {"Ry", 12, Reaction::At<1>},
    {"Rz", 12, Reaction::At<2>},     {"Rox", 12, Reaction::At<3>}, {"Roy", 12, Reaction::At<4>},
    {"Roz", 12, Reaction::At<5>},
};
constexpr Layout<jxResult6Val>
    kReactions("    Node           Rx           Ry           Rz          Rox          Roy          Roz",
               kReactionColumns);

constexpr Column<jxResult6Val> kSpringReactionColumns[] = {
    {"Node", 8, IdOf<jxResult6Val>}, {"SRx", 12, Reaction::At<0>},  {"SRy", 12, Reaction::At<1>},
    {"SRz", 12, Reaction::At<2>},    {"SRox", 12, Reaction::At<3>}, {"SRoy", 12, Reaction::At<4>},
    {"SRoz", 12, Reaction::At<5>},
};
constexpr Layout<jxResult6Val>
    kSpringReactions("    Node          SRx          SRy          SRz         SRox         SRoy         SRoz",
                     kSpringReactionColumns);

template <int I>
Cell ForceNode(const jxMultiDofConstraintForce& f)
{
    return Integer(f.node[I]);
}

template <int I>
Cell ForceDof(const jxMultiDofConstraintForce& f)
{
    return Word(NameOf(kDirections, f.dof[I]));
}

template <int I>
Cell ForceValue(const jxMultiDofConstraintForce& f)
{
    assert(f.dof[I] >= 0 && f.dof[I] < 6 && "a degree of freedom of a node");
    return Result(IsTranslation(f.dof[I]) ? kForce : kMoment, f.force[I]);
}

constexpr Column<jxMultiDofConstraintForce> kConstraintForceColumns[] = {
    {"Id", 10, IdOf<jxMultiDofConstraintForce>},
    {"Node-1", 12, ForceNode<0>},
    {"DOF-1", 12, ForceDof<0>},
    {"Value-1", 12, ForceValue<0>},
    {"Node-2", 12, ForceNode<1>},
    {"DOF-2", 12, ForceDof<1>},
    {"Value-2", 12, ForceValue<1>},
};
constexpr Layout<jxMultiDofConstraintForce>
    kConstraintForces("        Id       Node-1        DOF-1      Value-1       Node-2        DOF-2      Value-2",
                      kConstraintForceColumns);

void WriteSpringReactions(ReportWriter& out, const CjxStruct& model, const Selection& selection, const char* anchor,
                          const char* title, std::vector<jxResult6Val> jxCombResult::*reactions)
{
    // Springs of a node and coupled ones have the same columns: reactions are the forces of the spring on the
    // structure.
    out.BeginSection(anchor, title,
                     {ReportWriter::UnitsLine({{"Units: Spring Force Reactions SRx, SRy, SRz ", out.UnitOf(kForce)},
                                               {"Spring Moment SRox, SRoy, SRoz ", out.UnitOf(kMoment)}})});
    WriteResults(out, model, kSpringReactions, reactions, selection.OfNode());
    out.EndSection();
}

}  // namespace

void CjxReport::list_nodal_displacements()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "nodal_displacements", "Nodal Displacements",
        {ReportWriter::UnitsLine({{"Units: Displacements Dx, Dy, Dz ", out.UnitOf(kTranslationalDisplacement)},
                                  {"Dox, Doy, Doz ", out.UnitOf(kRotationalDisplacement)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteResults(out, *model, kDisplacements, &jxCombResult::displacements, selection.OfNode());
    out.EndSection();
}

void CjxReport::list_support_reactions()
{
    ReportWriter& out = *writer_;
    out.BeginSection("support_reactions", "Support Reactions",
                     {ReportWriter::UnitsLine({{"Units: Force Reactions Rx, Ry, Rz ", out.UnitOf(kForce)},
                                               {"Moment Reactions Rox, Roy, Roz ", out.UnitOf(kMoment)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteResults(out, *model, kReactions, &jxCombResult::supportReactions, selection.OfNode());
    out.EndSection();
}

void CjxReport::list_multi_dof_constraint_forces()
{
    ReportWriter& out = *writer_;
    out.BeginSection("multi_dof_constraint_forces", "Multi-DOF Constraint Force/Moment Values",
                     {ReportWriter::UnitsLine({{"Units: Constraint Forces ", out.UnitOf(kForce)},
                                               {"Constraint Moments ", out.UnitOf(kMoment)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteResults(out, *model, kConstraintForces, &jxCombResult::multiDofConstraintForces,
                 [&](const jxMultiDofConstraintForce& force) { return selection.ShowsConstraint(force.id); });
    out.EndSection();
}

void CjxReport::list_nodal_spring_reactions()
{
    WriteSpringReactions(*writer_, *model, Selection(*model, bSelectedOnly), "nodal_spring_reactions",
                         "Nodal Spring Reactions", &jxCombResult::nodalSpringReactions);
}

void CjxReport::list_nodal_coupled_spring_reactions()
{
    WriteSpringReactions(*writer_, *model, Selection(*model, bSelectedOnly), "nodal_coupled_spring_reactions",
                         "Nodal Coupled Spring Reactions", &jxCombResult::coupledSpringReactions);
}
