#include "report_output.h"

#include <filesystem>
#include <system_error>

#include "exchange/file_error.h"
#include "exchange/report.h"
#include "interrupt.h"
#include "platform/wide_path.h"
#include "tools/jx_exception.h"

namespace qvx::app {
namespace {

constexpr std::string_view kEnding = ".htm";

void SelectSections(const ReportRequest& request, jxReport& report)
{
    if (request.sections.empty())
        return;
    if (const std::string unknown = SelectReportSections(report, request.sections); !unknown.empty())
        throw FileError("", "--report-sections " + unknown, "no such section; docs/report.md lists them");
}

// The report stands beside the document and is named after it, so the document's path is lent for its time.
class DocumentPath
{
public:
    DocumentPath(CjxStruct& model, const std::string& reportFile) : model_(model), before_(model.documentPath)
    {
        const std::string document = reportFile.substr(0, reportFile.size() - kEnding.size());
        model.documentPath = CString(FromUtf8(document));
    }
    ~DocumentPath() { model_.documentPath = before_; }
    DocumentPath(const DocumentPath&) = delete;
    DocumentPath& operator=(const DocumentPath&) = delete;

private:
    CjxStruct& model_;
    CString before_;
};

struct Interrupt
{
};

void Run(CjxReport& report, const std::string& file)
{
    try {
        report.run_report();
    } catch (const jxException& fault) {
        throw FileError("", "", ToUtf8(fault.GetText()));
    }
    if (!report.IsWhole())
        throw FileError(file, "", "cannot be written");
}

}  // namespace

void RequireReportable(const ReportRequest& request)
{
    const bool hasOptions = request.isText || !request.sections.empty();
    if (request.file.empty() && hasOptions)
        throw FileError("", request.isText ? "--report-text" : "--report-sections", "add --report FILE.htm");
    if (request.file.empty())
        return;
    if (!request.file.ends_with(kEnding) || request.file.size() == kEnding.size())
        throw FileError(request.file, "", "cannot be written: the name of a report ends in .htm");
    jxReport any;
    SelectSections(request, any);
}

bool WriteReport(const ReportRequest& request, CjxStruct& model)
{
    CjxReport report;
    report.model = &model;
    report.bHtmlTables = request.isText ? 0 : 1;
    SelectSections(request, report);
    report.onPiece = [] {
        if (IsInterrupted())
            throw Interrupt();
    };
    const DocumentPath path(model, request.file);
    try {
        Run(report, request.file);
    } catch (const Interrupt&) {
        std::error_code ignored;
        std::filesystem::remove(request.file, ignored);
        return false;
    }
    return true;
}

}  // namespace qvx::app
