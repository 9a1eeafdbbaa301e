// Physics knows no units: a model and its double in another set of units give the same answers.
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/jx_struct.h"
#include "model/units.h"
#include "support/recording_host.h"

/// Reaches the conversion, which hosts reach through the runs only.
class ConvertUnitsAccess
{
public:
    static void Convert(CjxStruct& model, const jxUnit& from, const jxUnit& to) { model.ConvertUnits(from, to); }
};

namespace qvx::test {
namespace {

/// A unit set by force, length and temperature.
struct UnitSystem
{
    const wchar_t* force;
    const wchar_t* length;
    const wchar_t* temperature;
};

constexpr UnitSystem kSystems[] = {
    {L"lb", L"ft", L"F"}, {L"kip", L"in", L"F"}, {L"kip", L"ft", L"C"}, {L"N", L"mm", L"C"},   {L"N", L"cm", L"F"},
    {L"N", L"m", L"C"},   {L"kN", L"mm", L"C"},  {L"kN", L"cm", L"C"},  {L"kN", L"m", L"C"},   {L"MT", L"mm", L"C"},
    {L"MT", L"cm", L"C"}, {L"MT", L"m", L"F"},   {L"Kgf", L"mm", L"C"}, {L"Kgf", L"cm", L"C"}, {L"Kgf", L"m", L"C"},
};

/// A host's mixture: every quantity in a unit of its own choosing, rotations in degrees.
jxUnit MixedUnits()
{
    const wchar_t* const names[kQuantityCount] = {L"m",        L"mm",       L"kN",   L"lb/ft",    L"kip-ft", L"N-mm/mm",
                                                  L"Kgf/cm^2", L"cm",       L"deg",  L"C",        L"N/mm^2", L"kN/m^3",
                                                  L"mm^2",     L"kip/in^2", L"N/mm", L"kN-m/deg", L"MT/m^2", L"N/cm^3"};
    jxUnit units;
    for (int k = 0; k < kQuantityCount; ++k)
        units.unit[k] = *FindUnit(names[k]);
    return units;
}

void AddProperties(CjxStruct& m)
{
    m.materials.push_back({.id = 1, .E = 29e6, .nu = 0.3, .Wc = 0.28, .Tc = 6.5e-6, .fc = 4000, .fy = 36000});
    m.sections.push_back({.id = 1, .A = 12, .Ay = 6, .Az = 8, .Iz = 300, .Iy = 120, .J = 9, .Cw = 700});
    m.sections.push_back({.id = 2, .A = 9, .Iz = 210, .Iy = 80, .J = 4});
    m.thicknesses.push_back({.id = 1, .t = 6});
}

void AddFrame(CjxStruct& m)
{
    const double h = 140, a = 200, b = 170;
    const double xyz[8][3] = {{0, 0, 0}, {a, 0, 0}, {a, 0, b}, {0, 0, b}, {0, h, 0}, {a, h, 0}, {a, h, b}, {0, h, b}};
    for (int i = 0; i < 8; ++i)
        m.nodes.push_back({.id = i + 1, .x = xyz[i][0], .y = xyz[i][1], .z = xyz[i][2]});
    for (int i = 0; i < 4; ++i)
        m.beams.push_back({.id = i + 1, .node1 = i + 1, .node2 = i + 5, .angle = 0.3 * i});
    for (int i = 0; i < 4; ++i)
        m.beams.push_back({.id = i + 5, .node1 = i + 5, .node2 = (i + 1) % 4 + 5, .section = 2});
    m.shell4s.push_back({.id = 1, .node = {5, 6, 7, 8}});
    m.releases.push_back({.id = 6, .start = L"000001", .end = L"000010"});
}

void AddSupports(CjxStruct& m)
{
    m.supports.push_back({.id = 1, .flag = L"111111"});
    m.supports.push_back({.id = 2, .flag = L"111111", .value = {0, -0.4, 0, 0, 0, 0.003}});
    m.supports.push_back({.id = 3, .flag = L"111000"});
    m.nodalSprings.push_back({.id = 4, .k = {2e4, 5e4, 3e4, 4e6, 5e6, 6e6}});
    jxCoupledSpring coupled{.id = 4};
    const int translations = 0, mixed = 4, rotations = 18;  // Kx_Kx, Kx_Koy, Koy_Koy
    coupled.k[translations] = 1e4;
    coupled.k[mixed] = 1e5;
    coupled.k[rotations] = 3e6;
    m.coupledSprings.push_back(coupled);
    m.beamSprings.push_back({.id = 5, .k = {10, 20, 30}});
    m.shell4Springs.push_back({.id = 1, .k = {0.01, 0.02, 0.03}});
}

void AddLoads(CjxStruct& m)
{
    m.loadCases.push_back({.id = 1, .label = L"DEAD"});
    m.loadCases.push_back({.id = 2, .label = L"HEAT"});
    m.caseLoads.resize(2);
    jxCaseLoad& dead = m.caseLoads[0];
    dead.ndLoads.push_back({.id = 6, .dof = kX, .value = 3000});
    dead.ndLoads.push_back({.id = 7, .dof = kOY, .value = 20000});
    dead.ptLoads.push_back(
        {.id = 5, .coordSys = kGlobal, .bAbsoluteDistance = 1, .dir = 1, .value = -800, .distance = 60});
    dead.ptLoads.push_back({.id = 7, .coordSys = kLocal, .dir = 5, .value = 9000, .distance = 0.3});
    dead.lnLoads.push_back({.id = 8,
                            .coordSys = kGlobal,
                            .bAbsoluteDistance = 1,
                            .dir = 1,
                            .distance1 = 20,
                            .distance2 = 120,
                            .value1 = -15,
                            .value2 = -40});
    dead.shell4SurfaceLoads.push_back({.id = 1, .coordSys = kGlobal, .dir = 1, .value = -0.7});
    m.caseLoads[1].bmThermalLoads.push_back({.id = 5, .dT = 40});
    m.caseLoads[1].shell4ThermalLoads.push_back({.id = 1, .dT = -25});
    m.selfWeightFactor = -1;
    jxLoadComb comb{.label = L"ALL", .cases = {}};
    comb.cases.push_back({.label = L"DEAD", .factor = 1.2});
    comb.cases.push_back({.label = L"HEAT", .factor = 0.9});
    m.loadCombs.push_back(comb);
}

/// A loaded room of four columns, beams and a slab, in inches and pounds: every kind of load and spring of frames and
/// shells takes part, a settlement and a forced rotation too. A constraint takes part in the quad solver only: its
/// penalty, 1e5 times the largest stiffness, swallows the last five digits of the others in double precision.
void BuildRoom(CjxStruct& m, SolverType solver)
{
    m.bInteractive = 0;
    m.solverType = solver;
    AddProperties(m);
    AddFrame(m);
    AddSupports(m);
    AddLoads(m);
    if (solver == QuadSkyline)
        m.multiDofConstraints.push_back({.id = 1, .node = {5, 8}, .dof = {kX, kX}});
    m.OnAddMoreLoadCombination();
}

/// Solves the room, given in these units, and gives its results back in inches and pounds.
void SolveIn(const jxUnit& units, SolverType solver, CjxStruct& room)
{
    BuildRoom(room, solver);
    ConvertUnitsAccess::Convert(room, jxUnit(), units);
    room.units = units;
    ASSERT_EQ(room.ExecuteStatic(), 1);
    ASSERT_EQ(room.units.unit[kLength], units.unit[kLength]) << "the run ends in the units it began in";
    ConvertUnitsAccess::Convert(room, units, jxUnit());
}

using Family = std::vector<double>;

void Append(Family& family, const std::vector<jxResult6Val>& results, int first, int last)
{
    for (const jxResult6Val& result : results)
        family.insert(family.end(), result.value + first, result.value + last);
}

/// The answers in families of one kind each.
std::vector<std::pair<std::string, Family>> Answers(const CjxStruct& room)
{
    const jxCombResult& r = room.combResults.at(0);
    std::vector<std::pair<std::string, Family>> all;
    const auto add = [&](const std::string& name) -> Family& { return all.emplace_back(name, Family()).second; };
    Append(add("displacements"), r.displacements, 0, 3);
    Append(add("rotations"), r.displacements, 3, 6);
    Append(add("reactions"), r.supportReactions, 0, 3);
    Append(add("moment reactions"), r.supportReactions, 3, 6);
    Append(add("spring forces"), r.nodalSpringReactions, 0, 3);
    Append(add("spring moments"), r.nodalSpringReactions, 3, 6);
    Append(add("coupled spring moments"), r.coupledSpringReactions, 3, 6);
    Append(add("line spring reactions"), r.beamSpringReactions, 0, 3);
    Append(add("surface spring reactions"), r.shell4SpringReactions, 0, 3);
    Family& ends = add("end forces");
    Family& endMoments = add("end moments");
    for (const jxBmEndVMD& member : r.beamEndForces)
        for (const jxVMD* end : {&member.start, &member.end}) {
            ends.insert(ends.end(), {end->Fx, end->Fy, end->Fz});
            endMoments.insert(endMoments.end(), {end->Mx, end->My, end->Mz});
        }
    Family& membrane = add("membrane forces");
    Family& bending = add("plate moments");
    for (const jxShellStress& shell : r.shell4Stresses)
        for (int i = 0; i < 5; ++i) {
            membrane.insert(membrane.end(), shell.F[i], shell.F[i] + 3);
            bending.insert(bending.end(), shell.P[i], shell.P[i] + 3);
        }
    return all;
}

void ExpectSameAnswers(const CjxStruct& room, const CjxStruct& reference, double tolerance, const std::string& system)
{
    const auto actual = Answers(room);
    const auto expected = Answers(reference);
    for (std::size_t f = 0; f < expected.size(); ++f) {
        const Family& values = expected[f].second;
        ASSERT_EQ(actual[f].second.size(), values.size()) << system << " " << expected[f].first;
        double largest = 0;
        for (const double value : values)
            largest = std::max(largest, std::fabs(value));
        EXPECT_GT(largest, 0) << expected[f].first;
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_NEAR(actual[f].second[i], values[i], tolerance * largest) << system << " " << expected[f].first;
    }
}

class UnitSystems : public testing::TestWithParam<SolverType>
{
protected:
    // The factors' rounding, 1e-16, grows with the condition of the stiffness: supports of 1e5 times its largest term
    // over the softest spring. In quad precision nothing of it is left but the rounding of the numbers themselves.
    double Tolerance() const { return GetParam() == QuadSkyline ? 1e-11 : 1e-6; }

    RecordingHost host;
};

INSTANTIATE_TEST_SUITE_P(BothSkylines, UnitSystems, testing::Values(DoubleSkyline, QuadSkyline),
                         [](const auto& p) { return p.param == DoubleSkyline ? "double" : "quad"; });

TEST_P(UnitSystems, GiveTheSamePhysics)
{
    CjxStruct reference;
    SolveIn(jxUnit(), GetParam(), reference);
    for (const UnitSystem& system : kSystems) {
        CjxStruct room;
        SolveIn(*ConsistentUnits(system.force, system.length, system.temperature), GetParam(), room);
        ExpectSameAnswers(room, reference, Tolerance(), ToUtf8(std::wstring(system.force) + L", " + system.length));
    }
}

TEST_P(UnitSystems, MayBeMixedByQuantity)
{
    CjxStruct reference;
    SolveIn(jxUnit(), GetParam(), reference);
    CjxStruct room;
    SolveIn(MixedUnits(), GetParam(), room);

    ExpectSameAnswers(room, reference, Tolerance(), "mixed");
}

}  // namespace
}  // namespace qvx::test
