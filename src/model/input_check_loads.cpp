#include <algorithm>
#include <cassert>

#include "model/input_check.h"

namespace qvx {

namespace {

bool IsOneWay(const jxSpring& spring, int components)
{
    return std::any_of(spring.flag, spring.flag + components, [](wchar_t c) { return c != L'0'; });
}

bool AnyOneWay(const std::vector<jxSpring>& springs, int components)
{
    return std::any_of(springs.begin(), springs.end(),
                       [components](const jxSpring& s) { return IsOneWay(s, components); });
}

/// Coupled springs act both ways always; line and surface springs have three components.
bool HasNonlinearElements(const CjxStruct& m)
{
    return AnyOneWay(m.nodalSprings, 6) || AnyOneWay(m.beamSprings, 3) || AnyOneWay(m.shell3Springs, 3) ||
           AnyOneWay(m.shell4Springs, 3) ||
           std::any_of(m.beams.begin(), m.beams.end(), [](const jxBm& b) { return b.nonlinear != kLinearMember; });
}

void CheckIterationLimit(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.linearCombCount >= static_cast<int>(m.loadCombs.size()) || m.maxNonlinearIterations > 1)
        return;
    // Asked before it is listed: the box stands while the list shows what led to it.
    const bool isAccepted = check.Ask(L"The maximum nonlinear iterations is less than 2.\n"
                                      L"The solution may not converge.\nDo you want to continue?");
    check.List(FindingCode::TooFewIterations, L"Maximum nonlinear iterations is less than 2.");
    check.Log(L"The model contains nonlinear load combinations or elements. However, the maximum nonlinear iterations "
              L"is less than 2. The solution may not be converged.");
    if (!isAccepted)
        check.RefuseAnswer(L"Too few the maximum nonlinear iterations");
}

}  // namespace

void CheckLoads(InputCheck& check)
{
    check.Heading(L"CHECKING LOADS");
    bool isAnyInvalid = false;
    for (const jxCaseLoad& loads : check.model.caseLoads)
        for (const jxLnLoad& load : loads.lnLoads) {
            if (load.distance1 < load.distance2)
                continue;  // a load the wrong way round has no length either, and is left out by the loads of members
            check.Log(L"Member %d: zero line load length", load.id);
            check.About(L"member", load.id);
            isAnyInvalid = true;
        }
    if (isAnyInvalid)
        check.Warn(FindingCode::LineLoadNoLength, L"Invalid line load(s) encountered.");
}

void DeriveNonlinearity(InputCheck& check)
{
    CjxStruct& m = check.model;
    m.bNonlinear = HasNonlinearElements(m) ? 1 : 0;
    if (m.bNonlinear != 0)
        check.Log(L"nonlinear elements are detected in the model.");
    if (m.loadCombs.empty())
        check.Refuse(FindingCode::NoCombination, L"No load combinations found", L"No valid combination defined.");
    const auto nLinear =
        std::count_if(m.loadCombs.begin(), m.loadCombs.end(), [](const jxLoadComb& c) { return c.bPDelta == 0; });
    assert(nLinear <= static_cast<std::ptrdiff_t>(m.loadCombs.size()));
    // One-way elements act in every combination, so none can share the factor of another.
    m.linearCombCount = m.bNonlinear != 0 ? 0 : static_cast<int>(nLinear);
    CheckIterationLimit(check);
}

void CheckDiaphragms(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.diaphragms.empty() || m.bRigidDiaphragms == 0 || m.diaphragmStiffnessFactor >= 1000.0)
        return;
    check.Warn(FindingCode::DiaphragmSoft, L"Diaphragm stiffness factor is not large enough.");
}

void CheckLinksAgainstSolver(InputCheck& check)
{
    const CjxStruct& m = check.model;
    if (m.links.empty() || m.bRigidDiaphragms == 0 || m.solverType == QuadSkyline)
        return;
    // Links are stiffer than what they join by the factor of the diaphragms: that many digits a double solver loses.
    check.AskOrRefuse(L"The model contains rigid diaphragms. The quad-precision solver is recommended (from Run | "
                      L"Analysis Options).\nDo you want to continue the solution?");
    check.Warn(FindingCode::QuadRecommended,
               L"Quad-precision solver is recommended for the model containing rigid diaphragms");
}

}  // namespace qvx
