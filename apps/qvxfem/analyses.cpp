#include "analyses.h"

#include <algorithm>

namespace qvx::app {

bool IsAnalysis(const std::string& name)
{
    return name == "static" || name == "steel";
}

int RunAnalyses(CjxStruct& model, const std::vector<std::string>& analyses)
{
    int done = model.ExecuteStatic();
    if (done != 0 && std::find(analyses.begin(), analyses.end(), "steel") != analyses.end())
        done = model.ExecuteSteelDesign();
    if (model.bInSolution != 0)  // a design that its check refused
        model.RestoreInputData();
    return done;
}

}  // namespace qvx::app
