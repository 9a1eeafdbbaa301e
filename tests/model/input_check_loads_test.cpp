#include "model/input_check_fixture.h"

namespace {

using namespace qvx::test;

class LoadCheck : public InputCheckTest
{
};
class NonlinearityCheck : public InputCheckTest
{
};
class DiaphragmCheck : public InputCheckTest
{
};

TEST_F(LoadCheck, LineLoadsOfNoLengthWarn)
{
    model.loadCases.push_back({.id = 2});
    model.caseLoads.resize(2);
    model.caseLoads[1].lnLoads = {{.id = 1, .distance1 = 0.5, .distance2 = 0.5},
                                  {.id = 2, .distance1 = 0.7, .distance2 = 0.2},
                                  {.id = 3, .distance1 = 0, .distance2 = 1}};
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(log.Has("Member 1: zero line load length"));
    EXPECT_TRUE(log.Has("Member 2: zero line load length"));
    EXPECT_FALSE(log.Has("Member 3: zero line load length"));
    EXPECT_EQ(Findings(), (LineList{{L"Invalid line load(s) encountered.", L"WARNING"}}));
}

TEST_F(LoadCheck, AModelWithoutCombinationsIsRefused)
{
    model.loadCombs.clear();
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(window.HasLine(L"No load combinations found", L"NOT OK"));
    EXPECT_TRUE(log.Has("No valid combination defined."));
}

TEST_F(NonlinearityCheck, ALinearModelSolvesItsPlainCombinationsTogether)
{
    model.loadCombs.resize(3);
    model.loadCombs[1].bPDelta = 1;
    model.bNonlinear = 1;  // left from an earlier run
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(model.bNonlinear, 0);
    EXPECT_EQ(model.linearCombCount, 2);
}

TEST_F(NonlinearityCheck, AOneWayElementMakesEveryCombinationNonlinear)
{
    model.loadCombs.resize(3);
    model.beams[2].nonlinear = kTensionOnly;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(model.bNonlinear, 1);
    EXPECT_EQ(model.linearCombCount, 0);
    EXPECT_TRUE(log.Has("nonlinear elements are detected in the model."));
}

// Node springs have six components that count, line and surface springs three; coupled springs act both ways always.
TEST_F(NonlinearityCheck, OneWaySpringsAreToldByTheirFlags)
{
    model.coupledSprings = {{.id = 2}};
    model.nodalSprings = {{.id = 2, .flag = L"000000"}};
    model.beamSprings = {{.id = 1, .flag = L"000111"}};
    model.shell4Springs = {{.id = 1, .flag = L"000222"}};
    Check();
    EXPECT_EQ(model.bNonlinear, 0);

    SetText(model.nodalSprings[0].flag, L"000002");
    Check();
    EXPECT_EQ(model.bNonlinear, 1);

    model.nodalSprings.clear();
    SetText(model.beamSprings[0].flag, L"001000");
    Check();
    EXPECT_EQ(model.bNonlinear, 1);

    model.beamSprings.clear();
    SetText(model.shell4Springs[0].flag, L"020000");
    Check();
    EXPECT_EQ(model.bNonlinear, 1);
}

TEST_F(NonlinearityCheck, OneIterationForANonlinearCombinationIsAskedAbout)
{
    model.loadCombs[0].bPDelta = 1;
    model.maxNonlinearIterations = 1;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(host.BoxTexts(), Texts{L"The maximum nonlinear iterations is less than 2.\n"
                                     L"The solution may not converge.\nDo you want to continue?"});
    EXPECT_EQ(Findings(), (LineList{{L"Maximum nonlinear iterations is less than 2.", L"..."}}));
    EXPECT_TRUE(log.Has("The model contains nonlinear load combinations or elements. However, the maximum nonlinear "
                        "iterations is less than 2. The solution may not be converged."));

    AnswerNo();
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(window.HasLine(L"Too few the maximum nonlinear iterations", L"NOT OK"));

    // Two are enough to compare: nothing is asked, nothing told.
    host.boxes.clear();
    window.lines.clear();
    model.maxNonlinearIterations = 2;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(Findings().empty());

    model.maxNonlinearIterations = 1;
    model.loadCombs[0].bPDelta = 0;
    host.boxes.clear();
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(DiaphragmCheck, ASmallStiffnessFactorWarns)
{
    model.solverType = QuadSkyline;
    model.diaphragms = {{.id = 1, .type = 1, .node = {2, 0, 0, 0}}};
    model.diaphragmStiffnessFactor = 999;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(Findings(), (LineList{{L"Diaphragm stiffness factor is not large enough.", L"WARNING"}}));
    EXPECT_TRUE(log.Has("Diaphragm stiffness factor is not large enough."));

    window.lines.clear();
    model.diaphragmStiffnessFactor = 1000;
    Check();
    EXPECT_TRUE(Findings().empty());
}

TEST_F(DiaphragmCheck, LinksAreMadeAndTheQuadSolverIsRecommended)
{
    constexpr const wchar_t* kQuestion =
        L"The model contains rigid diaphragms. The quad-precision solver is recommended (from Run | Analysis "
        L"Options).\nDo you want to continue the solution?";
    constexpr const wchar_t* kWarning =
        L"Quad-precision solver is recommended for the model containing rigid diaphragms";
    model.diaphragms = {{.id = 1, .type = 1, .node = {2, 0, 0, 0}}};
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(model.links.size(), 1u);
    EXPECT_EQ(host.BoxTexts(), Texts{kQuestion});
    EXPECT_EQ(Findings(), (LineList{{kWarning, L"WARNING"}}));

    AnswerNo();
    EXPECT_EQ(Check(), 0);

    // The sparse solver works in double like the skyline that the fixture has.
    host.boxes.clear();
    window.lines.clear();
    model.solverType = DoubleSparse;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(host.BoxTexts(), Texts{kQuestion});
    EXPECT_EQ(Findings(), (LineList{{kWarning, L"WARNING"}}));

    host.boxes.clear();
    model.solverType = QuadSkyline;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(host.boxes.empty());

    model.solverType = DoubleSparse;
    model.bRigidDiaphragms = 0;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(model.links.empty());
    EXPECT_TRUE(host.boxes.empty());
}

// The check tells; it never throws.
TEST_F(DiaphragmCheck, AnImpossibleDiaphragmIsRefused)
{
    model.diaphragms = {{.id = 1, .type = 1, .node = {99, 0, 0, 0}}};
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(), (LineList{{L"error finding node 99", L"NOT OK"}}));

    window.lines.clear();
    model.diaphragms = {{.id = 1, .type = 0, .node = {1, 1, 1, 1}}};
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings().size(), 1u);
}

// Everything wrong at once: each finding stands in the list, in order, and none hides another.
TEST_F(LoadCheck, AllErrorsOfAModelStandInOneList)
{
    model.materials[0].E = 0;
    model.sections[0].A = 0;
    model.thicknesses[0].t = 0;
    model.supports.clear();
    model.nodes.push_back({.id = 9, .x = 50});
    model.beams[0].f_A = 0;
    model.bStiffnessFactors = 1;
    model.loadCombs.clear();
    EXPECT_EQ(Check(), 0);
    EXPECT_EQ(Findings(),
              (LineList{{L"The load combination for frequency analysis is invalid and will be reset.", L"WARNING"},
                        {L"No boundary conditions defined", L"NOT OK"},
                        {L"Invalid material properties found", L"NOT OK"},
                        {L"Invalid section properties found", L"NOT OK"},
                        {L"Invalid thickness properties found", L"NOT OK"},
                        {L"orphaned nodes found", L"NOT OK"},
                        {L"Invalid member stiffness modification factors found", L"NOT OK"},
                        {L"No load combinations found", L"NOT OK"}}));
}

}  // namespace
