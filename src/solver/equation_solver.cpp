#include "solver/equation_solver.h"

#include <algorithm>
#include <cassert>

#include "solver/refinement.h"
#include "solver/settlement.h"

namespace qvx {

namespace {

/// Right-hand sides a call: beyond it a factor is read no more often, and the copies in double grow.
constexpr std::size_t kMostTogether = 32;

}  // namespace

FactorOutcome EquationSolver::Factorize(const FactorWish& wish)
{
    FactorWish complete = wish;
    // Refinement forms residuals with the matrix, so a store with roundings keeps it behind its factor, wished for or
    // not.
    complete.keepsMatrix = wish.keepsMatrix || !data_.rounded.empty();
    isShifted_ = wish.shift.factor != 0;
    return FactorizeMatrix(complete);
}

int EquationSolver::Solve(std::span<std::vector<double128>* const> loads)
{
    assert(!isShifted_ && "the factor of K - s M solves no K u = f");
    for (std::size_t first = 0; first < loads.size(); first += kMostTogether) {
        const std::size_t count = std::min(kMostTogether, loads.size() - first);
        if (const int error = SolveGroup(loads.subspan(first, count)); error != 0)
            return error;
    }
    return 0;
}

int EquationSolver::SolveGroup(std::span<std::vector<double128>* const> loads)
{
    assert(loads.size() <= kMostTogether);
    const bool isRefined = !data_.rounded.empty();
    std::vector<std::vector<double128>> forces;
    for (std::vector<double128>* load : loads) {
        TakeSettlementFromLoad(data_, *load);
        if (isRefined)
            // The right side is overwritten by the solution, and a residual needs it again.
            forces.push_back(*load);
    }
    // One substitution for the whole group; refinement then takes each by itself, as the corrections differ in number.
    int error = Substitute(loads);
    const auto substitute = [&](std::vector<double128>& v) {
        std::vector<double128>* const vectors[] = {&v};
        error = Substitute(vectors);
        return error == 0;
    };
    const auto addProduct = [&](const std::vector<double128>& v, std::vector<double128>& product) {
        AddProduct(v, product);
    };
    for (std::size_t k = 0; k < forces.size() && error == 0; ++k)
        Refine(data_.rounded, forces[k], *loads[k], addProduct, substitute);
    for (std::size_t k = 0; k < loads.size() && error == 0; ++k)
        AddSettlementToDisplacements(data_, *loads[k]);
    return error;
}

}  // namespace qvx
