#pragma once

#include <cmath>
#include <random>

#include "elements/member/beam_group.h"
#include "support/static_model.h"
#include "tools/jx_point.h"

namespace qvx::test {

/// Attitude of a model in space: a rotation about an axis through the origin.
struct Attitude
{
    jxPoint axis{0, 0, 1};
    double angle = 0;

    jxPoint Turn(const jxPoint& p) const { return angle == 0 ? p : arbitrary_rotate(p, angle, axis); }
};

/// A random frame in space, the same for the same seed, in any attitude.
///
/// A chain of nodes with braces, three of them held in all directions; forces and moments at nodes, forces given in
/// global axes and all kinds of loads in local axes along the members. In a turned frame each member gets the section
/// angle that brings its local axes along.
class RandomFrame
{
public:
    explicit RandomFrame(unsigned seed, Attitude attitude = {}) : random_(seed), attitude_(attitude) {}

    /// @param support  flag of the three held nodes: '1' by penalty, '2' without equation
    void Build(StaticModel& m, int nNodes, const wchar_t* support)
    {
        m.model.bShearDeformation = 1;
        const int soft = m.Section({.A = 8, .Ay = 3, .Az = 4, .Iz = 90, .Iy = 40, .J = 30});
        std::vector<jxPoint> points;
        for (int i = 0; i < nNodes; ++i) {
            points.push_back(jxPoint{60.0 * i, 0, 0} + Vector(40));
            m.Node(attitude_.Turn(points.back()));
        }
        for (int i = 1; i <= nNodes; ++i) {
            for (int step = 1; step <= 3 && i + step <= nNodes; ++step) {
                if (step == 3 && Chance(0.5))
                    continue;
                jxBm& beam = m.Beam(m.Member(i, i + step, Chance(0.5) ? 1 : soft));
                beam.angle = TurnedAngle(points[At(i)], points[At(i + step)], Number(-3, 3));
            }
        }
        for (const int node : {1, 2, nNodes})
            m.Support(node, support);
    }

    void Load(StaticModel& m, std::size_t loadCase)
    {
        for (const jxNd& node : m.model.nodes) {
            LoadNode(m, node.id, kX, Vector(5), loadCase);
            LoadNode(m, node.id, kOX, Vector(150), loadCase);
        }
        for (const jxBm& beam : m.model.beams) {
            m.PointLoad(beam.id, kLocal, static_cast<int>(Number(0, 5.99)), Number(-5, 5), Number(0, 1), loadCase);
            m.LineLoad(beam.id, kLocal, static_cast<int>(Number(0, 3.99)), Number(-1, 1), Number(-1, 1), Number(0, 0.4),
                       Number(0.6, 1), loadCase);
            const jxPoint w = attitude_.Turn(Vector(0.1));
            m.LineLoad(beam.id, kGlobal, kX, w.x, w.x, 0.2, 1, loadCase);
            m.LineLoad(beam.id, kGlobal, kY, w.y, w.y, 0.2, 1, loadCase);
            m.LineLoad(beam.id, kGlobal, kZ, w.z, w.z, 0.2, 1, loadCase);
        }
    }

    double Number(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
    bool Chance(double share) { return Number(0, 1) < share; }
    jxPoint Vector(double size)
    {
        const double x = Number(-size, size);
        const double y = Number(-size, size);
        return {x, y, Number(-size, size)};
    }

private:
    static std::size_t At(int position) { return static_cast<std::size_t>(position) - 1; }

    /// Forces (first dof kX) or moments (first dof kOX) at a node, turned with the frame.
    void LoadNode(StaticModel& m, int node, int firstDof, const jxPoint& vector, std::size_t loadCase)
    {
        const jxPoint v = attitude_.Turn(vector);
        m.NodalLoad(node, firstDof, v.x, loadCase);
        m.NodalLoad(node, firstDof + 1, v.y, loadCase);
        m.NodalLoad(node, firstDof + 2, v.z, loadCase);
    }

    /// Section angle that gives the turned member the turned local axes of the member between start and end.
    double TurnedAngle(const jxPoint& start, const jxPoint& end, double angle) const
    {
        jxPoint axes[3];
        CjxBmGroup::GetLocalAxis(axes, start, end, angle);
        const jxPoint y = attitude_.Turn(axes[1]);
        CjxBmGroup::GetLocalAxis(axes, attitude_.Turn(start), attitude_.Turn(end), 0);
        return std::atan2(dot(y, axes[2]), dot(y, axes[1]));
    }

    std::mt19937 random_;
    Attitude attitude_;
};

}  // namespace qvx::test
