#include "report/report_findings.h"

#include <string>
#include <utility>

#include "model/findings.h"

namespace qvx {

void WriteReportFindings(ReportWriter& out, const CjxStruct& model)
{
    if (model.findings.empty())
        return;
    out.BeginSection("findings", "Findings");
    for (const Finding& finding : model.findings) {
        out.BeginBlockTitle();
        bool isFirst = true;
        // The same lines as on the terminal. They are texts of a model, so what HTML takes for its own is escaped.
        for (const std::wstring& line : LinesOf(finding, model)) {
            if (!std::exchange(isFirst, false))
                out.IsTable() ? out.Line("<br>") : out.EndLine();
            out.PutUserText(line);
        }
        out.EndBlockTitle();
    }
    out.EndSection();
}

}  // namespace qvx
