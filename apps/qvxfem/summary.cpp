#include "summary.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

#include <fmt/format.h>

#include "design_summary.h"
#include "extremes.h"
#include "frequency_summary.h"
#include "load_balance.h"
#include "model/find_record.h"
#include "model/setting_names.h"
#include "model/units.h"
#include "platform/process_memory.h"
#include "platform/visible_text.h"
#include "tell_findings.h"

namespace qvx::app {
namespace {

// Decimal digits of a double (53 bits) and of a double128 (two doubles, 106 bits), of which a factor loses some.
constexpr int kDigits[] = {16, 31};  // of the skyline solvers

template <class... Arguments>
void Row(std::FILE* out, const char* label, fmt::format_string<Arguments...> text, Arguments&&... arguments)
{
    fmt::print(out, "  {:<20}{}\n", label, fmt::format(text, std::forward<Arguments>(arguments)...));
}

std::string Unit(const CjxStruct& model, Quantity quantity)
{
    return ToUtf8(UnitName(model.units.unit[quantity]));
}

std::string Counted(std::size_t count, const char* one, const char* many)
{
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

// "36 nodes, 63 members, ...": kinds that the model has none of are left out.
std::string SizeOf(const CjxStruct& m)
{
    std::string text = Counted(m.nodes.size(), "node", "nodes");
    const auto add = [&](std::size_t count, const char* one, const char* many) {
        if (count > 0)
            text += ", " + Counted(count, one, many);
    };
    add(m.beams.size(), "member", "members");
    add(m.shell4s.size(), "shell", "shells");
    add(m.bricks.size(), "brick", "bricks");
    add(m.supports.size(), "support", "supports");
    add(m.nodalSprings.size() + m.coupledSprings.size() + m.beamSprings.size() + m.shell4Springs.size(), "spring",
        "springs");
    add(m.multiDofConstraints.size(), "constraint", "constraints");
    add(m.diaphragms.size(), "rigid diaphragm", "rigid diaphragms");
    return text;
}

// Names come from files of strangers: VisibleText shows control characters instead of sending them to the terminal.
void PrintHead(std::FILE* out, const CjxStruct& model, const SummaryFacts& facts)
{
    const std::string name = ToUtf8(VisibleText(model.modelName.Text()));
    const std::string file = VisibleText(facts.file);
    fmt::print(out, "{}\n\n", name.empty() ? file : fmt::format("{}  ({})", name, file));
    Row(out, "model", "{}", kModelTypeNames[std::clamp(model.modelType, 0, 7)]);
    Row(out, "size", "{}", SizeOf(model));
    Row(out, "loads", "{}, {}", Counted(model.loadCases.size(), "load case", "load cases"),
        Counted(model.loadCombs.size(), "combination", "combinations"));
    std::string solver = kSolverTypeNames[model.solverType];
    if (model.solverType == DoubleSparse)
        solver += fmt::format(" ({})", ToUtf8(model.SparseSolverName().Text()));
    solver += ", " + Counted(static_cast<std::size_t>(model.numberOfEquations), "equation", "equations");
    assert(model.solverType >= DoubleSkyline && model.solverType <= DoubleSparse);
    if (model.solverType != DoubleSparse)  // which keeps its factor to itself
        solver += fmt::format(", {} of {} digits lost", model.digitsLost, kDigits[model.solverType]);
    Row(out, "solver", "{}", solver);
}

// In capitals what makes the numbers below worthless: a reader who only skims must meet it.
std::string CourseOf(const jxCombOutcome& outcome)
{
    switch (outcome.end) {
    case CombEnd::NotSolved:
        return "not solved";
    case CombEnd::Linear:
        return "linear";
    case CombEnd::Converged:
        return fmt::format("converged in {}",
                           Counted(static_cast<std::size_t>(outcome.iterations), "iteration", "iterations"));
    case CombEnd::Limit:
        return fmt::format("NOT CONVERGED: stopped after {}; its values prove nothing",
                           Counted(static_cast<std::size_t>(outcome.iterations), "iteration", "iterations"));
    case CombEnd::NoLoad:
        return "no load, no iteration";
    case CombEnd::Failed:
        return "FAILED: " + ToUtf8(VisibleText(std::wstring_view(outcome.text)));
    }
    return {};
}

// Round-off beside numbers of the size of `scale` reads better as 0.
std::string Number(double value, double scale)
{
    constexpr double kRoundOff = 1e-11;
    assert(!(scale < 0) && "a size");
    return fmt::format("{:.6g}", std::fabs(value) <= kRoundOff * scale ? 0.0 : value);
}

void PrintVector(std::FILE* out, const char* label, const std::string& unit, const std::array<double, 3>& v,
                 double scale)
{
    fmt::print(out, "  {:<20}{:<9}{:>13}{:>13}{:>13}\n", label, unit, Number(v[0], scale), Number(v[1], scale),
               Number(v[2], scale));
}

// The check that every engineer does first: what is applied must come out at the supports. Penalties leave about 1e-5
// of a support's flexibility, so the difference is shown and not judged.
void PrintBalance(std::FILE* out, const CjxStruct& model, std::size_t comb)
{
    const std::array<double, 3> loads = SumOfLoads(model, comb);
    const std::array<double, 3> reactions = SumOfReactions(model, comb);
    std::array<double, 3> difference{};
    double scale = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        // Reactions act on the structure: with the loads they add up to nothing.
        difference[k] = loads[k] + reactions[k];
        scale = std::max({scale, std::fabs(loads[k]), std::fabs(reactions[k])});
    }
    const std::string unit = Unit(model, kForce);
    fmt::print(out, "  {:<29}{:>13}{:>13}{:>13}\n", "", "X", "Y", "Z");
    PrintVector(out, "sum of loads", unit, loads, scale);
    PrintVector(out, "sum of reactions", unit, reactions, scale);
    fmt::print(out, "  {:<20}{:<9}{:>13.1e}{:>13.1e}{:>13.1e}\n", "difference", unit, difference[0], difference[1],
               difference[2]);
}

void PrintCombination(std::FILE* out, const CjxStruct& model, std::size_t comb)
{
    assert(comb < model.loadCombs.size());
    static const jxCombOutcome kNotSolved;
    const jxLoadComb& combination = model.loadCombs[comb];
    const jxCombOutcome& outcome = comb < model.combOutcomes.size() ? model.combOutcomes[comb] : kNotSolved;
    fmt::print(out, "\nCombination {} \"{}\": {}\n", comb + 1, ToUtf8(VisibleText(combination.label)),
               CourseOf(outcome));
    if (!IsReliable(model, comb))
        fmt::print(out, "  NOT TO BE RELIED ON: see the findings about this combination\n");
    // A run that was stopped has results of its first combinations only.
    if (comb >= model.combResults.size() || model.combResults[comb].displacements.empty())
        return;
    PrintBalance(out, model, comb);
    for (const Extreme& extreme : ExtremesOf(model.combResults[comb]))
        fmt::print(out, "  {:<20}{:<9}{:>13}   {}\n", extreme.what, Unit(model, extreme.unit),
                   fmt::format("{:.6g}", extreme.value), extreme.where);
}

void PrintList(std::FILE* out, const char* heading, const std::vector<std::string>& lines)
{
    assert(heading != nullptr);
    if (lines.empty())
        return;
    fmt::print(out, "\n{}\n", heading);
    for (const std::string& line : lines)
        fmt::print(out, "  {}\n", line);
}

}  // namespace

void PrintSummary(std::FILE* out, const CjxStruct& model, const SummaryFacts& facts)
{
    PrintHead(out, model, facts);
    // Before the numbers: whoever reads them must know first what to think of them.
    PrintList(out, "Findings", FindingLines(model, Severity::Note));
    PrintModes(out, model);
    for (std::size_t comb = 0; comb < model.combOutcomes.size(); ++comb)
        PrintCombination(out, model, comb);
    PrintConcreteDesign(out, model);
    fmt::print(out, "\n");
    if (const std::string steel = SteelSummary(model); !steel.empty())
        Row(out, "steel members", "{}", steel);
    Row(out, "time, memory", "{:.3g} s, at most {:.0f} MB", facts.seconds,
        static_cast<double>(PeakMemory()) / (1 << 20));
    if (!facts.results.empty())
        Row(out, "written", "{}", VisibleText(std::string_view(facts.results)));
    if (!facts.report.empty())
        Row(out, "written", "{}", VisibleText(std::string_view(facts.report)));
    if (!facts.log.empty())
        Row(out, "log", "{}", VisibleText(std::string_view(facts.log)));
}

}  // namespace qvx::app
