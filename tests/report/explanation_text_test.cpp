#include "report/explanation_text.h"

#include <gtest/gtest.h>

namespace qvx::test {
namespace {

TEST(ExplanationText, HasALineAFigure)
{
    DesignExplanation e;
    e.kind = DesignKind::Flexure;
    e.member = 3;
    e.edition = L"ACI 318-19";
    e.verdict = "bottom 2 in^2";
    e.groups = {
        {"Bottom steel", {{"a [in]", 3.07050912, L"", "22.2.2.4.1", "d - sqrt(d^2)"}, {"label", 0, L"A\x1b", "", ""}}}};
    DesignExplanation other = e;
    other.isConsistent = true;
    other.isOfModel = false;
    other.groups.clear();
    EXPECT_EQ(ExplanationText({e, other}),
              "Member 3: flexure by ACI 318-19, bConsistentDesign 0 (as the model has it)\n"
              "kip, inch, ksi; moments kip-ft\n"
              "\n"
              "Bottom steel\n"
              "  a [in]                               3.070509       22.2.2.4.1       d - sqrt(d^2)\n"
              "  label                                A\\x1b\n"
              "\n"
              "Result: bottom 2 in^2\n"
              "\n"
              "Member 3: flexure by ACI 318-19, bConsistentDesign 1 (for comparison)\n"
              "kip, inch, ksi; moments kip-ft\n"
              "\n"
              "Result: bottom 2 in^2\n");
}

}  // namespace
}  // namespace qvx::test
