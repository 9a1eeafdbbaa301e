#include "solver/settlement.h"

#include <cassert>

#include "elements/stiffness_sink.h"
#include "model/solution_data.h"
#include "solver/penalty_supports.h"
#include "solver/refinement.h"

namespace qvx {

/// Where several supports hold one degree of freedom, v is the mean of their values, which is where they pull it.
template <class Sink>
void KeepSettlement(const CjxStruct& model, jxSolutionData& data, const Sink& stiffness, const double128& penalty)
{
    data.settlement.clear();
    data.settlementForce.clear();
    bool isAnyPrescribed = false;
    ForEachPenalty(model, [&](int, double value) { isAnyPrescribed = isAnyPrescribed || value != 0; });
    if (!isAnyPrescribed)
        return;

    const auto n = static_cast<std::size_t>(model.numberOfEquations);
    std::vector<int> nSupports(n + 1);
    data.settlement.assign(n + 1, double128());
    data.settlementForce.assign(n + 1, double128());
    ForEachPenalty(model, [&](int equation, double value) {
        const auto e = static_cast<std::size_t>(equation);
        ++nSupports[e];
        data.settlement[e] += double128(value);
        data.settlementForce[e] += double128(value) * penalty;
    });
    for (std::size_t e = 1; e <= n; ++e) {
        if (nSupports[e] > 1)
            // The load is p v1 + p v2 on the penalty 2 p: the mean is where the springs leave the structure if it does
            // not resist.
            data.settlement[e] /= double128(nSupports[e]);
    }
    // K v of the structure on top of p v of the supports, whose penalties are not in the store yet: adding them there
    // and taking the product would round the structure's share away beside them.
    stiffness.AddProduct(data.settlement, data.settlementForce);
    AddRoundedProduct(data.rounded, data.settlement, data.settlementForce);
}

template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SkylineSink<double>&, const double128&);
template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SkylineSink<double128>&, const double128&);
template void KeepSettlement(const CjxStruct&, jxSolutionData&, const SparseSink&, const double128&);

void TakeSettlementFromLoad(const jxSolutionData& data, std::vector<double128>& load)
{
    assert((data.settlementForce.empty() || data.settlementForce.size() == load.size()) && "by equation, both");
    for (std::size_t e = 1; e < data.settlementForce.size(); ++e)
        load[e] -= data.settlementForce[e];
}

void AddSettlementToDisplacements(const jxSolutionData& data, std::vector<double128>& displacements)
{
    assert((data.settlement.empty() || data.settlement.size() == displacements.size()) && "by equation, both");
    for (std::size_t e = 1; e < data.settlement.size(); ++e)
        displacements[e] += data.settlement[e];
}

}  // namespace qvx
