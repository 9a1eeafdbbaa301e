#include "support/solver_agreement.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/recording_host.h"
#include "support/solver_types.h"

namespace qvx::test {

namespace {

/// Values of one kind, in the order of the results, such as all translations or all moments of reactions.
using Values = std::map<std::string, std::vector<double>>;

void AddSix(Values& values, const std::string& kind, const double (&six)[6])
{
    values[kind + ", translations"].insert(values[kind + ", translations"].end(), six, six + 3);
    values[kind + ", rotations"].insert(values[kind + ", rotations"].end(), six + 3, six + 6);
}

void AddShell(Values& values, const jxShellStress& shell)
{
    for (const auto& F : shell.F)
        values["membrane forces"].insert(values["membrane forces"].end(), std::begin(F), std::end(F));
    for (const auto& P : shell.P) {
        values["plate moments"].insert(values["plate moments"].end(), P, P + 3);
        values["plate shears"].insert(values["plate shears"].end(), P + 3, P + 5);
    }
}

Values AllValues(const jxCombResult& result)
{
    Values values;
    for (const jxResult6Val& u : result.displacements)
        AddSix(values, "displacements", u.value);
    for (const jxResult6Val& r : result.supportReactions)
        AddSix(values, "reactions", r.value);
    for (const jxBmEndVMD& member : result.beamEndForces)
        for (const jxVMD& v : {member.start, member.end})
            AddSix(values, "end forces", {v.Fx, v.Fy, v.Fz, v.Mx, v.My, v.Mz});
    for (const jxShellStress& shell : result.shell4Stresses)
        AddShell(values, shell);
    for (const jxBrickStress& brick : result.brickStresses)
        for (const auto& S : brick.S)
            values["solid stresses"].insert(values["solid stresses"].end(), std::begin(S), std::end(S));
    return values;
}

double Largest(const std::vector<double>& numbers)
{
    double largest = 0;
    for (const double number : numbers)
        largest = std::max(largest, std::fabs(number));
    return largest;
}

bool IsDisplacement(const std::string& kind)
{
    return kind.starts_with("displacements");
}

/// Difference allowed in a kind. What rounding leaves of values that should be 0 measures itself by the other kinds.
double Limit(const Values& values, const std::string& kind, const Agreement& agreement)
{
    double largest = 0;
    for (const auto& [other, numbers] : values)
        if (IsDisplacement(other) == IsDisplacement(kind))
            largest = std::max(largest, Largest(numbers));
    return agreement.relative * Largest(values.at(kind)) + agreement.noise * largest +
           (IsDisplacement(kind) ? 0 : agreement.force);
}

void ExpectSameValues(const Values& actual, const Values& expected, const Agreement& agreement)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [kind, numbers] : expected) {
        const std::vector<double>& others = actual.at(kind);
        ASSERT_EQ(others.size(), numbers.size()) << kind;
        const double limit = Limit(expected, kind, agreement);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            ASSERT_NEAR(others[i], numbers[i], limit) << kind << " " << i;
    }
}

}  // namespace

void ExpectOtherSolversToAgree(const CjxStruct& solved, const Agreement& agreement)
{
    for (const Solver& solver : AllSolvers()) {
        if (!IsInstalled(solver) || (solver.type == solved.solverType && solver.type != DoubleSparse))
            continue;
        SCOPED_TRACE(solver.name);
        RecordingHost host;
        Choose(host, solver);
        CjxStruct model;
        model.copy_input(solved);
        model.penaltyFactor = solved.penaltyFactor;  // of the solver, not of the input
        model.solverType = solver.type;
        ASSERT_EQ(model.ExecuteStatic(), 1);
        ASSERT_EQ(model.combResults.size(), solved.combResults.size());
        for (std::size_t comb = 0; comb < solved.combResults.size(); ++comb)
            ExpectSameValues(AllValues(model.combResults[comb]), AllValues(solved.combResults[comb]), agreement);
    }
}

}  // namespace qvx::test
