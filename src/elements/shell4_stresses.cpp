#include <algorithm>
#include <array>
#include <numeric>
#include <utility>
#include <vector>

#include "elements/progress.h"
#include "elements/shell4_group.h"
#include "model/find_record.h"
#include "tools/parallel.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

// Forces at one corner of one shell, later their mean over the shells that share node and axes.
struct CornerForces
{
    int node;
    std::array<jxPoint, 3> axes;
    std::array<double, 8> values;  ///< F, then P
    int count;
};

bool HaveEqualAxes(const CornerForces& a, const CornerForces& b)
{
    return a.axes[0] == b.axes[0] && a.axes[1] == b.axes[1] && a.axes[2] == b.axes[2];
}

// Axes by which shells at a node are told apart: their own user axes, or the same for all.
std::array<jxPoint, 3> ComparisonAxes(const CjxStruct& model, const jxShell4& shell)
{
    if (model.bAverageStresses != 2)
        return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    QuadCorners corners;
    for (std::size_t i = 0; i < 4; ++i)
        corners[i] = FindById(model.nodes, shell.node[i]).Point();
    return QuadLocalAxes(corners, shell.angle);
}

jxShellStress OwnForces(CjxShell4Group& group, const jxShell4& shell, int comb)
{
    jxShellStress s;
    s.id = shell.id;
    group.ElemStresses(s.F, s.fm, s.P, s.fp, shell, comb);
    return s;
}

CornerForces CornerOf(const jxShellStress& s, const jxShell4& shell, const std::array<jxPoint, 3>& axes, int corner)
{
    CornerForces out{.node = shell.node[corner], .axes = axes, .values = {}, .count = 1};
    std::copy_n(s.F[corner + 1], 3, out.values.begin());
    std::copy_n(s.P[corner + 1], 5, out.values.begin() + 3);
    return out;
}

// The running mean takes the shells of a node in their order, so it repeats bit for bit.
void Fold(CornerForces& mean, const CornerForces& next)
{
    for (std::size_t i = 0; i < mean.values.size(); ++i)
        mean.values[i] = (mean.count * mean.values[i] + next.values[i]) / (mean.count + 1);
    ++mean.count;
}

// Means per node and axes, by node. Values of shells with different axes are never mixed, and those that are mixed are
// not turned to common axes first.
std::vector<CornerForces> Merge(const std::vector<CornerForces>& corners)
{
    std::vector<std::size_t> byNode(corners.size());
    std::iota(byNode.begin(), byNode.end(), std::size_t{0});
    std::stable_sort(byNode.begin(), byNode.end(),
                     [&](std::size_t a, std::size_t b) { return corners[a].node < corners[b].node; });
    std::vector<CornerForces> merged;
    std::size_t firstOfNode = 0;
    for (const std::size_t position : byNode) {
        const CornerForces& corner = corners[position];
        if (!merged.empty() && merged.back().node != corner.node)
            firstOfNode = merged.size();
        const auto group = std::find_if(merged.begin() + static_cast<std::ptrdiff_t>(firstOfNode), merged.end(),
                                        [&](const CornerForces& m) { return HaveEqualAxes(m, corner); });
        if (group == merged.end())
            merged.push_back(corner);
        else
            Fold(*group, corner);
    }
    return merged;
}

// Null for axes that are not numbers: they are equal to none, their own included.
const CornerForces* FindMean(const std::vector<CornerForces>& merged, const CornerForces& corner)
{
    const auto first = std::lower_bound(merged.begin(), merged.end(), corner.node,
                                        [](const CornerForces& m, int node) { return m.node < node; });
    const auto mean = std::find_if(
        first, merged.end(), [&](const CornerForces& m) { return m.node == corner.node && HaveEqualAxes(m, corner); });
    return mean == merged.end() ? nullptr : &*mean;
}

// Corner values become the means; the centre becomes the mean of the four corners.
void TakeMeans(jxShellStress& s, const jxShell4& shell, const std::array<jxPoint, 3>& axes,
               const std::vector<CornerForces>& merged)
{
    std::fill_n(s.F[0], 3, 0.0);
    std::fill_n(s.P[0], 5, 0.0);
    for (int corner = 0; corner < 4; ++corner) {
        const CornerForces own = CornerOf(s, shell, axes, corner);
        const CornerForces* found = FindMean(merged, own);
        const CornerForces& mean = found != nullptr ? *found : own;
        std::copy_n(mean.values.begin(), 3, s.F[corner + 1]);
        std::copy_n(mean.values.begin() + 3, 5, s.P[corner + 1]);
        for (std::size_t i = 0; i < 3; ++i)
            s.F[0][i] += 0.25 * mean.values[i];
        for (std::size_t i = 0; i < 5; ++i)
            s.P[0][i] += 0.25 * mean.values[3 + i];
    }
}

std::vector<jxShellStress> AllOwnForces(CjxStruct& model, CjxShell4Group& group, int comb)
{
    std::vector<jxShellStress> own(model.shell4s.size());
    PercentCounter progress(model, own.size());
    FormAndTakeInOrder(
        own.size(), model.SolverThreads(), [&](std::size_t i) { progress.Show(i + 1); },
        [&](std::size_t i, std::size_t) { own[i] = OwnForces(group, model.shell4s[i], comb); },
        [](std::size_t, std::size_t) {});
    return own;
}

std::vector<CornerForces> AllCorners(const CjxStruct& model, const std::vector<jxShellStress>& own)
{
    std::vector<CornerForces> corners;
    corners.reserve(4 * own.size());
    for (std::size_t i = 0; i < own.size(); ++i) {
        const jxShell4& shell = model.shell4s[i];
        const std::array<jxPoint, 3> axes = ComparisonAxes(model, shell);
        for (int corner = 0; corner < 4; ++corner)
            corners.push_back(CornerOf(own[i], shell, axes, corner));
    }
    return corners;
}

double ThicknessOf(const CjxStruct& model, const jxShell4& shell)
{
    return FindById(model.thicknesses, shell.thickness).t;
}

jxShellStress EmptyRecord(const jxShell4& shell)
{
    jxShellStress s;
    s.id = shell.id;
    return s;
}

}  // namespace

}  // namespace qvx

void CjxStruct::AllShell4Stresses(CjxShell4Group& group, int comb)
{
    std::vector<jxShellStress>& results = combResults[static_cast<std::size_t>(comb)].shell4Stresses;
    results.clear();
    results.reserve(shell4s.size());
    qvx::PercentCounter progress(*this, shell4s.size());
    for (const jxShell4& shell : shell4s) {
        progress.Show(results.size() + 1);
        if (shell.excluded) {
            results.push_back(qvx::EmptyRecord(shell));
            continue;
        }
        results.push_back(qvx::OwnForces(group, shell, comb));
        results.back().GetStresses(qvx::ThicknessOf(*this, shell));
    }
}

void CjxStruct::AverageShellStresses(CjxShell4Group& group, int comb)
{
    std::vector<jxShellStress>& results = combResults[static_cast<std::size_t>(comb)].shell4Stresses;
    results.clear();
    std::vector<jxShellStress> stresses = qvx::AllOwnForces(*this, group, comb);
    const std::vector<qvx::CornerForces> merged = qvx::Merge(qvx::AllCorners(*this, stresses));
    qvx::PercentCounter progress(*this, shell4s.size());
    for (std::size_t i = 0; i < shell4s.size(); ++i) {
        progress.Show(i + 1);
        const jxShell4& shell = shell4s[i];
        jxShellStress& s = stresses[i];
        if (shell.excluded) {
            s = qvx::EmptyRecord(shell);
            continue;
        }
        qvx::TakeMeans(s, shell, qvx::ComparisonAxes(*this, shell), merged);
        s.GetStresses(qvx::ThicknessOf(*this, shell));
    }
    results = std::move(stresses);
}
