#include <vector>

#include "elements/brick/brick_group.h"
#include "elements/combination_terms.h"
#include "elements/member/beam_group.h"
#include "elements/nodal_vector.h"
#include "elements/shell/shell4_group.h"
#include "model/find_record.h"
#include "model/jx_struct.h"

using qvx::double128;

namespace {

/// Sum of a load vector along the translations, for the balance with the reactions.
void SumAppliedForce(const CjxStruct& model, const std::vector<double128>& load, double sum[3])
{
    for (int dof = kX; dof <= kZ; ++dof) {
        double128 total(0);
        for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
            if (const int e = model.Equation(position, dof); e != 0)
                total += load[static_cast<std::size_t>(e)];
        sum[dof] = static_cast<double>(total);
    }
}

}  // namespace

void CjxStruct::ProcessNodalAndElementLoads(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    list_msg(L"Processing nodal loads", L"...");
    ProcessNdLoads(comb);
    list_msg0(L"Processing nodal loads", L"OK");
    if (!beams.empty()) {
        list_msg(L"Processing member loads", L"...");
        bm.ProcessElemLoads(comb);
        list_msg0(L"Processing member loads", L"OK");
    }
    if (!shell4s.empty()) {
        list_msg(L"Processing shell surface loads", L"...");
        sh.ProcessElemLoads(comb);
        list_msg0(L"Processing shell surface loads", L"OK");
    }
    if (!bricks.empty()) {
        list_msg(L"Processing brick loads", L"...");
        br.ProcessElemLoads(comb);
        list_msg0(L"Processing brick loads", L"OK");
    }
    const auto c = static_cast<std::size_t>(comb);
    if (c < combOutcomes.size())
        SumAppliedForce(*this, loadVectors[c], combOutcomes[c].appliedForce);
}

void CjxStruct::ProcessNdLoads(int comb)
{
    const auto load = qvx::NodalVectorOf(*this, comb);
    for (const qvx::CombinationTerm& term : qvx::TermsOf(*this, comb))
        for (const jxNdLoad& nodal : term.loads.ndLoads)
            load.Add(qvx::NodePosition(nodes, nodal.id), nodal.dof, double128(nodal.value) * double128(term.factor));
}

bool CjxStruct::CheckNonzeroLoadVector(double128* load)
{
    for (int e = 1; e <= numberOfEquations; ++e)
        if (!(load[e] == double128(0)))
            return false;
    list_msg(L"Zero load vector", L"WARNING");
    return true;
}
