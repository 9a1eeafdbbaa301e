#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// The report that a run was asked for.
struct ReportRequest
{
    std::string file;                   ///< ends in ".htm"; empty: none
    std::vector<std::string> sections;  ///< anchors; empty: all
    bool isText = false;                ///< monospaced text instead of tables
};

/// Throws FileError for a file of another ending, a section that there is not, or options without a file.
void RequireReportable(const ReportRequest& request);

/// Writes the report, as the model has a report.css or not beside it. False when Ctrl-C stopped it: no file is left then.
/// Throws FileError when the file cannot be written.
bool WriteReport(const ReportRequest& request, CjxStruct& model);

}  // namespace qvx::app
