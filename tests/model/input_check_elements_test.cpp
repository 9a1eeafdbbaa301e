#include "model/input_check_fixture.h"

namespace {

using namespace qvx::test;

class MemberCheck : public InputCheckTest
{
};

// One square shell beside the frame.
class ShellCheck : public InputCheckTest
{
protected:
    ShellCheck()
    {
        model.nodes.push_back({.id = 11, .x = 100});
        model.nodes.push_back({.id = 12, .x = 110});
        model.nodes.push_back({.id = 13, .x = 110, .z = 10});
        model.nodes.push_back({.id = 14, .x = 100, .z = 10});
        model.shell4s = {{.id = 1, .node = {11, 12, 13, 14}}};
    }
};

constexpr const wchar_t* kFactors = L"The model contains elements with stiffness modifications or cracking factors.";
constexpr const wchar_t* kOption =
    L"However, the \"Apply stiffness modification factors and cracking factors\" analysis option is not set.";

TEST_F(MemberCheck, CrackingFactorLiesAboveZeroAndIsAtMostOne)
{
    for (const double cracking : {0.0, -0.5, 1.25}) {
        model.beams[1].cracking = cracking;
        EXPECT_EQ(Check(), 0);
        EXPECT_TRUE(window.HasLine(L"Invalid member cracking factors found", L"NOT OK"));
    }
    EXPECT_TRUE(log.Has("Member 2 invalid cracking factor: 1.25"));
    EXPECT_TRUE(log.Has("Member 2 invalid cracking factor: -0.5"));

    model.beams[1].cracking = 0.35;
    model.bStiffnessFactors = 1;
    EXPECT_EQ(Check(), 1);
}

TEST_F(MemberCheck, EveryStiffnessFactorIsAboveZero)
{
    model.bStiffnessFactors = 1;
    double jxBm::*const factors[] = {&jxBm::f_Iz, &jxBm::f_Iy, &jxBm::f_J, &jxBm::f_A, &jxBm::f_Ay, &jxBm::f_Az};
    for (double jxBm::*factor : factors) {
        model.beams[0].*factor = 0;
        EXPECT_EQ(Check(), 0);
        model.beams[0].*factor = 2;
        EXPECT_EQ(Check(), 1);
    }
    EXPECT_TRUE(log.Has("Member 1 invalid stiffness modification factor: 0"));
    EXPECT_TRUE(window.HasLine(L"Invalid member stiffness modification factors found", L"NOT OK"));
}

TEST_F(MemberCheck, AMemberBetweenOneNodeIsRefused)
{
    model.beams.push_back({.id = 4, .node1 = 2, .node2 = 2});
    model.bInteractive = 0;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(log.Has("Member 4 same start and end nodes"));
    EXPECT_TRUE(window.HasLine(L"Same start and end nodes are found on member(s)", L"NOT OK"));
}

TEST_F(MemberCheck, LengthRatioIsListed)
{
    model.nodes[2].x = model.nodes[3].x = 25;
    Check();
    EXPECT_TRUE(window.HasLine(L"(Maximum member length) / (Minimum member length) = 2.5", L"OK"));
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(MemberCheck, ExcessiveLengthVariationIsAskedAboutUnlessSilent)
{
    const std::wstring text = L"Excessive member length variation exists in the model.\n"
                              L"Minimum length member no. 1. Maximum length member no. 2";
    model.nodes[2].x = model.nodes[3].x = 1001;
    EXPECT_EQ(Check(0, true), 1);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(window.HasLine(L"(Maximum member length) / (Minimum member length) = 100.1", L"OK"));
    EXPECT_TRUE(Findings().empty());

    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(host.BoxTexts(), Texts{text + L"\nDo you want to continue solution process?"});
    EXPECT_EQ(Findings(), (LineList{{text, L"..."}}));

    AnswerNo();
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(window.HasLine(L"Excessive member length variation exists in the model.", L"NOT OK"));
}

// A ratio of exactly 100, and of exactly 20 for shells, is still accepted. All lengths are whole numbers, so the quotient
// is exact.
TEST_F(MemberCheck, ALengthRatioOfExactlyOneHundredIsNotAskedAbout)
{
    model.nodes[2].x = model.nodes[3].x = 1000;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(window.HasLine(L"(Maximum member length) / (Minimum member length) = 100", L"OK"));
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(Findings().empty());
}

// Longest 0 over shortest, which starts at the largest double.
TEST_F(MemberCheck, TheLengthRatioOfNoElementsIsListedAsZero)
{
    Check();
    EXPECT_EQ(window.lines, (LineList{{L"(Maximum member length) / (Minimum member length) = 1", L"OK"},
                                      {L"(Maximum shell length) / (Minimum shell length) = 0", L"OK"}}));
    model.beams.clear();
    model.shell4s = {{.id = 1, .node = {1, 2, 3, 4}}};
    window.lines.clear();
    Check();
    EXPECT_EQ(window.lines, (LineList{{L"(Maximum member length) / (Minimum member length) = 0", L"OK"},
                                      {L"(Maximum shell length) / (Minimum shell length) = 1", L"OK"}}));
}

TEST_F(ShellCheck, ReentrantShellsWarn)
{
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(Findings().empty());

    model.nodes[6].x = 102;  // corner 13 inside the triangle of the others
    model.nodes[6].z = 2;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(log.Has("poor element shape for shell 1"));
    EXPECT_EQ(Findings(), (LineList{{L"Shells with poor element shapes found.", L"WARNING"}}));
}

TEST_F(ShellCheck, ExcessiveEdgeVariationIsAskedAboutUnlessSilent)
{
    const std::wstring text = L"Excessive shell length variation exists in the model.\n"
                              L"Minimum length shell no. 1, Maximum length shell no. 1.";
    model.nodes[6].z = model.nodes[7].z = 0.4;
    EXPECT_EQ(Check(0, true), 1);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(window.HasLine(L"(Maximum shell length) / (Minimum shell length) = 25", L"OK"));

    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(host.BoxTexts(), Texts{text + L"\nDo you want to continue solution process?"});
    EXPECT_EQ(Findings(), (LineList{{text, L"..."}}));

    AnswerNo();
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(window.HasLine(L"Excessive shell length variation exists in the model.", L"NOT OK"));
}

TEST_F(ShellCheck, AnEdgeRatioOfExactlyTwentyIsNotAskedAbout)
{
    model.nodes[6].z = model.nodes[7].z = 0.5;
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(window.HasLine(L"(Maximum shell length) / (Minimum shell length) = 20", L"OK"));
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(Findings().empty());
}

TEST_F(ShellCheck, CrackingAndStiffnessFactorsHaveTheirBounds)
{
    model.bStiffnessFactors = 1;
    model.shell4s[0].cracking = 2;
    EXPECT_EQ(Check(), 0);
    EXPECT_TRUE(log.Has("Shell 1 invalid cracking factor: 2"));
    EXPECT_TRUE(window.HasLine(L"Invalid shell cracking factors found", L"NOT OK"));

    model.shell4s[0].cracking = 1;
    double jxShell4::*const factors[] = {&jxShell4::f_Fxx, &jxShell4::f_Fyy, &jxShell4::f_Fxy, &jxShell4::f_Mxx,
                                         &jxShell4::f_Myy, &jxShell4::f_Mxy, &jxShell4::f_Vxx, &jxShell4::f_Vyy};
    for (double jxShell4::*factor : factors) {
        model.shell4s[0].*factor = -1;
        EXPECT_EQ(Check(), 0);
        model.shell4s[0].*factor = 0.5;
        EXPECT_EQ(Check(), 1);
    }
    EXPECT_TRUE(log.Has("Shell 1 invalid stiffness modification factor: -1"));
    EXPECT_TRUE(window.HasLine(L"Invalid shell stiffness modification factors found", L"NOT OK"));
}

TEST_F(ShellCheck, FactorsWithoutTheirOptionAreAskedAbout)
{
    model.shell4s[0].f_Mxx = 0.25;
    EXPECT_EQ(Check(), 1);
    EXPECT_EQ(Findings(), (LineList{{kFactors, L""}, {kOption, L"WARNING"}}));
    EXPECT_EQ(host.BoxTexts(), Texts{std::wstring(kFactors) + L" " + kOption + L"\n\nDo you want to continue?"});

    AnswerNo();
    EXPECT_EQ(Check(), 0);

    model.shell4s[0].f_Mxx = 1;
    model.beams[0].cracking = 0.5;
    AnswerNo();
    EXPECT_EQ(Check(), 0);
}

TEST_F(ShellCheck, AShellWithARepeatedNodeWarns)
{
    model.bInteractive = 0;
    model.shell4s[0].node[3] = 13;
    model.nodes.pop_back();
    EXPECT_EQ(Check(), 1);
    EXPECT_TRUE(log.Has("Shell 1 same nodes"));
    EXPECT_TRUE(window.HasLine(L"Same nodes are found on shell(s)", L"WARNING"));
}

}  // namespace
