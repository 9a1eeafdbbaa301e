// Forces, stresses and nodal resultants of shells.

#include <cassert>

#include "model/find_record.h"
#include "model/jx_struct.h"
#include "report/report.h"
#include "report/report_combinations.h"
#include "report/report_locations.h"
#include "report/report_selection.h"

using namespace qvx;

namespace {

using ShellRow = LocationRow<jxShellStress>;

enum Face : int { kTop = 0, kBottom = 1 };

const jxShellDerived& DerivedOf(const ShellRow& r)
{
    assert(r.location >= 0 && r.location <= 4 && "centre and corners");
    return r.stress.derived[r.location];
}

// Component of the moments and shears Mxx, Myy, Mxy, Vxx, Vyy.
template <int I>
Cell Bending(const ShellRow& r)
{
    assert(r.location >= 0 && r.location <= 4 && "centre and corners");
    return Result(I < 3 ? kLinearMoment : kLinearForce, r.stress.P[r.location][I]);
}

template <int I>
Cell Membrane(const ShellRow& r)
{
    static_assert(I < 3, "Fxx, Fyy, Fxy");
    return Result(kLinearForce, r.stress.F[r.location][I]);
}

template <double jxShellDerived::*Value, Quantity Q>
Cell Derived(const ShellRow& r)
{
    return Result(Q, DerivedOf(r).*Value);
}

template <double jxShellDerived::*Value>
Cell AngleOf(const ShellRow& r)
{
    return PlainResult('f', 3, DerivedOf(r).*Value * kDegreesPerRadian);
}

template <double (jxShellDerived::*Value)[2], int F>
Cell FaceStress(const ShellRow& r)
{
    static_assert(F == kTop || F == kBottom);
    return Result(kStress, (DerivedOf(r).*Value)[F]);
}

constexpr Column<ShellRow> kBendingColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Mxx", 12, Bending<0>},
    {"Myy", 12, Bending<1>},
    {"Mxy", 12, Bending<2>},
    {"Vxx", 12, Bending<3>},
    {"Vyy", 12, Bending<4>},
};
constexpr Layout<ShellRow> kBending("   Shell Location          Mxx          Myy          Mxy          Vxx         Vyy",
                                    kBendingColumns);

constexpr Column<ShellRow> kPrincipalBendingColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Mmax", 12, Derived<&jxShellDerived::Mmax, kLinearMoment>},
    {"Mmin", 12, Derived<&jxShellDerived::Mmin, kLinearMoment>},
    {"Angle-M", 12, AngleOf<&jxShellDerived::angleM>},
    {"Vmax", 12, Derived<&jxShellDerived::Vmax, kLinearForce>},
    {"Angle-V", 12, AngleOf<&jxShellDerived::angleV>},
};
constexpr Layout<ShellRow>
    kPrincipalBending("   Shell Location         Mmax         Mmin      Angle-M         Vmax      Angle-V",
                      kPrincipalBendingColumns);

constexpr Column<ShellRow> kMembraneColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Fxx", 12, Membrane<0>},
    {"Fyy", 12, Membrane<1>},
    {"Fxy", 12, Membrane<2>},
    {"Fmax", 12, Derived<&jxShellDerived::Fmax, kLinearForce>},
    {"Fmin", 12, Derived<&jxShellDerived::Fmin, kLinearForce>},
    {"Angle", 12, AngleOf<&jxShellDerived::angle>},
};
constexpr Layout<ShellRow>
    kMembrane("   Shell Location          Fxx          Fyy          Fxy        Fmax         Fmin        Angle",
              kMembraneColumns);

constexpr const char* kStressLine =
    "   Shell Location          Sxx          Syy          Szz         Sxy          Syz           Sxz";

constexpr Column<ShellRow> kTopColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Sxx", 12, FaceStress<&jxShellDerived::Sxx, kTop>},
    {"Syy", 12, FaceStress<&jxShellDerived::Syy, kTop>},
    {"Szz", 12, FaceStress<&jxShellDerived::Szz, kTop>},
    {"Sxy", 12, FaceStress<&jxShellDerived::Sxy, kTop>},
    {"Syz", 12, FaceStress<&jxShellDerived::Syz, kTop>},
    {"Sxz", 12, FaceStress<&jxShellDerived::Sxz, kTop>},
};
constexpr Column<ShellRow> kBottomColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Sxx", 12, FaceStress<&jxShellDerived::Sxx, kBottom>},
    {"Syy", 12, FaceStress<&jxShellDerived::Syy, kBottom>},
    {"Szz", 12, FaceStress<&jxShellDerived::Szz, kBottom>},
    {"Sxy", 12, FaceStress<&jxShellDerived::Sxy, kBottom>},
    {"Syz", 12, FaceStress<&jxShellDerived::Syz, kBottom>},
    {"Sxz", 12, FaceStress<&jxShellDerived::Sxz, kBottom>},
};
constexpr Layout<ShellRow> kTopStresses(kStressLine, kTopColumns);
constexpr Layout<ShellRow> kBottomStresses(kStressLine, kBottomColumns);

constexpr Column<ShellRow> kPrincipalStressColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Location", 8, LocationOf<jxShellStress>},
    {"Top- S1", 12, FaceStress<&jxShellDerived::S1, kTop>},
    {"Top-S2", 12, FaceStress<&jxShellDerived::S2, kTop>},
    {"Top-Von M.", 12, FaceStress<&jxShellDerived::vonMises, kTop>},
    {"Bot- S1", 12, FaceStress<&jxShellDerived::S1, kBottom>},
    {"Bot-S2", 12, FaceStress<&jxShellDerived::S2, kBottom>},
    {"Bot-Von M.", 12, FaceStress<&jxShellDerived::vonMises, kBottom>},
};
constexpr Layout<ShellRow> kPrincipalStresses(
    "   Shell Location      Top- S1       Top-S2   Top-Von M.      Bot- S1       Bot-S2   Bot-Von M.",
    kPrincipalStressColumns, PerLine::One,
    "************************************* PRINCIPAL STRESSES **************************************");

template <int I>
Cell SurfaceReaction(const jxResult6Val& r)
{
    return Result(kSurfacePressure, r.value[I]);
}

constexpr Column<jxResult6Val> kSurfaceReactionColumns[] = {
    {"Shell", 8, IdOf<jxResult6Val>},
    {"SRx", 12, SurfaceReaction<0>},
    {"SRy", 12, SurfaceReaction<1>},
    {"SRz", 12, SurfaceReaction<2>},
};
constexpr Layout<jxResult6Val> kSurfaceReactions(
    "   Shell          SRx          SRy          SRz      Shell          SRx          SRy          SRz",
    kSurfaceReactionColumns, PerLine::Two);

// Forces of the element on its nodes: ux, uy of the membrane, then w, thx, thy of the plate.
template <int I>
Cell MembraneForce(const ShellRow& r)
{
    assert(r.location >= 1 && r.location <= 4 && "forces act at corners, not at the centre");
    return Result(kForce, r.stress.fm[2 * (r.location - 1) + I]);
}

template <int I>
Cell PlateForce(const ShellRow& r)
{
    assert(r.location >= 1 && r.location <= 4 && "forces act at corners, not at the centre");
    return Result(I == 0 ? kForce : kMoment, r.stress.fp[3 * (r.location - 1) + I]);
}

constexpr Column<ShellRow> kResultantColumns[] = {
    {"Shell", 8, ElementOf<jxShellStress>},
    {"Node", 8, [](const ShellRow& r) { return Integer(r.node); }},
    {"Fx", 12, MembraneForce<0>},
    {"Fy", 12, MembraneForce<1>},
    {"Fz", 12, PlateForce<0>},
    {"Mx", 12, PlateForce<1>},
    {"My", 12, PlateForce<2>},
};
constexpr Layout<ShellRow>
    kResultants("   Shell     Node           Fx           Fy           Fz           Mx           My",
                kResultantColumns);

// Stresses are of the centre and the corners, forces on nodes of the corners only.
constexpr int kFromCentre = 0;
constexpr int kFromFirstNode = 1;

void WriteShells(ReportWriter& out, const CjxStruct& model, const Selection& selection, const Layout<ShellRow>& layout,
                 int firstLocation)
{
    ForEachCombination(out, model, [&](int, const jxCombResult& result) {
        TableOf<ShellRow> table(out, layout);
        for (const jxShellStress& stress : result.shell4Stresses) {
            // Results are in the order of the shells, but a host may have removed some since: each is looked up by its
            // id.
            const jxShell4& shell = FindById(model.shell4s, stress.id);
            if (selection.Shows(shell))
                WriteLocations(table, stress, shell.node, firstLocation);
        }
        table.End();
    });
}

}  // namespace

void CjxReport::list_shell4_bending_forces_moments()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_bending_forces_moments", "Shell Bending Forces and Moments",
                     {ReportWriter::UnitsLine({{"Units: Moment Mxx, Myy, Mxy ", out.UnitOf(kLinearMoment)},
                                               {"Shear Vxx, Vyy ", out.UnitOf(kLinearForce)}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), kBending, kFromCentre);
    out.EndSection();
}

void CjxReport::list_shell4_bending_principal_forces_moments()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_bending_principal_forces_moments", "Shell Bending Principal Forces and Moments",
                     {ReportWriter::UnitsLine({{"Units: Moment Mmax, Mmin ", out.UnitOf(kLinearMoment)},
                                               {"Shear Vmax ", out.UnitOf(kLinearForce)},
                                               {"Angle ", "deg"}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), kPrincipalBending, kFromCentre);
    out.EndSection();
}

void CjxReport::list_shell4_membrane_forces()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_membrane_forces", "Shell Membrane Forces",
                     {ReportWriter::UnitsLine(
                         {{"Units: Force Fxx, Fyy, Fxy Fmax, Fmin ", out.UnitOf(kLinearForce)}, {"Angle ", "deg"}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), kMembrane, kFromCentre);
    out.EndSection();
}

void CjxReport::list_shell4_stresses(int face)
{
    assert(face == kTop || face == kBottom);
    ReportWriter& out = *writer_;
    out.BeginSection(
        "shell4_stresses", face == kTop ? "Shell Stresses - Top" : "Shell Stresses - Bottom",
        {ReportWriter::UnitsLine({{"Units: Stresses Sxx, Syy, Szz, Sxy , Syz, Sxz ", out.UnitOf(kStress)}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), face == kTop ? kTopStresses : kBottomStresses,
                kFromCentre);
    out.EndSection();
}

void CjxReport::list_shell4_principal_stresses()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_principal_stresses", "Shell Principal Stresses",
                     {ReportWriter::UnitsLine({{"Units: Stresses S1, S2, Von Mises ", out.UnitOf(kStress)}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), kPrincipalStresses, kFromCentre);
    out.EndSection();
}

void CjxReport::list_shell4_spring_reactions()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "shell4_spring_reactions", "Surface Spring Reactions",
        {ReportWriter::UnitsLine({{"Units: Spring Force Reactions SRx, SRy, SRz ", out.UnitOf(kSurfacePressure)}})});
    const Selection selection(*model, bSelectedOnly);
    WriteResults(out, *model, kSurfaceReactions, &jxCombResult::shell4SpringReactions, selection.OfShell());
    out.EndSection();
}

void CjxReport::list_shell4_nodal_resultants()
{
    ReportWriter& out = *writer_;
    out.BeginSection("shell4_nodal_resultants", "Shell Nodal Resultants",
                     {ReportWriter::UnitsLine({{"Units: Forces ", out.UnitOf(kForce)}})});
    WriteShells(out, *model, Selection(*model, bSelectedOnly), kResultants, kFromFirstNode);
    out.EndSection();
}
