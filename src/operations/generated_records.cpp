#include "operations/generated_records.h"

#include <cassert>
#include <climits>

#include "platform/cstring.h"
#include "tools/jx_exception.h"

namespace qvx {
namespace {

template <class Record>
int NextId(const std::vector<Record>& records)
{
    assert(records.size() < INT_MAX && "RequireIdsFor stands before the first record");
    assert((records.empty() || records.back().id == static_cast<int>(records.size())) && "ids count up from 1");
    return static_cast<int>(records.size()) + 1;
}

}  // namespace

// Running sums: a step of 0 or a negative one is the caller's, and its positions are what he asked for.
std::vector<double> GridPositions(const std::vector<double>& steps)
{
    std::vector<double> positions = {0.0};
    positions.reserve(steps.size() + 1);
    for (const double step : steps)
        positions.push_back(positions.back() + step);
    return positions;
}

void RequireIdsFor(double nNodes, double nElements)
{
    assert(nNodes >= 0 && nElements >= 0);
    // Counts come as doubles: a product of three sizes may pass every integer type.
    if (nNodes <= INT_MAX && nElements <= INT_MAX)
        return;
    CString text;
    text.Format(L"The structure has %.0f nodes and %.0f elements: ids end at %d", nNodes, nElements, INT_MAX);
    throw jxException(text);
}

// Labels, selection and the rest stay those of a fresh record.
void AddNode(std::vector<jxNd>& nodes, double x, double y, double z)
{
    nodes.push_back({.id = NextId(nodes), .x = x, .y = y, .z = z});
}

// A closed line of one segment ends where it begins: a member there has no length, and no analysis takes it.
void AddMember(std::vector<jxBm>& beams, int node1, int node2)
{
    assert(node1 > 0 && node2 > 0);
    if (node1 != node2)
        beams.push_back({.id = NextId(beams), .node1 = node1, .node2 = node2});
}

void AddFixedSupport(std::vector<jxSupt>& supports, int node)
{
    assert((supports.empty() || supports.back().id < node) && "supports are sorted by node");
    supports.push_back({.id = node, .flag = L"111111"});
}

}  // namespace qvx
