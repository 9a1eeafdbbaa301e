#include "design/design_findings.h"
#include "design/design_run.h"
#include "model/jx_struct.h"

int CjxStruct::ExecuteConcreteDesign()
{
    // Envelopes of members or moments of plates, either is enough: they are what a static run leaves for the design.
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
    // After flexure: the shear strength of 318-19 asks for the tension steel that flexure has chosen.
    ConcreteShearDesign();
    PlateConcreteDesign();
    qvx::FindInConcreteDesign(*this);
    run.Finish(L"RC");
    return 1;
}
