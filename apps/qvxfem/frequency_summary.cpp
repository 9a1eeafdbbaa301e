#include "frequency_summary.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "dynamics/participation.h"
#include "model/physical_constants.h"
#include "model/units.h"

namespace qvx::app {
namespace {

constexpr double kEnoughMass = 0.9;
constexpr char kAxes[] = {'X', 'Y', 'Z'};
constexpr const char* kRules[] = {"CQC", "SRSS", "absolute sum"};

bool HasMass(const CjxStruct& model, std::size_t direction)
{
    const jxDirectionMass& mass = model.frequencyOutcome.mass[direction];
    return mass.moving + mass.onSupports > 0;
}

void PrintTable(std::FILE* out, const CjxStruct& model)
{
    fmt::print(out, "  {:>4}{:>13}{:>13}{:>11}{:>9}{:>9}{:>9}{:>9}{:>9}{:>9}\n", "mode", "period s", "frequency Hz",
               "error", "X", "Y", "Z", "sum X", "sum Y", "sum Z");
    const std::vector<std::array<double, 3>> shares = ModalParticipation(model);
    std::array<double, 3> sum{};
    for (std::size_t mode = 0; mode < model.eigenResults.size(); ++mode) {
        const jxEigenResult& eigen = model.eigenResults[mode];
        const double period = kTwoPi / std::sqrt(eigen.eigenvalue);
        const std::array<double, 3>& share = shares[mode];
        for (std::size_t direction = 0; direction < 3; ++direction)
            sum[direction] += share[direction];
        fmt::print(out, "  {:>4}{:>13.6g}{:>13.6g}{:>11.1e}{:>9.4f}{:>9.4f}{:>9.4f}{:>9.4f}{:>9.4f}{:>9.4f}\n",
                   mode + 1, period, 1 / period, eigen.errorMeasure, share[0], share[1], share[2], sum[0], sum[1],
                   sum[2]);
    }
}

// "90 % of the mass along X is moved by 4 modes"; or how far these modes come.
std::string MassSentence(const CjxStruct& model, std::size_t direction)
{
    double sum = 0;
    int needed = 0;
    for (const std::array<double, 3>& share : ModalParticipation(model)) {
        if (sum < kEnoughMass)
            ++needed;
        sum += share[direction];
    }
    if (sum >= kEnoughMass)
        return fmt::format("{:.0f} % of the mass along {} is moved by {} mode{}", 100 * kEnoughMass, kAxes[direction],
                           needed, needed == 1 ? "" : "s");
    return fmt::format("these modes move {:.1f} % of the mass along {}: {:.0f} % would need more of them", 100 * sum,
                       kAxes[direction], 100 * kEnoughMass);
}

// Masses are told in the model's units, whose factor from the internal ones is that of force over length.
void PrintMasses(std::FILE* out, const CjxStruct& model)
{
    double f[kQuantityCount];
    GetConversionFactors(f, jxUnit(), model.units);
    const std::string force = ToUtf8(UnitName(model.units.unit[kForce]));
    const std::string length = ToUtf8(UnitName(model.units.unit[kLength]));
    fmt::print(out, "  {:<20}{:>13}{:>13}{:>13}   [{}-sec^2/{}]\n", "mass", "moving", "on supports", "lost", force,
               length);
    for (std::size_t direction = 0; direction < 3; ++direction) {
        const jxDirectionMass& mass = model.frequencyOutcome.mass[direction];
        const double factor = f[kForce] / f[kLength];
        fmt::print(out, "  {:<20}{:>13.6g}{:>13.6g}{:>13.6g}\n", fmt::format("along {}", kAxes[direction]),
                   mass.moving * factor, mass.onSupports * factor, mass.lost * factor);
    }
    for (std::size_t direction = 0; direction < 3; ++direction)
        if (HasMass(model, direction))
            fmt::print(out, "  {}\n", MassSentence(model, direction));
}

std::string SturmSentence(const CjxStruct& model)
{
    const jxFrequencyOutcome& outcome = model.frequencyOutcome;
    if (!outcome.bConverged)
        return fmt::format("NOT CONVERGED in {} iterations: whether a mode is missed was not looked into",
                           outcome.iterations);
    const double frequency = std::sqrt(outcome.sturmShift) / kTwoPi;
    if (outcome.sturmCounted == outcome.sturmExpected)
        return fmt::format("Sturm sequence check: {} modes below {:.6g} Hz, all found", outcome.sturmCounted,
                           frequency);
    return fmt::format("Sturm sequence check: {} modes below {:.6g} Hz, {} FOUND", outcome.sturmCounted, frequency,
                       outcome.sturmExpected);
}

void PrintBaseShears(std::FILE* out, const CjxStruct& model)
{
    if (model.spectrumResults.empty() || model.modalCombination < 0 || model.modalCombination > 2)
        return;
    const std::string unit = ToUtf8(UnitName(model.units.unit[kForce]));
    for (int direction = 0; direction < 3; ++direction)
        if (model.IsPerformingSpectrumAnalysisInDirection(direction))
            fmt::print(out, "  {:<20}{:<9}{:>13.6g}   {}, times the factor {:g}\n",
                       fmt::format("base shear along {}", kAxes[direction]), unit, BaseShear(model, direction),
                       kRules[model.modalCombination], model.spectrumFactor[direction]);
}

}  // namespace

void PrintModes(std::FILE* out, const CjxStruct& model)
{
    if (!model.frequencyOutcome.bDone)
        return;
    fmt::print(out, "\nModes: {} of {} mass degrees of freedom, {} iteration vectors, {} iterations\n",
               model.frequencyOutcome.modes, model.frequencyOutcome.massDofs, model.frequencyOutcome.vectors,
               model.frequencyOutcome.iterations);
    PrintTable(out, model);
    PrintMasses(out, model);
    PrintBaseShears(out, model);
    fmt::print(out, "  {}\n", SturmSentence(model));
}

}  // namespace qvx::app
