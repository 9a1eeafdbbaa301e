#include "finite_results.h"

#include <cassert>
#include <cmath>
#include <span>

#include <fmt/format.h>

#include "platform/cstring.h"

namespace qvx::app {
namespace {

constexpr double kLargestSquared = 1e150;
// Its square is still a double: whoever reads a result may form energies and norms of it.

class Search
{
public:
    // Location: -1 none, 0 the centre, from 1 the corners of an element.
    void Look(std::span<const double> values, const char* record, int id, const char* what, int location = -1)
    {
        for (const double value : values)
            if (!(std::fabs(value) < kLargestSquared))
                Found(value, record, id, what, location);
    }
    void Begin(std::size_t comb, const CjxStruct& model)
    {
        assert(comb < model.loadCombs.size());
        comb_ = fmt::format("load combination {} \"{}\"", comb + 1, ToUtf8(model.loadCombs[comb].label));
    }
    std::string Text() const
    {
        return count_ > 1 ? fmt::format("{}, and {} more such values", first_, count_ - 1) : first_;
    }

private:
    void Found(double value, const char* record, int id, const char* what, int location)
    {
        assert(record != nullptr && what != nullptr && location <= 8);
        // The first is named, the others counted: one bad element spoils thousands of values.
        if (++count_ > 1)
            return;
        const std::string place = location < 0    ? std::string()
                                  : location == 0 ? std::string(" at the centre")
                                                  : fmt::format(" at corner {}", location);
        first_ = fmt::format("{}: {} {}, {}{} is {:g}", comb_, record, id, what, place,
                             std::isnan(value) ? std::fabs(value) : value);
    }

    std::string comb_;
    std::string first_;
    std::size_t count_ = 0;
};

void LookAtSixValues(Search& search, const std::vector<jxResult6Val>& family, const char* record, const char* what)
{
    for (const jxResult6Val& result : family)
        search.Look(result.value, record, result.id, what);
}

void LookAtStation(Search& search, const jxVMD& s, int member, const char* what)
{
    const double values[] = {s.x, s.Fx, s.Fy, s.Fz, s.Mx, s.My, s.Mz, s.Dy, s.Dz};
    search.Look(values, "member", member, what);
}

void LookAtMembers(Search& search, const jxCombResult& result)
{
    for (const jxBmEndVMD& member : result.beamEndForces) {
        LookAtStation(search, member.start, member.id, "force at the start");
        LookAtStation(search, member.end, member.id, "force at the end");
    }
    for (const jxBmVMD& member : result.beamCurves)
        for (const jxVMD& station : member.vmd)
            LookAtStation(search, station, member.id, "force or deflection in the span");
}

void LookAtMemberStresses(Search& search, const std::vector<jxBmStress>& stresses)
{
    for (const jxBmStress& member : stresses)
        for (const jxSectionStress& station : member.stress) {
            search.Look(station.values, "member", member.id, "normal stress");
            const double extremes[] = {station.minNegative, station.maxPositive};
            search.Look(extremes, "member", member.id, "normal stress");
        }
}

void LookAtShellsAndBricks(Search& search, const jxCombResult& result)
{
    for (const jxShellStress& shell : result.shell4Stresses) {
        for (int k = 0; k < 5; ++k) {
            // Derived stresses are left out: they are numbers if these are.
            search.Look(shell.F[k], "shell", shell.id, "membrane force", k);
            search.Look(shell.P[k], "shell", shell.id, "moment or shear", k);
        }
        search.Look(shell.fm, "shell", shell.id, "nodal force");
        search.Look(shell.fp, "shell", shell.id, "nodal force");
    }
    for (const jxBrickStress& brick : result.brickStresses) {
        for (int k = 0; k < 9; ++k)
            search.Look(brick.S[k], "brick", brick.id, "stress", k);
        search.Look(brick.f, "brick", brick.id, "nodal force");
    }
}

}  // namespace

std::string UnusableResult(const CjxStruct& model)
{
    Search search;
    for (std::size_t comb = 0; comb < model.combResults.size() && comb < model.combOutcomes.size(); ++comb) {
        // It has no results, and its reason is a finding of its own.
        if (model.combOutcomes[comb].end == CombEnd::Failed)
            continue;
        const jxCombResult& result = model.combResults[comb];
        search.Begin(comb, model);
        LookAtSixValues(search, result.displacements, "node", "displacement");
        LookAtSixValues(search, result.supportReactions, "node", "support reaction");
        for (const jxMultiDofConstraintForce& constraint : result.multiDofConstraintForces)
            search.Look(constraint.force, "multi-DOF constraint", constraint.id, "force");
        LookAtSixValues(search, result.nodalSpringReactions, "node", "spring reaction");
        LookAtSixValues(search, result.coupledSpringReactions, "node", "coupled spring reaction");
        LookAtSixValues(search, result.beamSpringReactions, "member", "line spring reaction");
        LookAtSixValues(search, result.shell4SpringReactions, "shell", "surface spring reaction");
        LookAtMembers(search, result);
        if (!result.beamCurves.empty())
            LookAtMemberStresses(search, model.GetBeamStresses(static_cast<int>(comb)));
        LookAtShellsAndBricks(search, result);
    }
    return search.Text();
}

}  // namespace qvx::app
