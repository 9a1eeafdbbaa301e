#include "solver/static_stages.h"

#include <string>

#include "platform/host_services.h"
#include "tools/timer.h"

namespace qvx {

void ReportFault(CjxStruct& model, const wchar_t* text)
{
    if (model.bInteractive)
        AfxMessageBox(text);
    model.list_msg(text, L"...");
}

void AnnouncePart(CjxStruct& model, const wchar_t* heading)
{
    model.list_msg_and_log(heading, L"");
    model.list_msg(std::wstring(128, L'-').c_str(), L"");
}

CString CombinationTitle(const CjxStruct& model, int comb)
{
    CString title;
    title.Format(L"LOAD COMBINATION %d: %s", comb + 1, model.loadCombs[static_cast<std::size_t>(comb)].label);
    return title;
}

void LogFactorizationTime(CjxStruct& model)
{
    CString text;
    text.Format(L"time spent on FACTORIZATION = %d seconds", static_cast<int>(timer(0)));
    model.LogLine(text);
    timer(1);
}

void LogSolutionTime(CjxStruct& model)
{
    CString text;
    text.Format(L"time spent on reduction and back-substitution = %g seconds", timer(0));
    model.LogLine(text);
    timer(1);
}

void LogStiffnessTime(CjxStruct& model)
{
    CString text;
    // timer() counts milliseconds (tools/timer.h).
    text.Format(L"time spent on stiffness calculation = %d seconds", static_cast<int>(timer(0) / 1000));
    model.LogLine(text);
    timer(1);
}

void LogOutputTime(CjxStruct& model)
{
    CString text;
    text.Format(L"time spent on output = %g seconds", timer(0));
    model.LogLine(text);
}

}  // namespace qvx
