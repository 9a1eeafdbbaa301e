#include "report/explanation_text.h"

#include <fmt/format.h>

#include "platform/cstring.h"
#include "platform/visible_text.h"

namespace qvx {

namespace {

std::string FigureLine(const ExplainedFigure& figure)
{
    const std::string value =
        figure.text.empty() ? fmt::format("{:.7g}", figure.value) : ToUtf8(VisibleText(figure.text));
    std::string line = fmt::format("  {:<36} {:<14} {:<16} {}", figure.name, value, figure.clause, figure.equation);
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string Heading(const DesignExplanation& explanation)
{
    return fmt::format("Member {}: {} by {}, bConsistentDesign {} ({})\n", explanation.member, NameOf(explanation.kind),
                       ToUtf8(explanation.edition), explanation.isConsistent ? 1 : 0,
                       explanation.isOfModel ? "as the model has it" : "for comparison");
}

}  // namespace

std::string ExplanationText(const std::vector<DesignExplanation>& explanations)
{
    std::string text;
    for (const DesignExplanation& explanation : explanations) {
        text += (text.empty() ? "" : "\n") + Heading(explanation);
        text += "kip, inch, ksi; moments kip-ft\n";
        for (const ExplainedGroup& group : explanation.groups) {
            text += "\n" + group.title + "\n";
            for (const ExplainedFigure& figure : group.figures)
                text += FigureLine(figure);
        }
        text += "\nResult: " + explanation.verdict + "\n";
    }
    return text;
}

}  // namespace qvx
