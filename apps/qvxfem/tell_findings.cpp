#include "tell_findings.h"

#include <algorithm>

#include <fmt/format.h>

#include "platform/cstring.h"
#include "platform/visible_text.h"

namespace qvx::app {

std::vector<std::string> FindingLines(const CjxStruct& model, Severity least)
{
    std::vector<std::string> lines;
    for (const Finding& finding : model.findings)
        // Errors compare above warnings and those above notes.
        if (finding.severity >= least)
            for (const std::wstring& line : LinesOf(finding, model))
                lines.push_back(ToUtf8(VisibleText(line)));
    return lines;
}

bool HasFinding(const CjxStruct& model, Severity least)
{
    return std::any_of(model.findings.begin(), model.findings.end(),
                       [least](const Finding& finding) { return finding.severity >= least; });
}

std::string CountOfFindings(const CjxStruct& model)
{
    std::string text;
    // Zeros too: "0 errors" is what a user looks for.
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        const std::size_t count = model.findings.Count(severity);
        text +=
            fmt::format("{}{} {}{}", text.empty() ? "" : ", ", count, SeverityWord(severity), count == 1 ? "" : "s");
    }
    return text;
}

}  // namespace qvx::app
