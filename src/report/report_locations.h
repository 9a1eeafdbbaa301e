#pragma once

#include <cassert>
#include <cstddef>

#include "report/report_layout.h"

namespace qvx {

/// A location of an element: 0 its centre, from 1 on its nodes.
template <class Stress>
struct LocationRow
{
    const Stress& stress;
    int location;
    int node;  ///< id; of the centre not used
};

template <class Stress>
Cell ElementOf(const LocationRow<Stress>& r)
{
    return Integer(r.stress.id);
}

template <class Stress>
Cell LocationOf(const LocationRow<Stress>& r)
{
    return r.location == 0 ? Word("Center") : AtNode(r.node);
}

/// Writes the rows of an element from location first (0 the centre, 1 its first node) on.
template <class Stress, std::size_t N>
void WriteLocations(TableOf<LocationRow<Stress>>& table, const Stress& stress, const int (&nodes)[N], int first)
{
    assert((first == 0 || first == 1) && "from the centre or from the first node on");
    for (int k = first; k <= static_cast<int>(N); ++k)
        table.Write({stress, k, k == 0 ? 0 : nodes[k - 1]});
}

}  // namespace qvx
