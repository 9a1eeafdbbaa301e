#include "files/explanation_file.h"

#include <limits>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/temporary_folder.h"

namespace qvx::test {
namespace {

std::vector<DesignExplanation> Sample()
{
    DesignExplanation e;
    e.kind = DesignKind::Steel;
    e.member = 7;
    e.edition = L"AISC 360-16";
    e.verdict = "ratio 0.5, limit 1";
    e.groups = {{"Check",
                 {{"Fe [ksi]", std::numeric_limits<double>::infinity(), L"", "E3", "E3-4"},
                  {"section", 0, L"W18\"X50", "", ""},
                  {"ratio", 0.5, L"", "", ""}}}};
    return {e};
}

TEST(ExplanationFile, HoldsEveryFigureWithItsClause)
{
    const nlohmann::json file = nlohmann::json::parse(ExplanationJson(Sample()));
    EXPECT_EQ(file["format"], "qvxfem-explanation");
    const nlohmann::json& e = file["explanations"][0];
    EXPECT_EQ(e["member"], 7);
    EXPECT_EQ(e["kind"], "steel");
    EXPECT_EQ(e["edition"], "AISC 360-16");
    EXPECT_EQ(e["bConsistentDesign"], 0);
    EXPECT_EQ(e["isOfModel"], true);
    EXPECT_EQ(e["verdict"], "ratio 0.5, limit 1");
    const nlohmann::json& figures = e["groups"][0]["figures"];
    EXPECT_TRUE(figures[0]["value"].is_null()) << "an infinite one";
    EXPECT_EQ(figures[0]["clause"], "E3");
    EXPECT_EQ(figures[0]["equation"], "E3-4");
    EXPECT_EQ(figures[1]["text"], "W18\"X50");
    EXPECT_FALSE(figures[1].contains("value"));
    EXPECT_EQ(figures[2]["value"], 0.5);
    EXPECT_FALSE(figures[2].contains("clause"));
}

TEST(ExplanationFile, IsTheSameText)
{
    const TemporaryFolder folder;
    WriteExplanationFile(folder.Path() / "e.json", Sample());
    EXPECT_EQ(folder.Read("e.json"), ExplanationJson(Sample()));
}

}  // namespace
}  // namespace qvx::test
