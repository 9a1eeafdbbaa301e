#include "analyses.h"

#include <algorithm>

namespace qvx::app {

bool IsAnalysis(const std::string& name)
{
    return name == "static" || name == "concrete" || name == "steel";
}

int RunAnalyses(CjxStruct& model, const std::vector<std::string>& analyses)
{
    const auto isAsked = [&](const char* name) {
        return std::find(analyses.begin(), analyses.end(), name) != analyses.end();
    };
    // Every design starts from a static solution: it is run first whether it was named or not.
    int done = model.ExecuteStatic();
    if (done != 0 && isAsked("concrete"))
        done = model.ExecuteConcreteDesign();
    if (done != 0 && isAsked("steel"))
        done = model.ExecuteSteelDesign();
    if (model.bInSolution != 0)  // a design that its check refused
        model.RestoreInputData();
    return done;
}

}  // namespace qvx::app
