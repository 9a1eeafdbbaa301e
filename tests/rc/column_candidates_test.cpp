#include "rc/column_candidates.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "rc/bar_file.h"

namespace qvx {
namespace {

const jxBarDatabase& Astm()
{
    return BuiltInBarTables().databases[0];
}

jxColRcCrit Criterion(int startBar, int endBar)
{
    jxColRcCrit criterion;
    criterion.startBar = startBar;
    criterion.endBar = endBar;
    return criterion;
}

std::set<std::wstring> Names(const std::vector<jxConcreteSection>& sections)
{
    std::set<std::wstring> names;
    for (const jxConcreteSection& section : sections)
        names.insert(section.name);
    return names;
}

ColumnShape RectShape(double b, double h)
{
    return {.type = jxConcreteSection::kRect, .b = b, .h = h, .fc = 4, .fy = 60};
}

ColumnShape RoundShape(double D)
{
    return {.type = jxConcreteSection::kRound, .b = D, .h = D, .fc = 4, .fy = 60};
}

TEST(ColumnCandidates, NamesTellTheSection)
{
    const auto rects = Names(ColumnCandidates(RectShape(18, 24), Criterion(6, 6), Astm()));
    EXPECT_TRUE(rects.contains(L"Rect_BH18x24_fc4_fy60_Bars018#9_NX002_NY009_cc2.439"));
    jxColRcCrit spiral = Criterion(5, 5);
    spiral.bSpiral = 1;
    EXPECT_TRUE(Names(ColumnCandidates(RoundShape(22), spiral, Astm()))
                    .contains(L"Round_D22_fc4_fy60_Bars006#8_cc2.375_spiral"));
    EXPECT_TRUE(Names(ColumnCandidates(RoundShape(22), Criterion(5, 5), Astm()))
                    .contains(L"Round_D22_fc4_fy60_Bars006#8_cc2.375_tied"));
}

TEST(ColumnCandidates, StayWithinTheSteelAndTheSpacing)
{
    const auto sections = ColumnCandidates(RectShape(16, 20), Criterion(4, 8), Astm());
    EXPECT_GT(sections.size(), 20u);
    for (const jxConcreteSection& s : sections) {
        const double db = std::sqrt(4 * s.barArea / 3.141592654);
        EXPECT_EQ(s.barCount, 2 * (s.nx + s.ny) - 4);
        EXPECT_DOUBLE_EQ(s.steelArea, s.barCount * s.barArea);
        EXPECT_GT((s.barCount + 1) * s.barArea, 0.01 * 320);
        EXPECT_LE(s.steelArea, 0.08 * 320);
        EXPECT_GE((16 - 2 * s.cover) / (s.nx - 1), 1.98 * db);
        EXPECT_GE((20 - 2 * s.cover) / (s.ny - 1), 1.98 * db);
    }
}

TEST(ColumnCandidates, ARectangleNeedsFourBars)
{
    ColumnShape shape = RectShape(12, 12);
    shape.minRho = 0;
    int fewest = 1000;
    for (const jxConcreteSection& s : ColumnCandidates(shape, Criterion(5, 5), Astm()))
        fewest = std::min(fewest, s.barCount);
    EXPECT_EQ(fewest, 4);
}

TEST(ColumnCandidates, ACircleNeedsSixBars)
{
    int fewest = 1000;
    for (const jxConcreteSection& s : ColumnCandidates(RoundShape(24), Criterion(5, 5), Astm()))
        fewest = std::min(fewest, s.barCount);
    EXPECT_EQ(fewest, 6);
    // A maximum of 5 leaves nothing of the range 6 and more, and so does not narrow it.
    jxColRcCrit five = Criterion(5, 5);
    five.minBarsLR = five.maxBarsLR = 5;
    EXPECT_EQ(ColumnCandidates(RoundShape(24), five, Astm()).size(),
              ColumnCandidates(RoundShape(24), Criterion(5, 5), Astm()).size());
    // And a circle that could take 5 bars of 8 % yields nothing at all.
    ColumnShape slim = RoundShape(24);
    slim.maxRho = 5.9 * 0.79 / (3.141592654 * 144);
    EXPECT_TRUE(ColumnCandidates(slim, Criterion(5, 5), Astm()).empty());
}

TEST(ColumnCandidates, PatternsPlaceTheBars)
{
    jxColRcCrit criterion = Criterion(5, 6);
    for (const int pattern : {kBarsOnWidthFaces, kBarsOnDepthFaces, kEqualBarsPerSide}) {
        criterion.pattern = pattern;
        const auto sections = ColumnCandidates(RectShape(18, 24), criterion, Astm());
        EXPECT_FALSE(sections.empty());
        for (const jxConcreteSection& s : sections)
            if (pattern == kEqualBarsPerSide)
                EXPECT_EQ(s.nx, s.ny);
            else
                EXPECT_EQ(pattern == kBarsOnWidthFaces ? s.ny : s.nx, 2);
    }
}

TEST(ColumnCandidates, PairsNarrowTheCountsOfTheSides)
{
    jxColRcCrit criterion = Criterion(5, 5);
    criterion.minBarsLR = 3;
    criterion.maxBarsLR = 4;
    criterion.minBarsTB = 2;
    criterion.maxBarsTB = 2;
    const auto sections = ColumnCandidates(RectShape(18, 24), criterion, Astm());
    EXPECT_FALSE(sections.empty());
    for (const jxConcreteSection& s : sections) {
        EXPECT_GE(s.ny, 3);
        EXPECT_LE(s.ny, 4);
        EXPECT_EQ(s.nx, 2);
    }
    criterion.minBarsTB = 0;  // a pair counts only when both are given
    int widest = 0;
    for (const jxConcreteSection& s : ColumnCandidates(RectShape(18, 24), criterion, Astm()))
        widest = std::max(widest, s.nx);
    EXPECT_GT(widest, 2);

    jxColRcCrit total = Criterion(5, 5);
    total.minBarsLR = 8;
    total.maxBarsLR = 10;
    for (const jxConcreteSection& s : ColumnCandidates(RoundShape(24), total, Astm())) {
        EXPECT_GE(s.barCount, 8);
        EXPECT_LE(s.barCount, 10);
    }
}

TEST(ColumnCandidates, TooSmallASectionHasNone)
{
    EXPECT_TRUE(ColumnCandidates(RectShape(4, 4), Criterion(5, 8), Astm()).empty());
    EXPECT_TRUE(ColumnCandidates(RoundShape(5), Criterion(5, 8), Astm()).empty());
}

TEST(ColumnCandidates, LongNamesAreCut)
{
    for (const jxConcreteSection& s : ColumnCandidates({.type = jxConcreteSection::kRect,
                                      .b = 18.123456789,
                                      .h = 24.123456789,
                                      .fc = 4.123456789,
                                      .fy = 60.123456789},
                                                       Criterion(5, 5), Astm()))
        EXPECT_LE(std::wcslen(s.name), 127u);
}

}  // namespace
}  // namespace qvx
