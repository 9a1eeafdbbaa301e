// Stresses and nodal resultants of bricks.

#include "model/find_record.h"

#include <cassert>

#include "model/jx_struct.h"
#include "report/report.h"
#include "report/report_combinations.h"
#include "report/report_locations.h"
#include "report/report_selection.h"
#include "tools/principal_stress.h"

using namespace qvx;

namespace {

using BrickRow = LocationRow<jxBrickStress>;

template <int I>
Cell Stress(const BrickRow& r)
{
    assert(r.location >= 0 && r.location <= 8 && "centre and nodes");
    return Result(kStress, r.stress.S[r.location][I]);
}

constexpr Column<BrickRow> kStressColumns[] = {
    {"Brick", 8, ElementOf<jxBrickStress>},
    {"Location", 8, LocationOf<jxBrickStress>},
    {"Sxx", 12, Stress<0>},
    {"Syy", 12, Stress<1>},
    {"Szz", 12, Stress<2>},
    {"Sxy", 12, Stress<3>},
    {"Syz", 12, Stress<4>},
    {"Sxz", 12, Stress<5>},
};
constexpr Layout<BrickRow>
    kStresses("   Brick Location          Sxx          Syy          Szz         Sxy          Syz           Sxz",
              kStressColumns);

// The middle stress is left out: it stands across the two directions that are given, and von Mises has it within.
struct PrincipalRow
{
    BrickRow at;
    PrincipalStresses principal;
    double vonMises;
};

// Component of the direction of the largest (0) or smallest (2) principal stress.
template <int Which, int I>
Cell Direction(const PrincipalRow& r)
{
    static_assert(Which == 0 || Which == 2, "the largest or the smallest of three");
    return PlainResult('f', 3, r.principal.v[Which][I]);
}

constexpr Column<PrincipalRow> kPrincipalColumns[] = {
    {"Brick", 8, [](const PrincipalRow& r) { return ElementOf(r.at); }},
    {"Location", 8, [](const PrincipalRow& r) { return LocationOf(r.at); }},
    {"S1", 12, [](const PrincipalRow& r) { return Result(kStress, r.principal.S[0]); }},
    {"S3", 12, [](const PrincipalRow& r) { return Result(kStress, r.principal.S[2]); }},
    {"Von Mises", 12, [](const PrincipalRow& r) { return Result(kStress, r.vonMises); }},
    {"v1-x", 6, Direction<0, 0>},
    {"v1-y", 6, Direction<0, 1>},
    {"v1-z", 6, Direction<0, 2>},
    {"v3-x", 6, Direction<2, 0>},
    {"v3-y", 6, Direction<2, 1>},
    {"v3-z", 6, Direction<2, 2>},
};
constexpr Layout<PrincipalRow>
    kPrincipal("   Brick Location           S1           S3    Von Mises   v1-x   v1-y   v1-z   v3-x   v3-y   v3-z",
               kPrincipalColumns);

template <int I>
Cell NodalForce(const BrickRow& r)
{
    assert(r.location >= 1 && r.location <= 8 && "forces act at nodes, not at the centre");
    return Result(kForce, r.stress.f[3 * (r.location - 1) + I]);
}

constexpr Column<BrickRow> kResultantColumns[] = {
    {"Brick", 8, ElementOf<jxBrickStress>},
    {"Node", 8, [](const BrickRow& r) { return Integer(r.node); }},
    {"Fx", 12, NodalForce<0>},
    {"Fy", 12, NodalForce<1>},
    {"Fz", 12, NodalForce<2>},
};
constexpr Layout<BrickRow> kResultants("   Brick     Node           Fx           Fy           Fz", kResultantColumns);

/// Calls write(table, stress, brick) for each brick that is shown, combination by combination.
template <class Row, class Write>
void WriteBricks(ReportWriter& out, const CjxStruct& model, const Selection& selection, const Layout<Row>& layout,
                 Write&& write)
{
    ForEachCombination(out, model, [&](int, const jxCombResult& result) {
        TableOf<Row> table(out, layout);
        for (const jxBrickStress& stress : result.brickStresses) {
            // By id: the host may have changed the order of its bricks since the run.
            const jxBrick& brick = FindById(model.bricks, stress.id);
            if (selection.Shows(brick))
                write(table, stress, brick);
        }
        table.End();
    });
}

void WritePrincipal(TableOf<PrincipalRow>& table, const jxBrickStress& stress, const jxBrick& brick)
{
    // From the six components of each location as they are listed, averaged or not: the reader can check one table by
    // the other.
    for (int k = 0; k <= 8; ++k)
        table.Write({.at = {stress, k, k == 0 ? 0 : brick.node[k - 1]},
                     .principal = PrincipalStressesOf(stress.S[k]),
                     .vonMises = VonMisesStress(stress.S[k])});
}

}  // namespace

void CjxReport::list_brick_stresses()
{
    ReportWriter& out = *writer_;
    out.BeginSection(
        "brick_stresses", "Brick Stresses",
        {ReportWriter::UnitsLine({{"Units: Stresses Sxx, Syy, Szz, Sxy , Syz, Sxz ", out.UnitOf(kStress)}})});
    WriteBricks(out, *model, Selection(*model, bSelectedOnly), kStresses,
                [](TableOf<BrickRow>& table, const jxBrickStress& stress, const jxBrick& brick) {
                    WriteLocations(table, stress, brick.node, 0);
                });
    out.EndSection();
}

void CjxReport::list_brick_principal_stresses()
{
    ReportWriter& out = *writer_;
    out.BeginSection("brick_principal_stresses", "Brick Principal Stresses",
                     {ReportWriter::UnitsLine({{"Units: Stresses S1, S3, VON Mises ", out.UnitOf(kStress)}})});
    WriteBricks(out, *model, Selection(*model, bSelectedOnly), kPrincipal, WritePrincipal);
    out.EndSection();
}

void CjxReport::list_brick_nodal_resultants()
{
    ReportWriter& out = *writer_;
    out.BeginSection("brick_nodal_resultants", "Brick Nodal Resultants",
                     {ReportWriter::UnitsLine({{"Units: Forces ", out.UnitOf(kForce)}})});
    WriteBricks(out, *model, Selection(*model, bSelectedOnly), kResultants,
                [](TableOf<BrickRow>& table, const jxBrickStress& stress, const jxBrick& brick) {
                    WriteLocations(table, stress, brick.node, 1);
                });
    out.EndSection();
}
