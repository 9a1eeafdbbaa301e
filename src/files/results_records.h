#pragma once

#include <string>
#include <vector>

#include "model/fields/result_fields.h"
#include "model/records/comb_result.h"

// What the results file shows of a combination beside the families that the run keeps.

namespace qvx {

/// How a combination went, in words, and the stresses along its members, which are formed when they are shown.
struct CombinationSummary
{
    std::wstring label;
    bool isSolved = false;
    bool isConverged = false;
    std::wstring course;
    int iterations = 0;
    bool isBuckled = false;
    std::wstring failure;
    double loads[3] = {};      ///< sum along X, Y, Z [force]
    double reactions[3] = {};  ///< sum along X, Y, Z [force]
    double imbalance = 0;
    double residual = 0;
    bool isReliable = true;  ///< as far as the findings know
    std::vector<jxBmStress> beamStresses;
};

/// Summary of a combination by its outcome and its results. One that failed is not solved, whatever an iteration left.
CombinationSummary Summarize(const wchar_t* label, const jxCombOutcome& outcome, const jxCombResult& result);

// clang-format off

/// Members of a combination's object, in the order of the file: of its summary and of its jxCombResult.
inline constexpr auto kCombinationFields = std::tuple_cat(
    RecordFields(
        Always("label", &CombinationSummary::label, "of the combination"),
        Always("solved", &CombinationSummary::isSolved, "false when it failed; its families are then empty"),
        Always("converged", &CombinationSummary::isConverged, "false when it failed or its iteration stopped at the maximum"),
        Always("course", &CombinationSummary::course, "linear, converged, stopped at maximum iterations, not converged, no load, failed, not solved"),
        Always("iterations", &CombinationSummary::iterations, "factorisations made for this combination alone"),
        Always("buckled", &CombinationSummary::isBuckled, "a pivot was not positive: the state is past buckling, no ordinary result"),
        WhenUnusual("failure", &CombinationSummary::failure, "reason, where it failed"),
        WhenUnusual("loads", &CombinationSummary::loads, "sum of the loads along X, Y, Z, of those on degrees of freedom that are in the system", In(kForce)),
        WhenUnusual("reactions", &CombinationSummary::reactions, "sum of all that holds the structure along X, Y, Z", In(kForce)),
        WhenUnusual("imbalance", &CombinationSummary::imbalance, "largest sum of loads and reactions over the sum of their sizes"),
        WhenUnusual("residual", &CombinationSummary::residual, "largest force left over at a node, K u - f formed from the elements, over the largest load of a node"),
        WhenUnusual("reliable", &CombinationSummary::isReliable, "false when it is not to be relied on; the findings tell why")),
    kNodeAndMemberFamilies,
    RecordFields(Always("beamStresses", &CombinationSummary::beamStresses, "normal stresses along members")),
    kElementFamilies);

// clang-format on

}  // namespace qvx
