// What holds of designs whatever the numbers: choices carry and lighter ones do not, units and threads change nothing.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "design/column_search.h"
#include "design/concrete_model.h"
#include "design/design_run.h"
#include "design/steel_members.h"
#include "design/steel_model.h"
#include "files/model_file.h"
#include "files/results_file.h"
#include "model/units.h"
#include "rc/rc_manager.h"
#include "steel/steel_design_manager.h"

/// Reaches the conversion of a whole model.
class ConvertUnitsAccess
{
public:
    static void Convert(CjxStruct& model, const jxUnit& from, const jxUnit& to) { model.ConvertUnits(from, to); }
};

namespace qvx::test {
namespace {

class Random
{
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    double Between(double low, double high) { return std::uniform_real_distribution(low, high)(engine_); }

private:
    std::mt19937 engine_;
};

std::size_t PlaceOf(const std::vector<ColumnCandidate>& candidates, const wchar_t* name)
{
    for (std::size_t i = 0; i < candidates.size(); ++i)
        if (std::wcscmp(candidates[i].section->name, name) == 0)
            return i;
    return candidates.size();
}

// The chosen candidate carries the load by the surface's own check; every candidate before it, all lighter, does not.
TEST(ColumnChoice, CarriesAndTheNextLighterDoesNot)
{
    ConcreteModel m;
    m.Shape(L"Rect 16x20", 16, 20);
    m.model.design.columnSolverSteps[0] = 8;
    m.model.design.columnSolverSteps[1] = 12;
    m.model.design.columnSolverSteps[2] = 6;
    m.model.design.bMinimumEccentricity = 0;
    m.AddMember(L'C', 1, 60);
    m.Curve(1, {Station(0, 0, 0, 0), Station(1, 0, 0, 0)});
    m.Envelope();
    m.model.GenerateAllColumnSections();
    m.model.ColumnConcreteDesign();
    const ColumnSearch search(m.model);
    const jxBm& beam = m.model.beams[0];
    const std::vector<ColumnCandidate> candidates = search.CandidatesOf(beam, DesignRules::Consistent);
    ASSERT_GT(candidates.size(), 20u);
    Random random(5);
    int inTheMiddle = 0;
    for (int i = 0; i < 10000; ++i) {
        const double N = random.Between(-900, 200), M3 = random.Between(-350, 350), M2 = random.Between(-250, 250);
        m.model.combResults[0].beamCurves[0].vmd = {Station(0, N, 0, M3, M2), Station(1, N, 0, M3, M2)};
        const jxColRcResult result = search.Of(beam, DesignRules::Consistent)->result;
        const std::size_t chosen = PlaceOf(candidates, result.section);
        ASSERT_LT(chosen, candidates.size());
        const std::vector<ColumnDemand> demands =
            ColumnDemands(m.model, ConcreteMemberOf(m.model, beam), m.model.columnRcCriteria[0]);
        const jxSectionLoad load = demands[0].stations[0].load;
        double ratio = 0;
        const bool carries = CjxRcManager::CheckCapacity(ratio, candidates[chosen].surface->curves, load);
        EXPECT_EQ(carries, result.ratio <= 1);
        EXPECT_EQ(ratio, result.ratio);
        if (!carries) {
            EXPECT_EQ(chosen + 1, candidates.size()) << "the last one stands when none carries";
            continue;
        }
        if (chosen == 0)
            continue;
        ++inTheMiddle;
        EXPECT_FALSE(CjxRcManager::CheckCapacity(ratio, candidates[chosen - 1].surface->curves, load));
        EXPECT_LE(candidates[chosen - 1].section->steelArea, candidates[chosen].section->steelArea + 1e-6);
    }
    EXPECT_GT(inTheMiddle, 500);
}

// The first shape of the family that is kept carries by a check of its own; the one before it by weight does not.
TEST(SteelChoice, CarriesAndTheNextLighterDoesNot)
{
    SteelSpan span;
    ASSERT_EQ(span.Design(), 1);
    CjxStruct& model = span.model;
    ConvertUnitsAccess::Convert(model, model.units, DesignUnits());
    SetText(span.Criterion().family, L"W14");
    model.design.maxCandidates = 2;
    model.design.bSteelEndsOnly = 1;
    std::vector<jxSect_AISC> family;
    CSteelDesignManager::Instance().GenerateSections(family, L"W14");
    const SteelMemberDesign design(model);
    std::vector<jxVMD>& curve = model.combResults[0].beamCurves[0].vmd;
    Random random(6);
    int inTheMiddle = 0;
    for (int i = 0; i < 10000; ++i) {
        const jxVMD end = Station(0, random.Between(-500, 300), random.Between(-50, 50), random.Between(-600, 600),
                                  random.Between(-100, 100));
        jxVMD other = end;
        other.x = 1;
        curve = {end, other};
        const std::optional<jxSteelResult> result = design.Of(model.beams[0], DesignRules::Usual);
        ASSERT_TRUE(result);
        if (result->sections.size() < 2)
            continue;
        const jxSteelSectionResult& chosen = result->sections[1];
        const auto at = std::find_if(family.begin(), family.end(), [&](const jxSect_AISC& shape) {
            return std::wcscmp(shape.label, chosen.label) == 0;
        });
        ASSERT_NE(at, family.end());
        const auto ratioOf = [&](const jxSect_AISC& shape) {
            CAiscDesign check = SteelDesignOf(model.design.steelCode, shape, *result);
            check.SetLateralTorsionalProperty(chosen.Cb, result->Lb);
            check.SetLoads(chosen.P, chosen.M3, chosen.M2, chosen.Cm3, chosen.Cm2, chosen.V2, chosen.V3);
            check.Calculate();
            return check.GetCriticalRatio();
        };
        EXPECT_LE(ratioOf(*at), 1);
        EXPECT_EQ(ratioOf(*at), chosen.ratio);
        if (at == family.begin())
            continue;
        ++inTheMiddle;
        EXPECT_GT(ratioOf(*(at - 1)), 1);
    }
    EXPECT_GT(inTheMiddle, 5000);
}

std::string CaseFile(const char* name)
{
    return (std::filesystem::path(QVXFEM_SOURCE_DIR) / "tests" / "cases" / "design" / name).string();
}

/// A shared case, solved and designed in units and on threads of the test's own choice.
class DesignedCase : public HostFirst
{
public:
    DesignedCase(const char* name, int threads)
    {
        host.profile[{L"Preferences", L"SolverCPUs"}] = threads;
        ReadModelFile(CaseFile(name), model);
        model.solverType = DoubleSparse;
    }
    void Design()
    {
        ASSERT_EQ(model.ExecuteStatic(), 1);
        ASSERT_EQ(model.ExecuteConcreteDesign(), 1);
    }

    CjxStruct model;
};

// Every bit of every result, whatever the number of threads. Both designs start from the forces of one static run: the order
// of sums inside a solver's library is not ours.
TEST(ConcreteRun, ThreadsGiveTheResultsOfOneThread)
{
    DesignedCase one("consistent-building.model.json", 1);
    ASSERT_EQ(one.model.ExecuteStatic(), 1);
    const std::vector<jxCombResult> results = one.model.combResults;
    const std::vector<jxMaxBmVMD> envelope = one.model.concreteEnvelope;
    const std::vector<jxWoodArmer> moments = one.model.woodArmer;
    ASSERT_EQ(one.model.ExecuteConcreteDesign(), 1);

    DesignedCase two("consistent-building.model.json", 2);
    ASSERT_EQ(two.model.ExecuteStatic(), 1);
    ASSERT_EQ(two.model.SolverThreads(), 2);
    two.model.combResults = results;
    two.model.concreteEnvelope = envelope;
    two.model.woodArmer = moments;
    ASSERT_EQ(two.model.ExecuteConcreteDesign(), 1);
    EXPECT_EQ(WriteResultsText(one.model), WriteResultsText(two.model));
}

// The model in newtons and millimetres gets the steel, the ratios and the spacings of the model in its own units.
TEST(ConcreteRun, UnitsOfTheModelChangeNoResult)
{
    DesignedCase own("frame-318-14-kip-ft.model.json", 1);
    own.Design();
    DesignedCase metric("frame-318-14-kip-ft.model.json", 1);
    const jxUnit before = metric.model.units;
    const jxUnit after = *ConsistentUnits(L"N", L"mm", L"C");
    ConvertUnitsAccess::Convert(metric.model, before, after);
    metric.model.units = after;
    metric.Design();
    ConvertUnitsAccess::Convert(metric.model, after, before);

    // The static solution itself repeats to about 1e-9 in other units; bars are chosen by it.
    constexpr double kRounding = 1e-6;
    const auto expectNear = [&](double a, double b) {
        EXPECT_NEAR(a, b, kRounding * std::max({1.0, std::fabs(a), std::fabs(b)}));
    };
    ASSERT_EQ(own.model.concreteBeams.size(), metric.model.concreteBeams.size());
    ASSERT_FALSE(own.model.concreteBeams.empty());
    for (std::size_t i = 0; i < own.model.concreteBeams.size(); ++i) {
        const auto &a = own.model.concreteBeams[i].stations, &b = metric.model.concreteBeams[i].stations;
        ASSERT_EQ(a.size(), b.size());
        for (std::size_t k = 0; k < a.size(); ++k) {
            expectNear(a[k].asTop, b[k].asTop);
            expectNear(a[k].asBottom, b[k].asBottom);
        }
    }
    ASSERT_EQ(own.model.concreteColumns.size(), metric.model.concreteColumns.size());
    for (std::size_t i = 0; i < own.model.concreteColumns.size(); ++i) {
        EXPECT_STREQ(own.model.concreteColumns[i].section, metric.model.concreteColumns[i].section);
        expectNear(own.model.concreteColumns[i].ratio, metric.model.concreteColumns[i].ratio);
    }
}

TEST(ConcreteRun, TheAbortKeyEndsItInAnyPass)
{
    int looks = 0;
    {
        DesignedCase whole("consistent-building.model.json", 1);
        ASSERT_EQ(whole.model.ExecuteStatic(), 1);
        const int before = whole.host.abortKeyLooks;
        ASSERT_EQ(whole.model.ExecuteConcreteDesign(), 1);
        looks = whole.host.abortKeyLooks - before;
    }
    ASSERT_GE(looks, 4) << "every pass looks at the key";
    DesignedCase aborted("consistent-building.model.json", 1);
    ASSERT_EQ(aborted.model.ExecuteStatic(), 1);
    for (int look = 1; look < looks; ++look) {
        aborted.host.looksUntilAbort = aborted.host.abortKeyLooks + look;
        EXPECT_THROW(aborted.model.ExecuteConcreteDesign(), jxException) << "look " << look;
        ConvertUnitsAccess::Convert(aborted.model, DesignUnits(), aborted.model.units);
        aborted.model.bInSolution = 0;
        aborted.model.RestoreInputData();
    }
}

// A beam that bends nowhere asks for no steel, and its least steel neither.
TEST(ConcreteRun, WithoutMomentThereIsNoSteel)
{
    for (const int isConsistent : {0, 1}) {
        ConcreteModel m;
        m.Shape(L"Rect 12x20", 12, 20);
        m.model.design.bConsistentDesign = isConsistent;
        m.AddMember(L'B');
        m.Curve(1, {Station(0, 0, 5, 0), Station(1, 0, 5, 0)});
        m.Envelope();
        m.model.BeamConcreteDesign();
        for (const jxBmRcStation& station : m.model.concreteBeams.at(0).stations) {
            EXPECT_EQ(station.asTop, 0);
            EXPECT_EQ(station.asBottom, 0);
        }
    }
}

// A beam turned upside down, its covers with it, gets at the top what it got at the bottom: with the least steel on both faces.
TEST(ConcreteRun, UpsideDownBeamsSwapTheirFaces)
{
    std::vector<jxBmRcStation> stations[2];
    for (const int run : {0, 1}) {
        ConcreteModel m;
        m.Shape(L"Rect 12x20", 12, 20);
        m.model.design.bConsistentDesign = 1;
        m.model.beamRcCriteria[0].topCover = run == 0 ? 2 : 3;
        m.model.beamRcCriteria[0].bottomCover = run == 0 ? 3 : 2;
        const double sign = run == 0 ? 1 : -1;
        m.AddMember(L'B');
        m.Curve(1, {Station(0, 0, 0, sign * 210), Station(0.5, 0, 0, sign * -90), Station(1, 0, 0, sign * 15)});
        m.Envelope();
        m.model.BeamConcreteDesign();
        stations[run] = m.model.concreteBeams.at(0).stations;
    }
    ASSERT_EQ(stations[0].size(), stations[1].size());
    for (std::size_t i = 0; i < stations[0].size(); ++i) {
        EXPECT_EQ(stations[0][i].asTop, stations[1][i].asBottom);
        EXPECT_EQ(stations[0][i].asBottom, stations[1][i].asTop);
    }
}

}  // namespace
}  // namespace qvx::test
