#include "solver/iteration.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "elements/member/beam_group.h"
#include "model/find_record.h"
#include "model/jx_struct.h"

namespace {

void ClearFailures(std::vector<jxSpring>& springs)
{
    for (jxSpring& spring : springs)
        std::fill(std::begin(spring.bFailed), std::end(spring.bFailed), static_cast<unsigned char>(0));
}

/// Tension at both ends counts positive; a load along the member leaves the mean of the two.
double MeanAxialForce(const jxBmEndVMD& ends)
{
    return (ends.end.Fx - ends.start.Fx) * 0.5;
}

/// All axial forces become zero: a stiffness that kept those of a slack brace would hold what nothing holds.
/// @return  1 when one was not zero, else 0
double DropAxialForces(std::vector<jxBm>& beams)
{
    double change = 0;
    for (jxBm& beam : beams) {
        if (beam.axialForce != 0)
            change = 1;
        beam.axialForce = 0;
    }
    return change;
}

/// A spring of flag '1' lets go of positive displacements, one of flag '2' of negative ones.
bool IsOnFreeSide(wchar_t flag, double displacement)
{
    return (flag == L'1' && displacement > 0) || (flag == L'2' && displacement < 0);
}

}  // namespace

/// Every combination starts from the undeformed, complete structure, whatever the one before it did.
void CjxStruct::InitializeComb(int)
{
    // Results must not hang on the order of the combinations: what failed under the one before is whole again.
    for (jxBm& beam : beams) {
        beam.axialForce = 0.0;
        beam.failed = 0;
    }
    ClearFailures(nodalSprings);
    ClearFailures(beamSprings);
    ClearFailures(shell3Springs);
    ClearFailures(shell4Springs);
    for (jxCoupledSpring& spring : coupledSprings)
        std::fill(std::begin(spring.bFailed), std::end(spring.bFailed), static_cast<unsigned char>(0));
    // As if something had just changed: no combination is settled before its first iteration.
    bElementStateChanged = 1;
}

/// Decides on one direction of a one-way spring. A spring that failed stays out for the rest of its combination: the
/// iteration can then not fall into an endless change of the same two states.
bool CjxStruct::IsSpringFailed(jxSpring& spring, int dof, jxResult6Val& displacement, bool bHaveResult)
{
    if (spring.bFailed[dof] == 1)
        return true;
    if (bReactivateOneWay != 0)
        return false;  // states that may come back are changed between the solutions, not here
    const wchar_t flag = spring.flag[dof];
    if (!bHaveResult) {
        if (flag == L'1' || flag == L'2')
            bElementStateChanged = 1;  // not tested yet: a further iteration has to
        return false;
    }
    if (!IsOnFreeSide(flag, displacement.value[dof]))
        return false;
    spring.bFailed[dof] = 1;
    bElementStateChanged = 1;
    CString text;
    text.Format(L" *** spring @ node %d discarded for dof %s", spring.id, kDofNames[dof]);
    LogLine(text);
    return true;
}

/// Refreshes the axial forces of the members from the end forces of the combination.
/// @return  largest change of an axial force over the largest axial force; 0 without members or axial forces
double CjxStruct::GetBeamAverageAxialForce(int comb)
{
    const std::vector<jxBmEndVMD>& endForces = combResults[static_cast<std::size_t>(comb)].beamEndForces;
    const auto axialForce = [&](const jxBm& beam) {
        const jxBmEndVMD* ends = qvx::FindOrNull(endForces, beam.id);
        return ends != nullptr ? MeanAxialForce(*ends) : 0.0;
    };

    double largest = 0;
    for (const jxBm& beam : beams)
        largest = std::max(largest, std::fabs(axialForce(beam)));
    if (largest == 0.0)
        return bConsistentMechanics != 0 ? DropAxialForces(beams) : 0.0;

    double change = 0;
    for (jxBm& beam : beams) {
        const double refreshed = axialForce(beam);
        change = std::max(change, std::fabs(beam.axialForce - refreshed) / largest);
        beam.axialForce = refreshed;
    }
    return change;
}

/// Decides after an iteration whether its result stands, and refreshes what the next one looks at: axial forces for
/// the geometric stiffness, displacements for the one-way springs.
/// @param iteration  from 1
bool CjxStruct::CheckNonlinearStop(int iteration, int comb, CjxBmGroup& bm)
{
    const bool bPDelta = loadCombs[static_cast<std::size_t>(comb)].bPDelta != 0;
    double change = 0;
    if ((bPDelta || bNonlinear) && iteration <= maxNonlinearIterations) {
        AllBeamEndForces(bm, comb);
        change = GetBeamAverageAxialForce(comb);
    }
    AllDisplacement(comb);

    const double percent = change * 100;
    CString text;
    if (iteration >= maxNonlinearIterations) {
        if (bPDelta) {
            text.Format(L"Final p-delta axial force tolerance = %.3f%%", percent);
            list_msg(text, L"NOT SURE");
            LogLine(text);
        }
        list_msg(L"Nonlinear analysis stopped at maximum iterations", L"NOT SURE");
        LogLine(L"Nonlinear analysis stopped at maximum iterations");
        return true;
    }
    if (bPDelta) {
        const bool bSettled = pDeltaTolerance / 100 > change;
        text.Format(bSettled ? L"Final P-Delta axial force tolerance between iterations = %.3f%%"
                             : L"P-Delta axial force tolerance between iterations = %.3f%%",
                    percent);
        list_msg(text, bSettled ? L"OK" : L"NOT OK");
        LogLine(text);
        if (!bSettled || (bNonlinear && iteration < 3))
            return false;
    }
    return bElementStateChanged == 0;
}
