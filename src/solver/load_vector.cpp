#include "solver/load_vector.h"

#include <algorithm>
#include <cassert>
#include <vector>

#include "elements/combination_terms.h"
#include "elements/nodal_vector.h"
#include "model/find_record.h"

using qvx::double128;

namespace {

enum class LoadFamily { Nodal, Member, Shell, Brick };

void AddLoads(CjxStruct& model, LoadFamily family, int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    switch (family) {
    case LoadFamily::Nodal:
        return model.ProcessNdLoads(comb);
    case LoadFamily::Member:
        return bm.ProcessElemLoads(comb);
    case LoadFamily::Shell:
        return sh.ProcessElemLoads(comb);
    case LoadFamily::Brick:
        return br.ProcessElemLoads(comb);
    }
}

/// Sum of a load vector along the translations, for the balance with the reactions.
void SumAppliedForce(const CjxStruct& model, const std::vector<double128>& load, double sum[3])
{
    for (int dof = kX; dof <= kZ; ++dof) {
        assert(load.size() == static_cast<std::size_t>(model.numberOfEquations) + 1 &&
               "one force per equation, from 1");
        // In double128, so that the sum of a hundred thousand nodal forces has no rounding of its own to be told from a
        // real difference between loads and reactions.
        double128 total(0);
        for (int position = 1; position <= static_cast<int>(model.nodes.size()); ++position)
            if (const int e = model.Equation(position, dof); e != 0)
                total += load[static_cast<std::size_t>(e)];
        sum[dof] = static_cast<double>(total);
    }
}

void SumAppliedForce(CjxStruct& model, int comb)
{
    const auto c = static_cast<std::size_t>(comb);
    if (c < model.combOutcomes.size())
        SumAppliedForce(model, model.loadVectors[c], model.combOutcomes[c].appliedForce);
}

/// Calls step(text, family) for each family of loads that the model may carry, in the order in which they are added.
template <class Step>
void ForEachLoadFamily(const CjxStruct& model, Step&& step)
{
    step(L"Processing nodal loads", LoadFamily::Nodal);
    if (!model.beams.empty())
        step(L"Processing member loads", LoadFamily::Member);
    if (!model.shell4s.empty())
        step(L"Processing shell surface loads", LoadFamily::Shell);
    if (!model.bricks.empty())
        step(L"Processing brick loads", LoadFamily::Brick);
}

}  // namespace

void CjxStruct::ProcessNodalAndElementLoads(int comb, CjxBmGroup& bm, CjxShell4Group& sh, CjxBrickGroup& br)
{
    ForEachLoadFamily(*this, [&](const wchar_t* text, LoadFamily family) {
        list_msg(text, L"...");
        AddLoads(*this, family, comb, bm, sh, br);
        list_msg0(text, L"OK");
    });
    SumAppliedForce(*this, comb);
}

void qvx::FormLoadVector(CjxStruct& model, int comb, ElementGroups& groups)
{
    ForEachLoadFamily(model, [&](const wchar_t*, LoadFamily family) {
        AddLoads(model, family, comb, groups.members, groups.shells, groups.bricks);
    });
    SumAppliedForce(model, comb);
}

void qvx::TellLoadVector(CjxStruct& model)
{
    ForEachLoadFamily(model, [&](const wchar_t* text, LoadFamily) {
        model.list_msg(text, L"...");
        model.list_msg0(text, L"OK");
    });
}

bool qvx::IsZeroLoad(const std::vector<double128>& load)
{
    assert(!load.empty() && "entry 0 stands, and is no force");
    return std::all_of(load.begin() + 1, load.end(), [](const double128& force) { return force == double128(0); });
}

void CjxStruct::ProcessNdLoads(int comb)
{
    const auto load = qvx::NodalVectorOf(*this, comb);
    for (const qvx::CombinationTerm& term : qvx::TermsOf(*this, comb))
        for (const jxNdLoad& nodal : term.loads.ndLoads)
            // Value times factor in double128: a load vector is a sum of products, and the solvers round it once if
            // they do.
            load.Add(qvx::NodePosition(nodes, nodal.id), nodal.dof, double128(nodal.value) * double128(term.factor));
}

bool CjxStruct::CheckNonzeroLoadVector(double128* load)
{
    for (int e = 1; e <= numberOfEquations; ++e)
        if (!(load[e] == double128(0)))
            return false;
    list_msg(qvx::kZeroLoad, L"WARNING");
    return true;
}
