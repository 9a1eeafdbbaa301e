#pragma once

#include <utility>
#include <vector>

/// What a merge joined: (old id, id of the record that stands for it), ascending by old id.
struct jxMergedInfo
{
    std::vector<std::pair<int, int>> nodes;    ///< nearer to each other than the merge tolerance
    std::vector<std::pair<int, int>> members;  ///< between the same nodes
    std::vector<std::pair<int, int>> shell4s;  ///< of the same corners in the same turn
    std::vector<std::pair<int, int>> bricks;   ///< of the same nodes in order
};

/// Node made where two members cross.
struct jxIntersectionNode
{
    int node = 0;     ///< id of the new node
    int member1 = 0;  ///< ids of the members, the earlier in the model first
    int member2 = 0;
};
