#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "model/jx_struct.h"
#include "solver/one_way_law.h"

namespace qvx {

/// The states of all one-way members and springs of a combination, which go off and come back until they satisfy their law
/// (bReactivateOneWay).
///
/// With pin-ended members the law is the condition of the minimum of a convex energy, and a consistent state exists where
/// the structure finds equilibrium. All states that contradict are changed at once, which is Newton's method on that
/// energy and solves moment frames in a few steps. Where what is left is unstable, fewer go off: half of them, the worst
/// first, down to one; then one goes off for one that comes back. A set of states that turns up again makes it change one
/// at a time, the worst first, and then the first in order, which does not cycle where each member alone is elastically
/// held (Murty, Linear Complementarity, Linear and Nonlinear Programming (1988), section 3.2).
class OneWayStates
{
public:
    enum class Verdict {
        Hold,     ///< no state contradicts the law
        Changed,  ///< another solution is needed
        Repeat,   ///< a set of states turned up again: there is no end
    };

    /// All are on. The model is that of a run, its records stay where they are.
    explicit OneWayStates(CjxStruct& model);

    /// Judges the states by the answer of the combination and changes those that contradict.
    /// @param isSettled  axial forces are those of the stiffness; before that only a change of all at once makes sense
    Verdict Judge(int comb, bool isSettled);
    /// The states in force leave the structure unstable: changes fewer of those that the last answer contradicted.
    /// @return  false when nothing is left to try
    bool Retreat();

private:
    using States = std::vector<bool>;
    enum class Rule { AllAtOnce, Worst, First };

    // A one-way member, or one direction of a spring.
    struct Link
    {
        jxBm* beam;
        jxSpring* spring;
        int dof;
        std::vector<int> nodes;
    };
    // What the last answer says of a link: how far it is on the wrong side (above 1: it contradicts).
    struct Offence
    {
        std::size_t link;
        double size;
    };

    static bool IsOff(const Link& link);
    static void Set(const Link& link, bool isOff);
    States Current() const;
    void Apply(const States& states);
    double SizeOf(const Link& link, const OneWayLaw& law) const;
    States Changed(const std::vector<std::size_t>& links) const;
    std::vector<std::size_t> ChangesByRule() const;
    void PlanRetreats(const std::vector<Offence>& all);

    const CjxStruct* model_;
    std::vector<Link> links_;
    Rule rule_ = Rule::AllAtOnce;
    States answered_;                ///< the states of the last answer
    std::vector<Offence> offences_;  ///< of the last answer, the worst first
    std::vector<States> retreats_;   ///< to be tried in turn, the last first
    std::set<States> seen_;          ///< states that were answered under this rule
};

}  // namespace qvx
