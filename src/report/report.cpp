#include "report/report.h"

#include <cerrno>
#include <filesystem>
#include <span>
#include <string>

#include "model/jx_struct.h"
#include "platform/host_services.h"
#include "platform/wide_path.h"
#include "report/report_findings.h"
#include "report/report_sections.h"
#include "report/report_writer.h"

using namespace qvx;

namespace {

constexpr const char* kTitle = "Tavrel (Build 2026.07)";

// One rule a line.
constexpr const char* kStyle[] = {
    "tr {font-size : 11}",
    "tr {text-align : right}",
    "p {font-size : 11}",
    "h1 {font-size : 16}",
    "h2 {font-size : 14}",
    "li {font-size : 11}",
    "pre {font-size : 11}",
    "P.breakhere {page-break-before: always}",
    "th {background-color : \"#66FFFF\"; text-align : right}",
    "a { text-decoration: none}",
    "a:link     {color:blue}",
    "a:visited  {color:purple}",
    "a:hover    {text-decoration: underline; color:black; background-color:yellow}",
    "a:active   {color:darkblue}",
};

// Up to its last separator of either kind, without it; empty when there is none.
std::wstring FolderOf(const std::wstring& path)
{
    const std::size_t end = path.find_last_of(L"/\\");
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end + 1);
}

bool HasStyleSheetBeside(const std::wstring& documentPath)
{
    std::wstring path = FolderOf(documentPath);
    if (!path.empty())
        path.back() = FolderSeparator();
    return std::ifstream(PathOf(path + L"report.css")).is_open();
}

std::wstring ReportPath(const CjxStruct& model)
{
    return model.documentPath.Text() + L".htm";
}

}  // namespace

jxReport::jxReport()
    : bGeneralInfo(1), bUnits(1), bMaterials(1), bSections(1), bThicknesses(1), bLoadCases(1), bLoadCombinations(1),
      bMiscellaneous(1), bNodes(1), bBeams(1), bShell4s(1), bBricks(1), bSupports(1), bNodalSprings(1), bBeamSprings(1),
      bShell4Springs(1), bReleases(1), bDiaphragms(1), bMultiDofConstraints(1), bNodalCoupledSprings(1), bNodalLoads(1),
      bBeamPointLoads(1), bBeamLinearLoads(1), bShell4SurfaceLoads(1), bAdditionalNodalMasses(1), bAreaLoads(1),
      bThermalLoads(1), bNodalDisplacements(1), bSupportReactions(1), bNodalSpringReactions(1), bBeamEndForces(1),
      bBeamSegmentalForces(1), bBeamSegmentalStresses(1), bBeamSegmentalDeflections(1), bBeamSpringReactions(1),
      bShell4BendingForces(1), bShell4BendingPrincipal(1), bShell4MembraneForces(1), bShell4Stresses(1),
      bShell4PrincipalStresses(1), bShell4SpringReactions(1), bBrickStresses(1), bBrickPrincipalStresses(1),
      bEigenValues(1), bEigenVectors(1), bResponseSpectrum(1), bMultiDofConstraintForces(1),
      bNodalCoupledSpringReactions(1), bNodalResultants(1), bSelectedOnly(0), tableWidth(100), bHtmlTables(1)
{
}

CjxReport::CjxReport() : writer_(std::make_unique<ReportWriter>(file, *this))
{
    bHtmlTables = 1;
}

CjxReport::~CjxReport() = default;

bool CjxReport::open_file()
{
    const std::wstring path = ReportPath(*model);
    file.close();
    file.clear();
    file.open(PathOf(path), std::ios::out | std::ios::trunc | std::ios::binary);
    if (!file) {
        CString text;
        text.Format(L"Error opening file %s", path.c_str());
        AfxMessageBox(text);
        return false;
    }
    writer_->Begin(*model, path, onPiece);
    return true;
}

void CjxReport::close_file()
{
    writer_->WriteOut();
    errno = 0;
    file.close();
    if (!file)
        writer_->Fail(errno);
}

void CjxReport::endline()
{
    writer_->EndOfBlock();
}

void CjxReport::run_report()
{
    isWhole_ = false;
    const qvx::FindingList before = model->findings;
    model->CheckInputData(0, true);
    if (model->HasStaticSolution())
        model->findings = before;  // the check of the run saw settings that it has limited since
    try {
        if (!open_file())
            return;
        WriteAll();
        close_file();
        isWhole_ = true;
    } catch (...) {
        writer_->Abandon();
        file.close();
        throw;
    }
}

void CjxReport::WriteAll()
{
    hasStaticResults = model->HasStaticSolution() ? 1 : 0;
    hasEigenResults = !model->eigenResults.empty();
    hasSpectrumResults = !model->spectrumResults.empty();
    WriteHead();
    WriteContents();
    WriteSections();
    WriteReportFindings(*writer_, *model);
    writer_->Flush();  // the lines that make the report look whole follow only what is surely written
    for (const char* line : {"</font>", "</body>", "</html>"})
        writer_->Line(line);
}

void CjxReport::WriteHead()
{
    ReportWriter& out = *writer_;
    out.Line("<html>");
    out.Line("<head>");
    out.Line(std::string("<title> ") + kTitle + "  by NORVANE ANALYTICS, INC. </title>");
    out.Line("<meta charset=\"UTF-8\">");
    out.Line("<meta http-equiv=Content-Type content=\"text/html\">");
    WriteStyle();
    out.Line("</head>");
    out.Line("<body>");
}

void CjxReport::WriteStyle()
{
    ReportWriter& out = *writer_;
    const bool hasSheet = HasStyleSheetBeside(model->documentPath.Text());
    if (hasSheet)
        out.Line("<link rel=\"stylesheet\" type=\"text/css\" href=\"report.css\" />");
    out.Line("<style type=\"text/css\">");
    for (const char* rule : kStyle)
        if (!hasSheet || std::string_view(rule).starts_with("P.breakhere"))
            out.Line(rule);
    out.Line("</style>");
}

void CjxReport::WriteContents()
{
    ReportWriter& out = *writer_;
    if (!out.IsTable()) {
        out.Line("<pre>");
        out.Line("</pre>");
        return;
    }
    set_table();
    WriteContentsOf("INPUT Contents", InputContents());
    if (hasStaticResults != 0 || hasEigenResults != 0)
        WriteContentsOf("OUTPUT Contents", OutputContents());
    out.Line("</table> ");
    out.Line("<p class=\"breakhere\">");
}

void CjxReport::WriteContentsOf(std::string_view title, std::span<const ContentsGroup> groups)
{
    ReportWriter& out = *writer_;
    out.Put("<h1>");
    out.Put(title);
    out.Line("</h1>");
    out.Line("<ul>");
    for (const ContentsGroup& group : groups) {
        if (!group.isPresent(*this))
            continue;
        out.Put("<li>");
        out.Line(group.caption);
        for (const char* anchor : group.anchors)
            if (const ReportSection& section = SectionOf(anchor); IsPresent(*this, section))
                out.Line(std::string("[<a href=\"#") + anchor + "\">" + section.label + "</a>]");
    }
    out.Line("</ul>");
    out.Line("<p></p>");
}

void CjxReport::WriteSections()
{
    for (const ReportSection& section : ReportSections())
        if (IsPresent(*this, section))
            section.write(*this);
}

void CjxReport::set_table()
{
    writer_->SetTable();
}

void CjxReport::write_cell(std::string_view text, int, std::string_view bgcolor, std::string_view align,
                           std::string_view color)
{
    writer_->OpenCell(bgcolor, align, color);
    writer_->Put(text);
    writer_->CloseCell();
}

void CjxReport::write_row2(std::string_view text1, std::string_view text2, int width1, int width2,
                           std::string_view bgcolor, std::string_view align)
{
    writer_->BeginRow();
    write_cell(text1, width1, bgcolor, align, "");
    write_cell(text2, width2, bgcolor, align, "");
    writer_->EndRow();
}
