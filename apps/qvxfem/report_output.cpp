#include "report_output.h"

#include <cassert>
#include <cstdio>
#include <string>

#include "interrupt.h"
#include "platform/file_error.h"
#include "platform/pending_file.h"
#include "platform/wide_path.h"
#include "report/report.h"
#include "tools/jx_exception.h"

namespace qvx::app {
namespace {

constexpr std::string_view kEnding = ".htm";

void SelectSections(const ReportRequest& request, CjxReport& report)
{
    if (request.sections.empty())
        return;
    if (const std::string unknown = SelectReportSections(report, request.sections); !unknown.empty())
        throw FileError("", "--report-sections " + unknown, "no such section; docs/report.md lists them");
}

// The engine asks its questions about the input again before it reports; they were answered before the run.
class Silence
{
public:
    explicit Silence(CjxStruct& model) : model_(model), before_(model.bInteractive) { model.bInteractive = 0; }
    ~Silence() { model_.bInteractive = before_; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    CjxStruct& model_;
    unsigned char before_;
};

// Where the report is written. It stands beside the document and is named after it, so the document's path is lent for
// its time.
class ReportPlace
{
public:
    ReportPlace(CjxStruct& model, const std::string& file)
        : model_(model), documentPath_(model.documentPath), pending_(file, kEnding)
    {
        if (!pending_.IsDirect())
            std::fclose(pending_.Open());  // a folder that takes no file is told before the report is made
        const std::string path = pending_.Written().string();
        assert(path.ends_with(kEnding) && "the engine adds the ending itself");
        model.documentPath = CString(TextOf(path.substr(0, path.size() - kEnding.size())));
    }
    ~ReportPlace() { model_.documentPath = documentPath_; }
    ReportPlace(const ReportPlace&) = delete;
    ReportPlace& operator=(const ReportPlace&) = delete;

    /// A message of the engine with the name under which the user knows the file.
    std::string Told(std::string message) const
    {
        const std::string written = pending_.Written().string();
        if (const std::size_t at = message.find(written); at != std::string::npos)
            message.replace(at, written.size(), pending_.Path().string());
        return message;
    }
    void Commit() { pending_.Commit(); }

private:
    CjxStruct& model_;
    CString documentPath_;
    PendingFile pending_;
};

struct Interrupt
{
};

void Run(CjxReport& report, ReportPlace& place, const std::string& file)
{
    try {
        report.run_report();
    } catch (const jxException& fault) {
        throw FileError("", "", place.Told(ToUtf8(fault.GetText())));
    }
    if (!report.IsWhole())
        throw FileError(file, "", "cannot be written");
    place.Commit();
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
    CjxReport any;
    SelectSections(request, any);
}

bool WriteReport(const ReportRequest& request, CjxStruct& model)
{
    CjxReport report;
    report.model = &model;
    report.bHtmlTables = request.isText ? 0 : 1;
    SelectSections(request, report);
    assert(report.model == &model && !request.file.empty() && "RequireReportable let it pass");
    report.onPiece = [] {
        if (IsInterrupted())
            throw Interrupt();
    };
    const Silence silence(model);
    ReportPlace place(model, request.file);
    try {
        Run(report, place, request.file);
    } catch (const Interrupt&) {
        return false;
    }
    return true;
}

}  // namespace qvx::app
