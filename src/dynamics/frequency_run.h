#pragma once

#include <memory>
#include <vector>

#include "model/run_context.h"
#include "model/solution_data.h"
#include "solver/load_vector.h"
#include "solver/system_stages.h"

namespace qvx {

/// One frequency run of a model: stiffness and masses of the mass combination, its modes, their response to the spectra.
class FrequencyRun
{
public:
    /// @param massOnly  nothing is solved once the masses stand
    FrequencyRun(const RunContext& context, bool massOnly);

    /// CjxStruct::ExecuteFrequency
    int Execute();

private:
    bool FormAndSolve();
    void Prepare();
    bool HasMassCombination() const;
    bool IsIterated() const;

    /// Stiffness and masses of the mass combination; under P-Delta or with one-way elements by iterations with the
    /// displacements under its load.
    /// @return  equations with mass
    int FormMassCombination();
    bool FormStiffness(int iteration);
    int FormMasses();
    void FactorizeIteration();
    bool SolveIteration(int iteration);

    void ClampModes(int massDofs);
    void TellSizes(int massDofs) const;
    template <Number Real>
    void SolveModes(const std::vector<Real>& masses);
    void SolveModesTellingAdvice();

    std::vector<double128>& Load() { return model_.loadVectors[static_cast<std::size_t>(model_.massLoadComb)]; }
    const jxLoadComb& MassCombination() const
    {
        return model_.loadCombs[static_cast<std::size_t>(model_.massLoadComb)];
    }

    RunContext context_;
    CjxStruct& model_;
    ElementGroups groups_;
    jxSolutionData data_;
    std::unique_ptr<SystemStages> stages_;
    bool massOnly_;
    bool hasWarned_ = false;  ///< of a pivot that is not positive
    jxUnit display_;
    std::vector<double> masses_;      ///< of the double skyline
    std::vector<double128> massesQ_;  ///< of the others
};

}  // namespace qvx
