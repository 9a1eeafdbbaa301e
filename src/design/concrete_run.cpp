#include "design/design_run.h"
#include "model/jx_struct.h"

int CjxStruct::ExecuteConcreteDesign()
{
    if (concreteEnvelope.empty() && woodArmer.empty())
        return qvx::RefuseDesign(L"There are no static analysis results to perform concrete design!");
    GetNodeBeamsMap();
    qvx::DesignRun run(*this);
    list_msg(L"START CHECKING RC INPUT", L"...");
    if (CheckRcDesignInputData() == 0)
        return qvx::RefuseDesign(L"Invalid input, please check log file for details from menu File->View Log File.");
    list_msg(L"FINISHED CHECKING RC INPUT", L"OK");
    LogLine(L"\nSolving...\n");

    ClearConcreteResult();
    BeamConcreteDesign();
    GenerateAllColumnSections();
    ColumnConcreteDesign();
    ConcreteShearDesign();
    PlateConcreteDesign();
    run.Finish(L"RC");
    return 1;
}
