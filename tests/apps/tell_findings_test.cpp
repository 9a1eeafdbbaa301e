#include "qvxfem/tell_findings.h"

#include <gmock/gmock.h>

#include "support/recording_host.h"

namespace qvx::test {
namespace {

using app::CountOfFindings;
using app::FindingLines;
using app::HasFinding;
using testing::ElementsAre;
using testing::IsEmpty;

class TellFindings : public testing::Test
{
protected:
    RecordingHost host;
    CjxStruct model;
};

TEST_F(TellFindings, AreCountedBySeverity)
{
    EXPECT_EQ(CountOfFindings(model), "0 errors, 0 warnings, 0 notes");
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"a"));
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"b"));
    model.findings.Add(MakeFinding(FindingCode::LoadCaseUnused, L"c"));
    model.findings.Add(MakeFinding(FindingCode::DuplicateNodes, L"d"));
    model.findings.Add(MakeFinding(FindingCode::NoLoadCase, L"e"));
    EXPECT_EQ(CountOfFindings(model), "1 error, 1 warning, 3 notes");
}

TEST_F(TellFindings, AreToldFromASeverityOn)
{
    const auto has = [&](Severity least) { return HasFinding(model, least); };
    EXPECT_FALSE(has(Severity::Note));
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"light"));
    EXPECT_TRUE(has(Severity::Note));
    EXPECT_FALSE(has(Severity::Warning));
    EXPECT_THAT(FindingLines(model, Severity::Warning), IsEmpty());
    model.findings.Add(MakeFinding(FindingCode::DuplicateNodes, L"twins"));
    EXPECT_TRUE(has(Severity::Warning));
    EXPECT_FALSE(has(Severity::Error));
    EXPECT_THAT(FindingLines(model, Severity::Warning),
                ElementsAre("warning: twins [duplicate-nodes]",
                            "    Merge the nodes, or reduce mergeTolerance if they are meant to be apart."));
    EXPECT_EQ(FindingLines(model, Severity::Note).size(), 4U);
}

TEST_F(TellFindings, ControlCharactersOfTheModelAreMadeVisible)
{
    Finding finding = MakeFinding(FindingCode::NoSelfWeight, L"\x1b[2J");
    finding.remedy.clear();
    model.findings.Add(finding);
    EXPECT_THAT(FindingLines(model, Severity::Note), ElementsAre("note: \\x1b[2J [no-self-weight]"));
}

}  // namespace
}  // namespace qvx::test
