#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "model/physical_constants.h"
#include "support/static_model.h"

namespace qvx::test {

/// A model under test with masses and modes.
class VibratingModel : public StaticModel
{
public:
    explicit VibratingModel(int solverType = DoubleSkyline) : StaticModel(solverType)
    {
        model.eigenTolerance = 1e-6;
        model.maxSubspaceIterations = 60;
    }

    void Mass(int node, int dof, double value)
    {
        model.additionalMasses.push_back({.id = node, .dof = dof, .value = value});
    }
    void MassXYZ(int node, double value)
    {
        for (const int dof : {kX, kY, kZ})
            Mass(node, dof, value);
    }
    /// Runs the model: text of the exception that leaves the run; empty when there is none.
    std::wstring FaultOfModes()
    {
        try {
            model.ExecuteFrequency(false);
        } catch (const jxException& fault) {
            return fault.GetText();
        }
        return L"";
    }
    /// Modes, their inertia cases, and the static run that combines them.
    int RunSpectrum()
    {
        model.bPerformSpectrum = 1;
        if (model.ExecuteFrequency(false) != 1)
            return 0;
        model.ConvertInertiaForces();
        return model.ExecuteStatic();
    }
    double Omega(std::size_t mode) const { return std::sqrt(model.eigenResults.at(mode - 1).eigenvalue); }
    double Hertz(std::size_t mode) const { return Omega(mode) / kTwoPi; }
    double Shape(std::size_t mode, int node, int dof) const
    {
        return ValueOf(model.eigenResults.at(mode - 1).shape, node, dof);
    }
    /// Texts of the list lines.
    std::vector<std::wstring> Told() const
    {
        std::vector<std::wstring> texts;
        for (const RecordingWindow::Line& line : window.lines)
            texts.push_back(line.text);
        return texts;
    }
};

}  // namespace qvx::test
