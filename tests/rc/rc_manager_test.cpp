#include "rc/rc_manager.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "rc/bar_file.h"
#include "rc/column_candidates.h"

namespace qvx {
namespace {

std::vector<jxConcreteSection> Sections()
{
    jxColRcCrit criterion;
    criterion.startBar = 5;
    criterion.endBar = 6;
    return ColumnCandidates({.type = jxConcreteSection::kRect, .b = 16, .h = 20, .fc = 4, .fy = 60}, criterion,
                            BuiltInBarTables().databases[0]);
}

void Prepare(CjxRcManager& manager, const std::vector<jxConcreteSection>& sections, int threads)
{
    manager.SetCode(6);
    manager.SetSolverSteps(16, 50, 20);
    manager.SetExcludeDisplaced(1);
    manager.SetCurrentBarDatabase(0, BuiltInBarTables().databases);
    manager.SetThreads(threads);
    for (const jxConcreteSection& section : sections)
        manager.AddSection(section);
}

TEST(RcManager, SurfacesStandBesideTheirSections)
{
    const auto sections = Sections();
    CjxRcManager manager;
    Prepare(manager, sections, 1);
    std::vector<std::wstring> lines;
    int progress = 0;
    manager.SetCallbacks(
        [&](const wchar_t*) { ++progress; },
        [&](const wchar_t* text, const wchar_t* status) { lines.push_back(std::wstring(text) + L" " + status); });
    manager.Execute();
    ASSERT_EQ(manager.GetPM_Sect().size(), sections.size());
    ASSERT_EQ(manager.GetSect().size(), sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i)
        EXPECT_EQ(manager.GetPM_Sect()[i].name, manager.GetSect()[i].name);
    EXPECT_GT(progress, 0);
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"FORMING COLUMN INTERACTION SURFACES ...",
                                                L"FORMING COLUMN INTERACTION SURFACES OK"}));
}

TEST(RcManager, ThreadsChangeNoSurface)
{
    const auto sections = Sections();
    CjxRcManager one;
    Prepare(one, sections, 1);
    one.Execute();
    CjxRcManager three;
    Prepare(three, sections, 3);
    three.Execute();
    for (std::size_t i = 0; i < sections.size(); ++i)
        for (std::size_t k = 0; k < 16; ++k)
            for (std::size_t j = 0; j < 71; ++j)
                ASSERT_EQ(one.GetPM_Sect()[i].curves[k].points[j].M3, three.GetPM_Sect()[i].curves[k].points[j].M3);
}

TEST(RcManager, AWishToStopEndsTheWork)
{
    CjxRcManager manager;
    Prepare(manager, Sections(), 1);
    manager.SetCallbacks([](const wchar_t*) { throw std::runtime_error("stop"); }, {});
    EXPECT_THROW(manager.Execute(), std::runtime_error);
}

TEST(RcManager, BarAreasComeFromTheCurrentTable)
{
    std::vector<jxConcreteSection> sections = Sections();
    for (jxConcreteSection& section : sections)
        section.barArea = section.steelArea = 0;
    CjxRcManager manager;
    Prepare(manager, sections, 1);
    manager.Execute();
    EXPECT_EQ(manager.GetSect().front().barArea, 0.79);
    EXPECT_DOUBLE_EQ(manager.GetSect().front().steelArea, manager.GetSect().front().barCount * 0.79);
    EXPECT_THROW(manager.SetCurrentBarDatabase(3, BuiltInBarTables().databases), std::out_of_range);
}

// A design is checked by the capacity it was chosen by: the first of the candidates by bar count and name that carries the
// load is the lightest by count, as a search over all of them finds it.
TEST(RcManager, FirstCandidateThatCarriesIsTheLightestByCount)
{
    std::vector<jxConcreteSection> sections = Sections();
    std::sort(sections.begin(), sections.end(),
              [](const jxConcreteSection& a, const jxConcreteSection& b) { return std::wstring(a.name) < b.name; });
    CjxRcManager manager;
    Prepare(manager, sections, 1);
    manager.Execute();
    for (const jxSectionLoad& load :
         {jxSectionLoad{300, 150, 0}, jxSectionLoad{100, 250, 60}, jxSectionLoad{-100, 60, 60}}) {
        int chosen = 0;
        int fewest = 1000;
        for (std::size_t i = 0; i < sections.size(); ++i) {
            double ratio = 0;
            if (!CjxRcManager::CheckCapacity(ratio, manager.GetPM_Sect()[i].curves, load))
                continue;
            if (chosen == 0)
                chosen = sections[i].barCount;
            fewest = std::min(fewest, sections[i].barCount);
        }
        EXPECT_GT(chosen, 0);
        EXPECT_EQ(chosen, fewest);
    }
}

}  // namespace
}  // namespace qvx
