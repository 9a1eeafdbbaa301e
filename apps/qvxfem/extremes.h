#pragma once

#include <string>
#include <vector>

#include "model/jx_struct.h"

namespace qvx::app {

/// The largest value of one kind in the results of a combination, and where it stands.
struct Extreme
{
    std::string what;        ///< "bending moment"
    Quantity unit = kForce;  ///< quantity whose unit it has
    double value = 0;
    std::string where;  ///< "member 7, start (Mz)"
};

/// Largest displacement, rotation, end forces, forces along members, shell and brick values of a combination: those
/// of the families that have results, and that are not zero throughout.
std::vector<Extreme> ExtremesOf(const jxCombResult& result);

/// "12 checked, largest ratio 0.873: member 4 (W14X90), combination 2 at 0.5 of its length; 1 above 1" of the members' own
/// sections; empty without steel results.
std::string SteelSummary(const CjxStruct& model);

}  // namespace qvx::app
