#include "files/finding_list.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/results_file.h"

namespace qvx::test {
namespace {

using nlohmann::json;

Finding Sample()
{
    Finding finding = MakeFinding(FindingCode::TermWithoutLoadCase, L"no \"WIND\"");
    finding.About(L"member", 7);
    finding.About(L"node", 3);
    finding.combination = 1;
    finding.field = "loadCombs[1]";
    return finding;
}

TEST(FindingList, HoldsWhatIsKnownAndLeavesTheRestOut)
{
    CjxStruct model;
    model.findings.Add(Sample());
    model.findings.Add(MakeFinding(FindingCode::NoSelfWeight, L"none"));

    const json list = json::parse(FindingListText(model, true));

    EXPECT_EQ(list["accepted"], true);
    EXPECT_EQ(list["findings"].size(), 2U);
    const json expected = {{"severity", "error"},
                           {"code", "term-without-load-case"},
                           {"text", "no \"WIND\""},
                           {"remedy", "Correct the label of the term, or take it out."},
                           {"records", {{{"kind", "member"}, {"id", 7}}, {{"kind", "node"}, {"id", 3}}}},
                           {"count", 2},
                           {"combination", 1},
                           {"field", "loadCombs[1]"}};
    EXPECT_EQ(list["findings"][0], expected);
    const json bare = {{"severity", "note"},
                       {"code", "no-self-weight"},
                       {"text", "none"},
                       {"remedy", "Set selfWeightFactor to -1 if the weight is to act."}};
    EXPECT_EQ(list["findings"][1], bare);
}

TEST(FindingList, StandsInTheResultsFileWithItsMark)
{
    CjxStruct model;
    model.loadCombs.resize(2);
    model.findings.Add(Sample());

    const json results = json::parse(WriteResultsText(model));

    EXPECT_EQ(results["findings"].size(), 1U);
    EXPECT_FALSE(results["combinations"][0].contains("reliable"));
    EXPECT_EQ(results["combinations"][1]["reliable"], false);
}

}  // namespace
}  // namespace qvx::test
