#include "solver/run_frame.h"

#include <algorithm>
#include <iterator>

#include "platform/cwin_app.h"
#include "solver/run_findings.h"
#include "solver/static_stages.h"

namespace qvx {

bool CheckInput(CjxStruct& model, int mode)
{
    model.list_msg(L"START CHECKING INPUT", L"...");
    if (model.CheckInputData(mode, false) == 0 || HasRefusedShapes(model)) {
        ReportFault(model, L"Invalid input, please check log file for details from menu File->View Log File.");
        model.RepaireData();
        return false;
    }
    model.list_msg(L"FINISHED CHECKING INPUT", L"OK");
    model.LogLine(L"\nSolving...\n");
    return true;
}

jxUnit BeginRun(const RunContext& context)
{
    CjxStruct& model = context.model;
    jxUnit display = model.units;
    std::fill(std::begin(display.flags), std::end(display.flags), 1);  // every quantity is to be converted
    model.SaveInputData();
    context.convertUnits(display, jxUnit());
    model.bInSolution = 1;
    return display;
}

void EndRun(const RunContext& context, const jxUnit& display, const WallClock& clock)
{
    CjxStruct& model = context.model;
    context.convertUnits(jxUnit(), display);
    model.bInSolution = 0;
    model.RestoreInputData();
    CString text;
    text.Format(L"total time spent on analysis %d seconds", clock.Seconds());
    model.list_msg(text, L"Completed");
    if (AfxGetApp().GetProfileInt(L"Preferences", L"LockModel", 0) == 1)
        model.bLockModel = 1;
}

}  // namespace qvx
