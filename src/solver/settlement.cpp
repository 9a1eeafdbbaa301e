#include "solver/settlement.h"

#include "elements/stiffness_sink.h"
#include "model/find_record.h"

namespace qvx {

namespace {

/// Calls visit(equation, prescribed value) for every degree of freedom that a penalty holds.
template <class Visit>
void ForEachPenalty(const CjxStruct& model, Visit&& visit)
{
    for (const jxSupt& support : model.supports) {
        const int position = NodePosition(model.nodes, support.id);
        for (int dof = 0; dof < kDofCount; ++dof) {
            const int e = model.Equation(position, dof);
            if (support.flag[dof] == L'1' && e != 0)
                visit(static_cast<std::size_t>(e), support.value[dof]);
        }
    }
}

}  // namespace

/// Where several supports hold one degree of freedom, v is the mean of their values, which is where they pull it.
template <class Sink>
void KeepSettlement(const CjxStruct& model, jxSolutionData& data, const Sink& stiffness, const double128& penalty)
{
    data.settlement.clear();
    data.settlementForce.clear();
    bool isAnyPrescribed = false;
    ForEachPenalty(model, [&](std::size_t, double value) { isAnyPrescribed = isAnyPrescribed || value != 0; });
    if (!isAnyPrescribed)
        return;

    const auto n = static_cast<std::size_t>(model.numberOfEquations);
    std::vector<int> nSupports(n + 1);
    data.settlement.assign(n + 1, double128());
    data.settlementForce.assign(n + 1, double128());
    ForEachPenalty(model, [&](std::size_t e, double value) {
        ++nSupports[e];
        data.settlement[e] += double128(value);
        data.settlementForce[e] += double128(value) * penalty;
    });
    for (std::size_t e = 1; e <= n; ++e) {
        if (nSupports[e] > 1)
            data.settlement[e] /= double128(nSupports[e]);
    }
    stiffness.AddProduct(data.settlement, data.settlementForce);
}

template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SkylineSink<double>&, const double128&);
template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SkylineSink<double128>&, const double128&);
template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SparseSink&, const double128&);

void TakeSettlementFromLoad(const jxSolutionData& data, std::vector<double128>& load)
{
    for (std::size_t e = 1; e < data.settlementForce.size(); ++e)
        load[e] -= data.settlementForce[e];
}

void AddSettlementToDisplacements(const jxSolutionData& data, std::vector<double128>& displacements)
{
    for (std::size_t e = 1; e < data.settlement.size(); ++e)
        displacements[e] += data.settlement[e];
}

}  // namespace qvx
