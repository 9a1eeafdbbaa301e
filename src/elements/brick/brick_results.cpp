// Stresses of all bricks of a combination, per brick or averaged at the nodes.

#include <algorithm>
#include <array>
#include <cassert>
#include <vector>

#include "elements/brick/brick_group.h"
#include "elements/progress.h"
#include "model/find_record.h"
#include "tools/parallel.h"

namespace {

// Running mean of the six stresses at one node. It takes the bricks in their order, so it repeats bit for bit.
struct NodeMean
{
    std::array<double, 6> value{};
    int count = 0;

    void Fold(const double (&stress)[6])
    {
        for (std::size_t i = 0; i < value.size(); ++i)
            value[i] = (count * value[i] + stress[i]) / (count + 1);
        ++count;
    }
};

// Corners take the means of their nodes, the centre the mean of its eight corners.
void TakeMeans(jxBrickStress& record, const std::array<const NodeMean*, 8>& means)
{
    for (std::size_t i = 0; i < 6; ++i) {
        record.S[0][i] = 0;
        for (std::size_t corner = 0; corner < 8; ++corner) {
            record.S[corner + 1][i] = means[corner]->value[i];
            // The centre too: its own value would stand out among means of neighbors, and listings compare the two.
            record.S[0][i] += 0.125 * means[corner]->value[i];
        }
    }
}

jxBrickStress EmptyRecord(const jxBrick& brick)
{
    jxBrickStress record;
    record.id = brick.id;
    return record;
}

}  // namespace

void CjxStruct::AllBrickStresses(CjxBrickGroup& group, int comb)
{
    std::vector<jxBrickStress>& results = combResults[static_cast<std::size_t>(comb)].brickStresses;
    results.clear();
    results.reserve(bricks.size());
    qvx::PercentCounter progress(*this, bricks.size());
    for (const jxBrick& brick : bricks) {
        progress.Show(results.size() + 1);
        results.push_back(EmptyRecord(brick));
        if (!brick.excluded)
            group.GetBrickStresses(results.back().S, results.back().f, brick, comb);
    }
}

// Excluded bricks count in the means of their nodes, but keep zeros themselves.
void CjxStruct::AverageBrickStresses(CjxBrickGroup& group, int comb)
{
    std::vector<jxBrickStress>& results = combResults[static_cast<std::size_t>(comb)].brickStresses;
    results.clear();
    results.resize(bricks.size());
    std::vector<NodeMean> means(nodes.size());
    const auto meanAt = [&](int node) -> NodeMean& {
        return means[static_cast<std::size_t>(qvx::NodePosition(nodes, node) - 1)];
    };
    qvx::PercentCounter progress(*this, bricks.size());
    qvx::FormAndTakeInOrder(
        bricks.size(), solverThreads_, [&](std::size_t i) { progress.Show(i + 1); },
        [&](std::size_t i, std::size_t) {
            results[i] = EmptyRecord(bricks[i]);
            group.GetBrickStresses(results[i].S, results[i].f, bricks[i], comb);
        },
        [&](std::size_t i, std::size_t) {
            for (std::size_t corner = 0; corner < 8; ++corner)
                meanAt(bricks[i].node[corner]).Fold(results[i].S[corner + 1]);
        });
    for (std::size_t i = 0; i < bricks.size(); ++i) {
        if (bricks[i].excluded) {
            results[i] = EmptyRecord(bricks[i]);
            continue;
        }
        std::array<const NodeMean*, 8> corners;
        for (std::size_t corner = 0; corner < 8; ++corner)
            corners[corner] = &meanAt(bricks[i].node[corner]);
        assert(std::all_of(corners.begin(), corners.end(), [](const NodeMean* m) { return m->count > 0; }) &&
               "a brick counts in the means of its own nodes");
        TakeMeans(results[i], corners);
    }
}
