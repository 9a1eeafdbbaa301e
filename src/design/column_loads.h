#pragma once

#include <vector>

#include "design/concrete_member.h"
#include "rc/interaction_surface.h"

namespace qvx {

/// What one combination asks of a column, the same for every candidate: stations with their magnified loads, or the news
/// that the column is unstable.
struct ColumnDemand
{
    struct Station
    {
        double distance = 0;
        double P = 0;   ///< compression positive [kip]
        double M3 = 0;  ///< after the minimum moment, before the magnification [kip-ft]
        double M2 = 0;
        jxSectionLoad load;  ///< magnified
    };

    int comb = -1;
    double betaD = 0;
    double Cm3 = 1;
    double Cm2 = 1;
    double delta3 = 1;
    double delta2 = 1;
    bool isUnstable = false;
    std::vector<Station> stations;  ///< of an unstable column the first one alone, with the average axial force
};

/// Slenderness and loads of one column under all concrete combinations, in their order. Combinations without a curve are
/// passed over.
std::vector<ColumnDemand> ColumnDemands(const CjxStruct& model, const ConcreteMember& member,
                                        const jxColRcCrit& criterion);

}  // namespace qvx
