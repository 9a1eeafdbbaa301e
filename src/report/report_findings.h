#pragma once

#include "model/jx_struct.h"
#include "report/report_writer.h"

namespace qvx {

/// The findings of the model as a section after the last one; nothing when there are none.
void WriteReportFindings(ReportWriter& out, const CjxStruct& model);

}  // namespace qvx
