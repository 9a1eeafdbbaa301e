#include "summary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

#include <fmt/format.h>

#include "extremes.h"
#include "frequency_summary.h"
#include "load_balance.h"
#include "loose_members.h"
#include "model/find_record.h"
#include "model/setting_names.h"
#include "model/units.h"
#include "platform/process_memory.h"

namespace qvx::app {
namespace {

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

void PrintHead(std::FILE* out, const CjxStruct& model, const SummaryFacts& facts)
{
    const std::string name = ToUtf8(model.modelName.Text());
    fmt::print(out, "{}\n\n", name.empty() ? facts.file : fmt::format("{}  ({})", name, facts.file));
    Row(out, "model", "{}", kModelTypeNames[std::clamp(model.modelType, 0, 7)]);
    Row(out, "size", "{}", SizeOf(model));
    Row(out, "loads", "{}, {}", Counted(model.loadCases.size(), "load case", "load cases"),
        Counted(model.loadCombs.size(), "combination", "combinations"));
    std::string solver = kSolverTypeNames[model.solverType];
    if (model.solverType == DoubleSparse)
        solver += fmt::format(" ({})", ToUtf8(model.SparseSolverName().Text()));
    solver += ", " + Counted(static_cast<std::size_t>(model.numberOfEquations), "equation", "equations");
    if (model.solverType != DoubleSparse)  // which keeps its factor to itself
        solver += fmt::format(", {} of {} digits lost", model.digitsLost, kDigits[model.solverType]);
    Row(out, "solver", "{}", solver);
}

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
        return "FAILED: " + ToUtf8(outcome.text);
    }
    return {};
}

// Round-off beside numbers of the size of `scale` reads better as 0.
std::string Number(double value, double scale)
{
    constexpr double kRoundOff = 1e-11;
    return fmt::format("{:.6g}", std::fabs(value) <= kRoundOff * scale ? 0.0 : value);
}

void PrintVector(std::FILE* out, const char* label, const std::string& unit, const std::array<double, 3>& v,
                 double scale)
{
    fmt::print(out, "  {:<20}{:<9}{:>13}{:>13}{:>13}\n", label, unit, Number(v[0], scale), Number(v[1], scale),
               Number(v[2], scale));
}

void PrintBalance(std::FILE* out, const CjxStruct& model, std::size_t comb)
{
    const std::array<double, 3> loads = SumOfLoads(model, comb);
    const std::array<double, 3> reactions = SumOfReactions(model, comb);
    std::array<double, 3> difference{};
    double scale = 0;
    for (std::size_t k = 0; k < 3; ++k) {
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
    static const jxCombOutcome kNotSolved;
    const jxLoadComb& combination = model.loadCombs[comb];
    const jxCombOutcome& outcome = comb < model.combOutcomes.size() ? model.combOutcomes[comb] : kNotSolved;
    fmt::print(out, "\nCombination {} \"{}\": {}\n", comb + 1, ToUtf8(combination.label), CourseOf(outcome));
    if (outcome.bBuckled)
        fmt::print(out, "  BUCKLED: a pivot was not positive; these values are no ordinary result\n");
    for (const jxCaseFactor& term : combination.cases)
        if (model.FindLoadCase(term.label) < 0)
            fmt::print(out, "  no load case is named \"{}\": this term gives no load\n", ToUtf8(term.label));
    if (comb >= model.combResults.size() || model.combResults[comb].displacements.empty())
        return;
    PrintBalance(out, model, comb);
    for (const Extreme& extreme : ExtremesOf(model.combResults[comb]))
        fmt::print(out, "  {:<20}{:<9}{:>13}   {}\n", extreme.what, Unit(model, extreme.unit),
                   fmt::format("{:.6g}", extreme.value), extreme.where);
}

void PrintList(std::FILE* out, const char* heading, const std::vector<std::string>& lines)
{
    if (lines.empty())
        return;
    fmt::print(out, "\n{}\n", heading);
    for (const std::string& line : lines)
        fmt::print(out, "  {}\n", line);
}

template <class Load, class Element>
std::size_t CountOrphans(const std::vector<Load>& loads, const std::vector<Element>& elements)
{
    return static_cast<std::size_t>(std::count_if(
        loads.begin(), loads.end(), [&](const Load& load) { return FindOrNull(elements, load.id) == nullptr; }));
}

// Loads and releases that belong to nothing have no effect; nobody should have to find that out alone.
std::vector<std::string> LooseRecords(const CjxStruct& m)
{
    std::size_t onMembers = 0;
    std::size_t onShells = 0;
    std::size_t onBricks = 0;
    std::size_t areaLoads = 0;
    for (const jxCaseLoad& c : m.caseLoads) {
        onMembers += CountOrphans(c.ptLoads, m.beams) + CountOrphans(c.lnLoads, m.beams) +
                     CountOrphans(c.bmThermalLoads, m.beams);
        onShells += CountOrphans(c.shell4SurfaceLoads, m.shell4s) + CountOrphans(c.shell4ThermalLoads, m.shell4s);
        onBricks += CountOrphans(c.brickThermalLoads, m.bricks);
        areaLoads += c.areaLoads.size();
    }
    std::vector<std::string> lines;
    const auto add = [&](std::size_t count, const char* what) {
        if (count > 0)
            lines.push_back(fmt::format("{} {}", count, what));
    };
    add(onMembers, "loads act on members that are not in the model");
    add(onShells, "loads act on shells that are not in the model");
    add(onBricks, "loads act on bricks that are not in the model");
    add(CountOrphans(m.releases, m.beams), "releases belong to members that are not in the model");
    add(areaLoads, "area loads are not converted to member loads: they take no part in the analysis");
    add(m.shell3s.size(), "three-node shells take no part in the analysis");
    return lines;
}

// The links of a diaphragm whose nodes stand off its plane, which the merge tolerance allows, run across it: they hold
// their nodes out of the plane too. Nodes within the rounding of their coordinates count as in the plane.
std::vector<std::string> DiaphragmsOffPlane(const CjxStruct& m)
{
    constexpr double kRelativeTolerance = 5e-7;
    std::size_t count = 0;
    double largest = 0;
    const jxLink* steepest = nullptr;
    for (const jxLink& link : m.links) {
        const jxNd* start = FindOrNull(m.nodes, link.node1);
        const jxNd* end = FindOrNull(m.nodes, link.node2);
        if (start == nullptr || end == nullptr)
            continue;
        const jxPoint along = end->Point() - start->Point();
        const double offset = std::fabs(dot(along, link.normal));
        if (offset <= kRelativeTolerance * std::sqrt(dot(along, along)))
            continue;
        ++count;
        if (offset > largest) {
            largest = offset;
            steepest = &link;
        }
    }
    if (steepest == nullptr)
        return {};
    return {fmt::format(
        "nodes lie off the plane of their rigid diaphragm, up to {:g} {} (nodes {} and {}); links that hold "
        "them out of the plane too: {}",
        largest, Unit(m, kLength), steepest->node1, steepest->node2, count)};
}

}  // namespace

void PrintSummary(std::FILE* out, const CjxStruct& model, const SummaryFacts& facts)
{
    PrintHead(out, model, facts);
    std::vector<std::string> notes = facts.notes;
    for (const std::vector<std::string>& more :
         {LooseRecords(model), MembersLooseInThemselves(model), DiaphragmsOffPlane(model)})
        notes.insert(notes.end(), more.begin(), more.end());
    PrintList(out, "Notes", notes);
    PrintList(out, "Findings of the input check and of the run", facts.findings);
    PrintModes(out, model);
    for (std::size_t comb = 0; comb < model.combOutcomes.size(); ++comb)
        PrintCombination(out, model, comb);
    fmt::print(out, "\n");
    Row(out, "time, memory", "{:.3g} s, at most {:.0f} MB", facts.seconds,
        static_cast<double>(PeakMemory()) / (1 << 20));
    if (!facts.results.empty())
        Row(out, "written", "{}", facts.results);
    if (!facts.report.empty())
        Row(out, "written", "{}", facts.report);
    if (!facts.log.empty())
        Row(out, "log", "{}", facts.log);
}

}  // namespace qvx::app
