#include "solver/solution_findings.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "model/find_record.h"
#include "model/findings.h"
#include "solver/model_size.h"
#include "solver/one_way_law.h"

namespace qvx {

namespace {

std::wstring Formatted(const wchar_t* format, double value)
{
    CString text;
    text.Format(format, value);
    return text.Text();
}

const jxResult6Val& DisplacementOf(const CjxStruct& model, const jxCombResult& result, int node)
{
    assert(result.displacements.size() == model.nodes.size() && "a row per node, in the order of the nodes");
    return result.displacements[static_cast<std::size_t>(NodePosition(model.nodes, node)) - 1];
}

double LargestOf(const std::vector<jxResult6Val>& displacements, int first, int last)
{
    double largest = 0;
    for (const jxResult6Val& u : displacements)
        for (int dof = first; dof <= last; ++dof)
            largest = std::max(largest, std::fabs(u.value[dof]));
    return largest;
}

// Findings about one combination, told by the records that bring them.
class CombinationFindings
{
public:
    CombinationFindings(CjxStruct& model, int comb) : model_(model), comb_(comb) {}

    Finding Make(FindingCode code, std::wstring text = {}) const
    {
        Finding finding = MakeFinding(code, std::move(text));
        finding.combination = comb_;
        return finding;
    }
    void Tell(Finding finding) { model_.findings.Add(std::move(finding)); }
    void TellIfAny(Finding finding)
    {
        if (finding.count > 0)
            Tell(std::move(finding));
    }
    const jxCombResult& Result() const { return model_.combResults[static_cast<std::size_t>(comb_)]; }
    jxCombOutcome& Outcome() { return model_.combOutcomes[static_cast<std::size_t>(comb_)]; }
    bool IsPDelta() const { return model_.loadCombs[static_cast<std::size_t>(comb_)].bPDelta != 0; }
    CjxStruct& Model() { return model_; }
    int Comb() const { return comb_; }

private:
    CjxStruct& model_;
    int comb_;
};

// The linear theory takes sines for angles and the undeformed lengths for the deformed ones: at half a radian, or a tenth
// of the structure, its answer is no longer one of that structure.
void FindLargeMotion(CombinationFindings& out)
{
    constexpr double kLargestRotation = 0.5;
    constexpr double kLargestShare = 0.1;
    // Numbers of a mechanism look ordinary in a list: their size is what gives them away.
    const double rotation = LargestOf(out.Result().displacements, kOX, kOZ);
    const double translation = LargestOf(out.Result().displacements, kX, kZ);
    if (rotation > kLargestRotation)
        out.Tell(out.Make(FindingCode::LargeMotion, L"a node turns by " + Formatted(L"%.3g rad", rotation)));
    const double size = SizeOf(out.Model());
    if (size > 0 && translation > kLargestShare * size)
        out.Tell(out.Make(FindingCode::LargeMotion,
                          L"a node moves by " + Formatted(L"%.3g of the size of the model", translation / size)));
}

// A support is a spring of penaltyFactor times the largest stiffness. Under a structure much softer than its stiffest part
// it gives way visibly.
void FindYieldingSupports(CombinationFindings& out)
{
    constexpr double kLargestShare = 1e-4;
    const CjxStruct& m = out.Model();
    const double largest = LargestOf(out.Result().displacements, kX, kZ);
    Finding finding = out.Make(FindingCode::SupportYields);
    for (const jxSupt& support : m.supports) {
        const jxResult6Val& u = DisplacementOf(m, out.Result(), support.id);
        double way = 0;
        for (int dof = kX; dof <= kZ; ++dof)
            if (support.flag[dof] == L'1')
                // From where it was to be held, which is a prescribed value where there is one.
                way = std::max(way, std::fabs(u.value[dof] - support.value[dof]));
        if (!(way > kLargestShare * largest))
            continue;
        if (finding.count == 0)
            finding.text = L"a support gives way by " + Formatted(L"%.2g of the largest displacement", way / largest);
        finding.About(jxNd::name(), support.id);
    }
    out.TellIfAny(std::move(finding));
}

// The geometric stiffness N / L of a member in one piece moves its ends, not its bow between them. The bow adds the share
// N / N_E to its moments, with N_E = pi^2 E I / L^2 (Timoshenko and Gere, Theory of Elastic Stability, 2nd ed. 1961, 1.11).
void FindCoarsePDelta(CombinationFindings& out)
{
    constexpr double kLargestShare = 0.05;
    constexpr double kPiSquared = 9.869604401089358;
    const CjxStruct& m = out.Model();
    // In a plane frame members can buckle in the plane only, about z; in space about the weaker axis.
    const bool isPlane = m.modelType == Frame2D;
    Finding finding = out.Make(FindingCode::CoarsePDelta);
    for (const jxBm& beam : m.beams) {
        const jxSect& section = FindById(m.sections, beam.section);
        const double I =
            (isPlane ? section.Iz : std::min(section.Iy, section.Iz)) * (m.bStiffnessFactors ? beam.cracking : 1);
        const double E = FindById(m.materials, beam.material).E;
        const double L = calc_distance(FindById(m.nodes, beam.node1).Point(), FindById(m.nodes, beam.node2).Point());
        const double share = -beam.axialForce * L * L / (kPiSquared * E * I);
        if (beam.excluded != 0 || beam.failed != 0 || !(share > kLargestShare))
            continue;
        if (finding.count == 0)
            finding.text = L"members in one piece carry " + Formatted(L"%.2g of their Euler load", share) +
                           L": moments between their ends miss the bow";
        finding.About(jxBm::name(), beam.id);
    }
    out.TellIfAny(std::move(finding));
}

// What let go stays out for the rest of its combination. Forces that went over to others may have moved its ends so that
// it would act again: the state then contradicts the law of the member.
void FindFailedMembers(CombinationFindings& out)
{
    CjxStruct& m = out.Model();
    std::vector<int>& failed = out.Outcome().failedMembers;
    failed.clear();
    const OneWayLaw law(m, out.Comb());
    Finding off = out.Make(FindingCode::OneWayOff, L"one-way members are off");
    Finding acting = out.Make(FindingCode::OneWayWouldAct, L"one-way members are off and would act");
    for (const jxBm& beam : m.beams) {
        if (beam.failed == 0 || beam.excluded != 0)
            continue;
        failed.push_back(beam.id);
        off.About(jxBm::name(), beam.id);
        if (law.Closing(beam) > 1)
            acting.About(jxBm::name(), beam.id);
    }
    out.TellIfAny(std::move(off));
    out.TellIfAny(std::move(acting));
}

void FindFailedSprings(CombinationFindings& out)
{
    const CjxStruct& m = out.Model();
    const OneWayLaw law(m, out.Comb());
    std::vector<jxFailedSpring>& failed = out.Outcome().failedSprings;
    failed.clear();
    Finding off = out.Make(FindingCode::OneWayOff, L"one-way springs are off");
    Finding acting = out.Make(FindingCode::OneWayWouldAct, L"one-way springs are off and would act");
    ForEachSpring(m, [&](const jxSpring& spring, const wchar_t* owner, const std::vector<int>& nodes) {
        for (int dof = 0; dof < kDofCount; ++dof) {
            if (spring.bFailed[dof] == 0 || spring.k[dof] == 0)
                continue;
            failed.push_back({owner, spring.id, dof});
            off.About(owner, spring.id);
            if (law.Closing(spring, dof, nodes) > 1)
                acting.About(owner, spring.id);
        }
    });
    out.TellIfAny(std::move(off));
    out.TellIfAny(std::move(acting));
}

}  // namespace

void FindInSolution(CjxStruct& model, int comb)
{
    const auto c = static_cast<std::size_t>(comb);
    if (comb < 0 || c >= model.combOutcomes.size())
        return;  // of no combination of a run
    assert(model.combResults[c].displacements.size() == model.nodes.size());
    CombinationFindings out(model, comb);
    FindYieldingSupports(out);
    if (out.IsPDelta())
        FindCoarsePDelta(out);
    else
        FindLargeMotion(out);
    if (model.bNonlinear != 0) {
        FindFailedMembers(out);
        FindFailedSprings(out);
    }
}

}  // namespace qvx
