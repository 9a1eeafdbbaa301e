#pragma once

#include <cassert>
#include <vector>

#include "model/records/result.h"

namespace qvx {

/// Stations of a member curve at which Fx, Fy, Fz, Mx, My, Mz are largest and smallest; the first of equal ones.
struct SegmentalExtremes
{
    // Indices and not values: a cell is marked where it stands, however its number is rounded for printing.
    int largest[6] = {};
    int smallest[6] = {};

    bool Has(int component, int station) const
    {
        assert(component >= 0 && component < 6 && "Fx to Mz");
        return largest[component] == station || smallest[component] == station;
    }
};

SegmentalExtremes get_max_segmental_vmd_info(const std::vector<jxVMD>& curve);

}  // namespace qvx
