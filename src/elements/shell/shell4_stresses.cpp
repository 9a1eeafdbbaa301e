#include <algorithm>
#include <array>
#include <cassert>
#include <utility>
#include <vector>

#include "elements/progress.h"
#include "elements/shell/shell4_group.h"
#include "model/find_record.h"
#include "tools/large_pages.h"
#include "tools/parallel.h"
#include "tools/quad_axes.h"

namespace qvx {

namespace {

using Axes = std::array<jxPoint, 3>;

// F and P of the corner of a shell, 3 and 5.
using CornerForces = std::array<double, 8>;

// Mean over the corners at a node whose shells have equal axes.
struct CornerMean
{
    Axes axes;
    CornerForces forces;
    int count;
};

struct CornerMeans
{
    std::vector<CornerMean> means;
    std::vector<std::size_t> meanOf;  ///< per corner, four a shell, into means
};

bool AreEqual(const Axes& a, const Axes& b)
{
    // To the last bit: axes of coplanar rectangles of one grid come out the same from the same coordinates, and a
    // tolerance would need an angle up to which two components count as the same.
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

// Axes by which shells at a node are told apart: those of their results, or the same for all.
Axes ComparisonAxes(const CjxStruct& model, const jxShell4& shell)
{
    if (model.bAverageStresses != 2)
        return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    QuadCorners corners;
    for (std::size_t i = 0; i < 4; ++i)
        corners[i] = FindById(model.nodes, shell.node[i]).Point();
    return SquareQuadAxes(corners, shell.angle);
}

jxShellStress OwnForces(CjxShell4Group& group, const jxShell4& shell, int comb)
{
    jxShellStress s;
    s.id = shell.id;
    group.ElemStresses(s.F, s.fm, s.P, s.fp, shell, comb);
    return s;
}

CornerForces ForcesAt(const jxShellStress& s, std::size_t corner)
{
    CornerForces out;
    std::copy_n(s.F[corner + 1], 3, out.begin());
    std::copy_n(s.P[corner + 1], 5, out.begin() + 3);
    return out;
}

// The running mean takes the shells of a node in their order, so it repeats bit for bit.
void Fold(CornerMean& mean, const CornerForces& next)
{
    for (std::size_t i = 0; i < next.size(); ++i)
        mean.forces[i] = (mean.count * mean.forces[i] + next[i]) / (mean.count + 1);
    ++mean.count;
    assert(mean.count >= 2 && "the first corner starts a mean");
}

// Corners, four a shell, by node; those of a node stay in their order.
std::vector<std::pair<int, std::size_t>> CornersByNode(const std::vector<jxShell4>& shells)
{
    std::vector<std::pair<int, std::size_t>> corners;
    corners.reserve(4 * shells.size());
    for (const jxShell4& shell : shells)
        for (const int node : shell.node)
            corners.emplace_back(node, corners.size());
    // Pairs compare by the node first and by the place second, so that equal nodes keep the order of the shells without
    // a stable sort.
    std::sort(corners.begin(), corners.end());
    return corners;
}

// Means per node and axes. Values of shells with different axes are never mixed, and those that are mixed are not turned
// to common axes first. Axes that are not numbers are equal to none: such a corner is its own mean.
CornerMeans MeansOf(const CjxStruct& model, const std::vector<jxShellStress>& stresses)
{
    assert(stresses.size() == model.shell4s.size() && "one record per shell, in their order");
    std::vector<Axes> axes;
    axes.reserve(stresses.size());
    for (const jxShell4& shell : model.shell4s)
        axes.push_back(ComparisonAxes(model, shell));
    CornerMeans out;
    ReserveLarge(out.means, model.nodes.size());
    out.meanOf.resize(4 * stresses.size());
    std::size_t firstOfNode = 0;
    int lastNode = 0;
    for (const auto& [node, corner] : CornersByNode(model.shell4s)) {
        if (node != lastNode)
            firstOfNode = out.means.size();
        lastNode = node;
        const Axes& own = axes[corner / 4];
        const auto mean = std::find_if(out.means.begin() + static_cast<std::ptrdiff_t>(firstOfNode), out.means.end(),
                                       [&](const CornerMean& m) { return AreEqual(m.axes, own); });
        out.meanOf[corner] = static_cast<std::size_t>(mean - out.means.begin());
        const CornerForces forces = ForcesAt(stresses[corner / 4], corner % 4);
        if (mean == out.means.end())
            out.means.push_back({.axes = own, .forces = forces, .count = 1});
        else
            Fold(*mean, forces);
    }
    return out;
}

// Corner values become the means; the centre becomes the mean of the four corners.
void TakeMeans(jxShellStress& s, const CornerMeans& corners, std::size_t shell)
{
    std::fill_n(s.F[0], 3, 0.0);
    std::fill_n(s.P[0], 5, 0.0);
    assert(4 * shell + 3 < corners.meanOf.size() && "four corners a shell");
    for (std::size_t corner = 0; corner < 4; ++corner) {
        const CornerForces& mean = corners.means[corners.meanOf[4 * shell + corner]].forces;
        std::copy_n(mean.begin(), 3, s.F[corner + 1]);
        std::copy_n(mean.begin() + 3, 5, s.P[corner + 1]);
        for (std::size_t i = 0; i < 3; ++i)
            s.F[0][i] += 0.25 * mean[i];
        for (std::size_t i = 0; i < 5; ++i)
            s.P[0][i] += 0.25 * mean[3 + i];
    }
}

// One pass over the shells with its own percentage: set(i) writes what belongs to shell i, on the threads of the solver.
template <class Set>
void ForEachShell(CjxStruct& model, const Set& set)
{
    PercentCounter progress(model, model.shell4s.size());
    FormAndTakeInOrder(
        model.shell4s.size(), model.SolverThreads(), [&](std::size_t i) { progress.Show(i + 1); },
        [&](std::size_t i, std::size_t) { set(i); }, [](std::size_t, std::size_t) {});
}

std::vector<jxShellStress> AllOwnForces(CjxStruct& model, CjxShell4Group& group, int comb)
{
    std::vector<jxShellStress> own;
    ReserveLarge(own, model.shell4s.size());
    own.resize(model.shell4s.size());
    ForEachShell(model, [&](std::size_t i) { own[i] = OwnForces(group, model.shell4s[i], comb); });
    return own;
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
    std::vector<jxShellStress> stresses;
    qvx::ReserveLarge(stresses, shell4s.size());
    stresses.resize(shell4s.size());
    qvx::ForEachShell(*this, [&](std::size_t i) {
        const jxShell4& shell = shell4s[i];
        if (shell.excluded) {
            stresses[i] = qvx::EmptyRecord(shell);
            return;
        }
        stresses[i] = qvx::OwnForces(group, shell, comb);
        stresses[i].GetStresses(qvx::ThicknessOf(*this, shell));
    });
    results = std::move(stresses);
}

void CjxStruct::AverageShellStresses(CjxShell4Group& group, int comb)
{
    std::vector<jxShellStress>& results = combResults[static_cast<std::size_t>(comb)].shell4Stresses;
    results.clear();
    std::vector<jxShellStress> stresses = qvx::AllOwnForces(*this, group, comb);
    const qvx::CornerMeans means = qvx::MeansOf(*this, stresses);
    qvx::ForEachShell(*this, [&](std::size_t i) {
        const jxShell4& shell = shell4s[i];
        if (shell.excluded) {
            stresses[i] = qvx::EmptyRecord(shell);
            return;
        }
        qvx::TakeMeans(stresses[i], means, i);
        // Principal values follow from the mean components. The mean of principal values would be of different
        // directions.
        stresses[i].GetStresses(qvx::ThicknessOf(*this, shell));
    });
    results = std::move(stresses);
}
