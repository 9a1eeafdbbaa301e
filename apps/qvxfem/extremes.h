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

}  // namespace qvx::app
