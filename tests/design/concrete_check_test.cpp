#include <algorithm>

#include <gtest/gtest.h>

#include "design/concrete_model.h"

namespace qvx::test {
namespace {

/// Lines that the check writes.
std::vector<std::string> CheckLines(ConcreteModel& m, int expected)
{
    const auto before = static_cast<std::ptrdiff_t>(m.log.Entries().size());
    EXPECT_EQ(m.model.CheckRcDesignInputData(), expected);
    const std::vector<std::string> entries = m.log.Entries();
    return {entries.begin() + before, entries.end()};
}

/// The same without the names of its stages.
std::vector<std::string> Faults(ConcreteModel& m, int expected)
{
    std::vector<std::string> lines = CheckLines(m, expected);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("CHECKING"); });
    return lines;
}

using Lines = std::vector<std::string>;

TEST(ConcreteCheck, NamesItsStagesInOrder)
{
    ConcreteModel m;
    EXPECT_EQ(CheckLines(m, 1), (Lines{"CHECKING REBARS", "CHECKING CONCRETE DESIGN PARAMETERS",
                                       "CHECKING BEAM DESIGN CRITERIA", "CHECKING COLUMN DESIGN CRITERIA",
                                       "CHECKING PLATE DESIGN CRITERIA", "CHECKING MATERIAL PROPERTIES",
                                       "CHECKING SECTIONS", "CHECKING RC BEAMS & COLUMNS", "CHECKING RC PLATES"}));
}

TEST(ConcreteCheck, TheSustainedCombinationMustBeChosen)
{
    const Lines expected{
        "Invalid sustained load combination is specified in the Model Design Criteria for concrete design."};
    for (const int comb : {-1, 1}) {
        ConcreteModel m;
        m.model.design.sustainedLoadComb = comb;
        EXPECT_EQ(Faults(m, 0), expected);
    }
}

TEST(ConcreteCheck, CurrentCriteriaAreClamped)
{
    ConcreteModel m;
    m.model.design.currentBeamRcCriterion = 7;
    m.model.design.currentColumnRcCriterion = -2;
    m.model.design.currentPlateRcCriterion = 1;
    EXPECT_EQ(m.model.CheckRcDesignInputData(), 1);
    EXPECT_EQ(m.model.design.currentBeamRcCriterion, 0);
    EXPECT_EQ(m.model.design.currentColumnRcCriterion, 0);
    EXPECT_EQ(m.model.design.currentPlateRcCriterion, 0);
}

TEST(ConcreteCheck, BarsMustBeInTheCurrentDatabase)
{
    ConcreteModel m;
    m.model.currentRebarDatabase = 9;
    EXPECT_EQ(Faults(m, 0),
              (Lines{"Invalid current rebar database: index = 9", "Beam RC criteria: beams: invalid stirrup size ",
                     "Column RC criteria: columns: invalid stirrup size ",
                     "Column RC criteria: columns: invalid start or end bar size",
                     "Invalid rebar specification found - NOT OK"}));
}

TEST(ConcreteCheck, FaultsOfTheBarsOfCriteriaComeAllAtOnce)
{
    ConcreteModel m;
    m.model.beamRcCriteria[0].stirrupLegs = 0;
    jxColRcCrit& c = m.model.columnRcCriteria[0];
    c.stirrupBar = 11;
    c.startBar = 12;
    c.endBar = 3;
    c.minBarsLR = -1;
    c.maxBarsLR = -2;
    c.minBarsTB = 3;
    c.maxBarsTB = 0;
    EXPECT_EQ(
        Faults(m, 0),
        (Lines{
            "Beam RC criteria: beams: invalid stirrup size ", "Column RC criteria: columns: invalid stirrup size ",
            "Column RC criteria: columns: invalid start or end bar size",
            "Column RC criteria: columns: start bar size must not be less than end bar size",
            "Column RC criteria: columns: Negative values encountered in minimum/maximum bars",
            "Column RC criteria: columns: Minimum left/rigt bars (or Minimum total bars for round section) must not be "
            "less than Maximum left/rigt bars (or Maximum total bars for round section)",
            "Column RC criteria: columns: Minimum top/bottom bars must not be less than Maximum top/bottom bars",
            "Invalid rebar specification found - NOT OK"}));
}

TEST(ConcreteCheck, CodesOneToSixMayBeDesignedBy)
{
    for (const int code : {0, 7, 8, -1}) {
        ConcreteModel m;
        m.model.design.concreteCode = code;
        EXPECT_EQ(Faults(m, 0), (Lines{"Invalid concrete design code: " + std::to_string(code),
                                       "Invalid concrete design parameters - NOT OK"}));
    }
    for (const int code : {1, 2, 3, 4, 5, 6}) {
        ConcreteModel m;
        m.model.design.concreteCode = code;
        EXPECT_EQ(Faults(m, 1), Lines());
    }
}

TEST(ConcreteCheck, AngleStepsAreMultiplesOfFour)
{
    ConcreteModel m;
    m.model.design.columnSolverSteps[0] = 18;
    EXPECT_EQ(Faults(m, 0), (Lines{"Concrete column angle steps must be multiple of 4",
                                   "Invalid concrete design parameters - NOT OK"}));
}

TEST(ConcreteCheck, StepsAndRatiosOfColumns)
{
    ConcreteModel m;
    m.model.design.columnSolverSteps[1] = 0;
    m.model.design.minColumnRho = m.model.design.maxColumnRho;
    EXPECT_EQ(Faults(m, 0),
              (Lines{"Invalid concrete column solver steps",
                     "Concrete column minimum reinforcement ratio must be less than maximum reinforcement ratio",
                     "Invalid concrete design parameters - NOT OK"}));
}

TEST(ConcreteCheck, PlateRatiosAreForcedIntoTheirRangeWithoutAWord)
{
    ConcreteModel m;
    m.model.design.minPlateRho[0] = -1;
    m.model.design.minPlateRho[1] = 200;
    EXPECT_EQ(Faults(m, 1), Lines());
    EXPECT_EQ(m.model.design.minPlateRho[0], 0);
    EXPECT_EQ(m.model.design.minPlateRho[1], 100);
}

TEST(ConcreteCheck, ColumnCriteriaAgreeWithTheirSwayFlags)
{
    ConcreteModel m;
    m.model.columnRcCriteria[0].lu2 = -1;
    m.model.columnRcCriteria[0].K3 = 1.2;
    EXPECT_EQ(Faults(m, 0), (Lines{"Column design criteria 1: invalid unbraced length",
                                   "Column design criteria 1: inconsistent sway flag and K-factor",
                                   "Invalid RC column design criteria found - NOT OK"}));
}

TEST(ConcreteCheck, SwayWithoutPDeltaIsAWarning)
{
    ConcreteModel m;
    m.model.columnRcCriteria[0].bSway2 = 1;
    const Lines expected{
        "P-Delta analysis should be performed since sway column criteria are present in concrete design. - WARNING"};
    EXPECT_EQ(Faults(m, 1), expected);
    m.model.loadCombs[0].bPDelta = 1;
    EXPECT_EQ(Faults(m, 1), Lines());
}

TEST(ConcreteCheck, NoConcreteCombinationIsAWarning)
{
    ConcreteModel m;
    m.model.loadCombs[0].bConcrete = 0;
    EXPECT_EQ(Faults(m, 1), Lines{"No load combination is designated for concrete design. - WARNING"});
}

TEST(ConcreteCheck, MaterialsNeedTheirStrengths)
{
    ConcreteModel m;
    SetText(m.model.materials[0].label, L"Lean");
    m.SetStrength(0, 60, 60);
    EXPECT_EQ(Faults(m, 0),
              (Lines{"1 [Lean]: invalid RC design properties", "Invalid RC material properties found - NOT OK"}));
}

TEST(ConcreteCheck, StirrupsBeyondTheGradeOfTheCodeAreAWarning)
{
    ConcreteModel m;
    m.model.design.concreteCode = 5;
    EXPECT_EQ(Faults(m, 1), Lines());  // exactly 60
    m.SetStrength(4, 60, 75);
    EXPECT_EQ(Faults(m, 1), Lines{"steel Fys 75.00 ksi is too large for the ACI 318-14 Code - WARNING"});
    m.model.design.concreteCode = 6;
    EXPECT_EQ(Faults(m, 1), Lines());
    m.SetStrength(4, 60, 101);
    EXPECT_EQ(Faults(m, 1), Lines{"steel Fys 101.00 ksi is too large for the ACI 318-19 Code - WARNING"});
}

TEST(ConcreteCheck, SectionsNeedTheirDimensions)
{
    ConcreteModel m;
    m.Shape(L"rect A", 12, 0);
    m.Shape(L"ROUND B", 0, 0);
    m.Shape(L"Tee C", 30, 20, 4, 31);
    m.Shape(L"Tee D", 30, 20, 21, 10);
    m.Shape(L"W14X99", 0, 0);
    m.Shape(L"Tee E", 30, 20, 4, 10);
    EXPECT_EQ(Faults(m, 0),
              (Lines{"1 [rect A]: invalid dimension properties", "2 [ROUND B]: invalid dimension properties",
                     "3 [Tee C]: invalid Tee dimension properties", "4 [Tee D]: invalid Tee dimension properties",
                     "Invalid RC section properties found - NOT OK"}));
}

TEST(ConcreteCheck, MembersNeedDensityTypeAndCover)
{
    ConcreteModel m;
    m.Shape(L"Rect 12x5", 12, 5);
    m.model.materials[0].Wc = 0;
    m.AddMember(L'B');
    m.AddMember(L'X');
    m.AddMember(L'C');
    m.AddMember(L'X').bConcreteSkip = 1;
    m.AddMember(L'X').excluded = 1;
    m.model.columnRcCriteria[0].cover = 2.5;
    const std::string density =
        ": 0 or negative material density specified when lightweight concrete reduction factor is considered.";
    EXPECT_EQ(Faults(m, 0),
              (Lines{"Member 1" + density, "Member 1: invalid beam concrete cover (>= 0.5 * h)", "Member 2" + density,
                     "Member 2: design type must be B(beam) or C(column)", "Member 3" + density,
                     "Member 3: invalid column concrete cover (>= 0.5 * b or 0.5 * h)",
                     "Invalid RC member design criteria found - NOT OK"}));
    m.model.design.shearOption = 0;
    EXPECT_EQ(Faults(m, 0).size(), 4u);  // density plays no part
}

TEST(ConcreteCheck, PlatesNeedRoomForTheirBars)
{
    ConcreteModel m;
    m.model.thicknesses[0].t = 3;
    m.model.shell4s.push_back({.id = 4});
    EXPECT_EQ(Faults(m, 0), (Lines{"Plate 4: invalid plate concrete cover (>= 0.5 * t)",
                                   "Invalid RC slab design criteria found - NOT OK"}));
    m.model.thicknesses[0].t = 3.01;
    EXPECT_EQ(Faults(m, 1), Lines());
}

TEST(ConcreteRun, NeedsStaticResults)
{
    ConcreteModel m;
    EXPECT_EQ(m.model.ExecuteConcreteDesign(), 0);
    EXPECT_EQ(m.host.BoxTexts(),
              std::vector<std::wstring>{L"There are no static analysis results to perform concrete design!"});
    EXPECT_EQ(m.model.bInSolution, 0);
}

TEST(ConcreteRun, ARefusedCheckLeavesDesignUnitsAndTheSavedInput)
{
    ConcreteModel m;
    m.model.woodArmer.push_back({.id = 1});
    m.model.design.concreteCode = 0;
    m.Node(1000, 0);
    EXPECT_EQ(m.model.ExecuteConcreteDesign(), 0);
    EXPECT_EQ(m.host.BoxTexts().back(),
              L"Invalid input, please check log file for details from menu File->View Log File.");
    EXPECT_EQ(m.model.bInSolution, 1);
    m.model.RestoreInputData();
    EXPECT_EQ(m.model.bInSolution, 0);
    EXPECT_EQ(m.model.nodes[0].x, 1000);
}

}  // namespace
}  // namespace qvx::test
