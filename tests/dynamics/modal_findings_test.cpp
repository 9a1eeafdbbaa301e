// What a frequency run finds worth telling beside its modes.
#include "dynamics/modal_findings.h"

#include <algorithm>
#include <numbers>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "model/findings.h"
#include "support/vibrating_model.h"

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;

namespace qvx::test {
namespace {

class ModalFindings : public testing::Test
{
protected:
    /// A cantilever of four elements in the plane X-Y, masses 2 at its free nodes along Y.
    ModalFindings()
    {
        m.model.modelType = Frame2D;
        m.Node(0, 0);
        m.Support(1, L"111111");
        for (int i = 1; i <= 4; ++i) {
            m.Node(25.0 * i, 0);
            m.Member(i, i + 1);
            m.Mass(i + 1, kY, 2);
        }
        m.model.numberOfModes = 4;
    }
    void SpectrumAlongY()
    {
        m.model.spectra[kY] = {.name = L"flat", .points = {{0, 1}, {10, 1}}};
        m.model.spectrumFactor[0] = m.model.spectrumFactor[2] = 0;
        m.model.spectrumFactor[1] = 1;
    }
    std::vector<std::string> Codes() const
    {
        std::vector<std::string> codes;
        for (const Finding& finding : m.model.findings)
            if (finding.stage == FindingStage::Modes)
                codes.emplace_back(finding.code);
        return codes;
    }
    std::wstring TextOf(const std::string& code) const
    {
        for (const Finding& finding : m.model.findings)
            if (finding.code == code)
                return finding.text;
        return L"";
    }

    VibratingModel m;
};

TEST_F(ModalFindings, ThereAreNoneWhenAllMassMoves)
{
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_THAT(Codes(), ElementsAre());
}

// 2 of 10 stand on the support along Y; along Z a plane frame has no equations.
TEST_F(ModalFindings, MassAtRestIsToldByItsShare)
{
    m.Mass(1, kY, 2);
    m.Mass(5, kZ, 3);
    ASSERT_EQ(ToUtf8(m.FaultOfModes()), "");
    EXPECT_EQ(TextOf("mass-at-rest"), L"Y: 20 % of the mass on supports; Z: 100 % of the mass without equation");
}

TEST_F(ModalFindings, MassOnSupportsAndWithoutEquationAlongOneDirection)
{
    m.Node(100, 10);
    m.Member(5, 6);
    m.Support(6, L"020000");
    m.Mass(1, kY, 2);
    m.Mass(6, kY, 10);
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_EQ(TextOf("mass-at-rest"), L"Y: 10 % of the mass on supports, 50 % without equation");
}

TEST_F(ModalFindings, ModesThatDidNotConvergeAreNotToBeReliedOn)
{
    m.model.numberOfModes = 1;
    for (int i = 5; i <= 40; ++i) {
        m.Node(25.0 * i, 0);
        m.Member(i, i + 1);
        m.Mass(i + 1, kY, 2);
    }
    m.model.maxSubspaceIterations = 1;

    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);

    EXPECT_THAT(Codes(), ElementsAre("modes-not-converged"));
    EXPECT_THAT(ToUtf8(TextOf("modes-not-converged")),
                testing::MatchesRegex("not every mode is within the tolerance 1e-06 after 2 iterations; the largest "
                                      "error measure, .*, is that of mode 1"));
    EXPECT_FALSE(AreAllReliable(m.model));
}

// A combination rests on the modes where a spectrum is added to it, and only there.
TEST_F(ModalFindings, ModesNotToBeReliedOnMarkCombinationsWithASpectrum)
{
    m.model.loadCombs.push_back(m.model.loadCombs[0]);
    m.model.loadCombs[1].rsFactor = 0.5;
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_TRUE(IsReliable(m.model, 1));

    m.model.frequencyOutcome.bConverged = false;
    FindInModes(m.model);

    EXPECT_TRUE(IsReliable(m.model, 0));
    EXPECT_FALSE(IsReliable(m.model, 1));
}

TEST_F(ModalFindings, MiscountedModesAreToldWithTheirFrequency)
{
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    jxFrequencyOutcome& outcome = m.model.frequencyOutcome;
    EXPECT_TRUE(outcome.bSturmCheck);
    outcome.sturmExpected = 4;
    outcome.sturmCounted = 5;
    outcome.sturmShift = 4 * std::numbers::pi * std::numbers::pi;  // 1 Hz

    FindInModes(m.model);

    EXPECT_EQ(TextOf("modes-miscounted"), L"5 eigenvalues lie below 1 Hz and 4 were found");
    EXPECT_FALSE(AreAllReliable(m.model));
}

// The first mode of a cantilever moves about 60 % of its mass (Clough & Penzien: 0.613 of a uniform one).
TEST_F(ModalFindings, LittleMassMovedIsToldOfSpectrumDirectionsOnly)
{
    SpectrumAlongY();
    m.model.numberOfModes = 1;
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    EXPECT_THAT(Codes(), Not(Contains("little-mass-moved")));

    ASSERT_EQ(m.RunSpectrum(), 1);

    EXPECT_THAT(ToUtf8(TextOf("little-mass-moved")),
                testing::MatchesRegex("Y: 1 modes move 6[0-9].[0-9] % of the mass"));
    m.model.numberOfModes = 4;
    ASSERT_EQ(m.RunSpectrum(), 1);
    EXPECT_THAT(Codes(), Not(Contains("little-mass-moved")));
}

// The static run of a spectrum analysis drops its own findings, not those of the modes that it combines.
TEST_F(ModalFindings, StayThroughTheStaticRunAndGoWithTheModes)
{
    m.Mass(1, kY, 2);
    m.NodalLoad(5, kY, -1);
    ASSERT_EQ(m.model.ExecuteFrequency(false), 1);
    ASSERT_EQ(m.model.ExecuteStatic(), 1);
    EXPECT_THAT(Codes(), ElementsAre("mass-at-rest"));
    m.model.ClearFrequencyResult();
    EXPECT_THAT(Codes(), ElementsAre());
}

TEST_F(ModalFindings, NoMassIsTheReasonOfTheRefusal)
{
    m.model.additionalMasses.clear();
    EXPECT_EQ(m.model.ExecuteFrequency(false), 0);
    EXPECT_THAT(Codes(), ElementsAre("no-mass"));
    EXPECT_THAT(ToUtf8(TextOf("no-mass")),
                testing::StartsWith("No masses are defined. No gravity [Y-direction] loads"));
}

// Nothing holds the far node across the bar: found again in a second run, and told once.
TEST_F(ModalFindings, FailureIsToldOnceHoweverOftenItHappens)
{
    m.model.supports[0] = {.id = 1, .flag = L"110000"};
    for (int run = 0; run < 2; ++run) {
        EXPECT_NE(m.FaultOfModes(), L"");
        m.model.RestoreInputData();
        EXPECT_THAT(Codes(), ElementsAre("analysis-failed"));
        const auto unstable = std::count_if(m.model.findings.begin(), m.model.findings.end(), [](const Finding& f) {
            return std::string(f.code) == "unstable" && f.count == 1;
        });
        EXPECT_EQ(unstable, 1);
    }
}

}  // namespace
}  // namespace qvx::test
