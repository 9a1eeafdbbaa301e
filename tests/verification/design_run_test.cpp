// Whole runs of analysis and design against published values and against a search of one's own.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <vector>

#include <gtest/gtest.h>

#include "design/column_search.h"
#include "design/concrete_model.h"
#include "rc/rc_manager.h"

namespace qvx::test {
namespace {

// AISC 360-16 Commentary, benchmark case 2: a cantilever W14X48 of 28 ft under 100 kip and 1 kip across has the base moment
// 470 kip-in instead of 336. The design takes the moment of the deflected state.
TEST(SteelDesignRun, PDeltaMomentsGoIntoTheRatio)
{
    StaticModel m;
    m.model.materials.clear();
    m.model.sections.clear();
    m.Material(29e6, 0.3);
    m.model.materials[0].fy = m.model.materials[0].fys = 50e3;
    jxSect section{.A = 14.1, .Ay = 4.692, .Az = 4.692, .Iz = 484, .Iy = 51.4, .J = 1.45};
    SetText(section.label, L"W14X48");
    m.Section(section);
    const int base = m.Node(0, 0, 0), top = m.Node(0, 336, 0);
    m.Member(base, top);
    m.Support(base, L"111111");
    m.Support(top, L"001110");
    m.NodalLoad(top, kX, 1000);
    m.NodalLoad(top, kY, -100e3);
    m.model.bShearDeformation = 1;
    m.model.loadCombs[0].bSteel = 1;
    m.model.loadCombs[0].bPDelta = 1;
    m.model.maxNonlinearIterations = 20;
    m.model.steelCriteria.push_back({.id = 1, .K3 = 2, .bSway3 = 1});
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    ASSERT_EQ(m.model.ExecuteSteelDesign(), 1);

    const jxSteelSectionResult& own = m.model.steelResults.at(0).sections.at(0);
    EXPECT_EQ(own.distance, 0);
    EXPECT_NEAR(std::fabs(own.M3) / 1000, 470.2, 0.5);  // [kip-in]
    EXPECT_NEAR(own.P / 1000, 100, 0.01);
}

// The first candidate that carries is the lightest by the number of bars: every name is tried, in the order of number of bars
// and then of the size's text.
TEST(ConcreteDesignRun, TheFirstColumnThatCarriesHasTheFewestBars)
{
    ConcreteModel m;
    m.Shape(L"Rect 14x18", 14, 18);
    m.model.design.columnSolverSteps[0] = 8;
    m.model.design.columnSolverSteps[1] = 12;
    m.model.design.columnSolverSteps[2] = 6;
    m.AddMember(L'C', 1, 100);
    m.Curve(1, {Station(0, 0, 0, 0), Station(1, 0, 0, 0)});
    m.Envelope();
    m.model.GenerateAllColumnSections();
    m.model.ColumnConcreteDesign();
    const ColumnSearch search(m.model);
    const jxBm& beam = m.model.beams[0];
    int inTheMiddle = 0;
    for (double P = 50; P <= 650; P += 50)
        for (double M = 10; M <= 260; M += 25) {
            m.model.combResults[0].beamCurves[0].vmd = {Station(0, -P, 0, M), Station(1, -P, 0, M)};
            const jxColRcResult result = search.Of(beam, DesignRules::Usual)->result;
            const std::vector<ColumnDemand> demands =
                ColumnDemands(m.model, ConcreteMemberOf(m.model, beam), m.model.columnRcCriteria[0]);
            int fewest = 1 << 20;
            for (std::size_t i = 0; i < m.model.concreteSections.size(); ++i) {
                double ratio = 0;
                bool carries = !demands[0].isUnstable;
                for (const ColumnDemand::Station& station : demands[0].stations)
                    carries = carries &&
                              CjxRcManager::CheckCapacity(ratio, m.model.interactionSurfaces[i].curves, station.load);
                if (carries)
                    fewest = std::min(fewest, m.model.concreteSections[i].barCount);
            }
            if (result.ratio > 1) {
                EXPECT_EQ(fewest, 1 << 20) << P << ", " << M;
                continue;
            }
            for (const jxConcreteSection& section : m.model.concreteSections)
                if (std::wcscmp(section.name, result.section) == 0) {
                    EXPECT_EQ(section.barCount, fewest) << P << ", " << M;
                }
            inTheMiddle += fewest > 6;
        }
    EXPECT_GT(inTheMiddle, 10);
}

}  // namespace
}  // namespace qvx::test
