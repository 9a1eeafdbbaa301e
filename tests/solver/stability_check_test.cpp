#include <cmath>

#include <gmock/gmock.h>

#include "platform/host_services.h"
#include "solver/assembled_model.h"
#include "support/print_double128.h"

using qvx::double128;
using qvx::test::AssembledModel;
using qvx::test::RecordingHost;
using testing::ElementsAre;

namespace {

const wchar_t* const kUnstable = L"Structure is unstable. See log file for details.\nIf you believe the model is "
                                 L"correct, try the quad-precision solver in Run | Analysis Options...";

/// Two nodes and a member of a plane truss: equations 1 to 4.
class Stability : public qvx::test::BothSkylines
{
protected:
    Stability()
    {
        m.model.modelType = Truss2D;
        m.Node(0, 0);
        m.Node(1, 0);
        m.Member(1, 2);
        m.Prepare();
        for (int e = 1; e <= 4; ++e)
            m.SetDiagonal(e, 1);
        m.model.bInteractive = 1;
    }

    /// Factor in which one diagonal has fallen from 10^digits to 1, with a margin against the rounding of log10.
    void LoseDigits(int digits)
    {
        m.SetDiagonal(3, 1.5 * std::pow(10.0, digits));
        m.model.CheckDiagonalStiffnessTerm(m.data);
        m.SetDiagonal(3, 1);
        m.window.lines.clear();
        m.model.CheckSolutionStability(m.data);
    }
    int FirstWarning() const { return GetParam() == DoubleSkyline ? 10 : 15; }
    int FirstQuestion() const { return GetParam() == DoubleSkyline ? 13 : 25; }
    static std::wstring Lost(int digits) { return std::to_wstring(digits) + L" DIGITS ARE LOST DURING FACTORIZATION"; }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Skyline, Stability, testing::Values(DoubleSkyline, QuadSkyline));

TEST_P(Stability, LargestDiagonalIsTheScaleOfThePenalty)
{
    m.SetDiagonal(2, 7);
    m.SetDiagonal(4, -9);
    EXPECT_EQ(m.model.ComputeMaxStiffnessTerm(m.data), 7);
}

TEST_P(Stability, NegativeDiagonalsGiveNoScale)
{
    for (int e = 1; e <= 4; ++e)
        m.SetDiagonal(e, -e);
    EXPECT_EQ(m.model.ComputeMaxStiffnessTerm(m.data), 0);
}

TEST_P(Stability, PositiveDiagonalsPassAndAreKept)
{
    m.SetDiagonal(2, 3);
    m.model.CheckDiagonalStiffnessTerm(m.data);

    if (GetParam() == DoubleSkyline)
        EXPECT_EQ(m.data.origDiag[2], 3);
    else
        EXPECT_EQ(m.data.origDiagQ[2], double128(3));
    EXPECT_TRUE(m.window.HasLine(L"Processing boundary conditions", L"OK"));
    EXPECT_TRUE(m.log.Has("Processing boundary conditions - OK"));
}

TEST_P(Stability, EveryDirectionThatNothingHoldsIsLogged)
{
    m.SetDiagonal(2, 0);
    m.SetDiagonal(3, -1);
    try {
        m.model.CheckDiagonalStiffnessTerm(m.data);
        FAIL() << "a mechanism passed";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), kUnstable);
    }
    EXPECT_TRUE(m.log.Has("\nInstability Y at Node 1"));
    EXPECT_TRUE(m.log.Has("\nInstability X at Node 2"));
    EXPECT_TRUE(m.window.HasLine(L"Processing boundary conditions", L"NOT OK"));
    EXPECT_FALSE(m.window.HasLine(L"Processing boundary conditions", L"OK"));
}

TEST_P(Stability, DigitsAreCountedBelowTheWarning)
{
    LoseDigits(FirstWarning() - 1);

    EXPECT_THAT(m.window.lines, ElementsAre(qvx::test::RecordingWindow::Line{Lost(FirstWarning() - 1), L"OK"}));
    EXPECT_EQ(m.model.digitsLost, FirstWarning() - 1);
}

// 9.9 digits are nine whole ones: what is not wholly lost counts as there.
TEST_P(Stability, PartOfADigitIsNoDigit)
{
    m.SetDiagonal(3, 8 * std::pow(10.0, FirstWarning() - 1));
    m.model.CheckDiagonalStiffnessTerm(m.data);
    m.SetDiagonal(3, 1);
    m.window.lines.clear();

    m.model.CheckSolutionStability(m.data);

    EXPECT_THAT(m.window.lines, ElementsAre(qvx::test::RecordingWindow::Line{Lost(FirstWarning() - 1), L"OK"}));
}

TEST_P(Stability, WarningBeginsAtItsThreshold)
{
    LoseDigits(FirstWarning());

    EXPECT_TRUE(m.window.HasLine(Lost(FirstWarning()), L"OK"));
    EXPECT_TRUE(m.window.HasLine(Lost(FirstWarning()), L"WARNING"));
    EXPECT_TRUE(m.host.boxes.empty());
    const std::string text = std::to_string(FirstWarning()) + " DIGITS ARE LOST DURING FACTORIZATION";
    EXPECT_THAT(m.log.Entries(), testing::IsSupersetOf({text, text + " - OK", text + " - WARNING"}));
}

TEST_P(Stability, OneDigitBelowTheQuestionWarnsOnly)
{
    LoseDigits(FirstQuestion() - 1);

    EXPECT_TRUE(m.window.HasLine(Lost(FirstQuestion() - 1), L"WARNING"));
    EXPECT_TRUE(m.host.boxes.empty());
}

TEST_P(Stability, QuestionIsAskedAtItsThresholdAndYesGoesOn)
{
    m.host.answers = {qvx::kIdYes};

    LoseDigits(FirstQuestion());

    EXPECT_THAT(m.host.boxes, ElementsAre(RecordingHost::Box{
                                  L"Too many digits are lost during factorization.\nDo you want to continue?", 4132}));
    EXPECT_TRUE(m.window.HasLine(L"Too many digits are lost during factorization.", L"..."));
}

TEST_P(Stability, NoEndsTheRun)
{
    m.host.answers = {qvx::kIdNo};
    try {
        LoseDigits(FirstQuestion());
        FAIL() << "the run went on against the user's answer";
    } catch (const jxException& fault) {
        EXPECT_STREQ(fault.GetText(), L"Too many digits are lost during factorization.\nSolution aborted!");
    }
}

TEST_P(Stability, WithoutBoxesTheRunGoesOn)
{
    m.model.bInteractive = 0;
    m.host.answers = {qvx::kIdNo};

    LoseDigits(FirstQuestion());

    EXPECT_TRUE(m.host.boxes.empty());
    EXPECT_TRUE(m.window.HasLine(L"Too many digits are lost during factorization.", L"..."));
}

// A tolerated pivot of a buckled state is zero or negative: no logarithm, and no digits.
TEST_P(Stability, NonPositivePivotsAreNoDigits)
{
    m.model.CheckDiagonalStiffnessTerm(m.data);
    m.SetDiagonal(2, -1e-5);
    m.SetDiagonal(3, 0);
    m.SetDiagonal(4, 1e-3);
    m.window.lines.clear();

    m.model.CheckSolutionStability(m.data);

    const int lost = m.model.digitsLost;
    EXPECT_THAT(lost, testing::AnyOf(2, 3));  // log10(1 / 1e-3) is 3 but for the last bit
    EXPECT_THAT(m.window.lines, ElementsAre(qvx::test::RecordingWindow::Line{Lost(lost), L"OK"}));
}
