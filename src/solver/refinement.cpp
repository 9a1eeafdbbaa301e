#include "solver/refinement.h"

#include <cassert>
#include <cmath>

namespace qvx {

namespace {

double Work(const std::vector<double128>& force, const std::vector<double128>& motion)
{
    assert(force.size() == motion.size() && "by equation, both");
    double128 work(0);
    for (std::size_t e = 1; e < force.size(); ++e)
        work += force[e] * motion[e];
    return std::fabs(static_cast<double>(work));
}

}  // namespace

/// What is lost is 1e-16 of a term at most: a product in double is right to 1e-32 of the term's.
void AddRoundedProduct(const std::vector<RoundedTerm>& rounded, const std::vector<double128>& v,
                       std::vector<double128>& product)
{
    assert(v.size() == product.size() && "by equation, both");
    std::vector<double> rough(v.size());
    for (std::size_t e = 0; e < v.size(); ++e)
        rough[e] = static_cast<double>(v[e]);
    for (const RoundedTerm& term : rounded) {
        assert(term.row >= 1 && term.row <= term.column && static_cast<std::size_t>(term.column) < v.size());
        const auto row = static_cast<std::size_t>(term.row);
        const auto column = static_cast<std::size_t>(term.column);
        product[row] += double128(term.lost * rough[column]);
        if (row != column)
            product[column] += double128(term.lost * rough[row]);
    }
}

/// Corrections are measured by their energy: it has one unit where translations and rotations have two.
void Refine(const std::vector<RoundedTerm>& rounded, const std::vector<double128>& load, std::vector<double128>& u,
            const std::function<void(const std::vector<double128>& v, std::vector<double128>& product)>& addProduct,
            const std::function<bool(std::vector<double128>& v)>& solve)
{
    constexpr int kMostSteps = 20;     // two are the rule; more where the factor knows a soft motion by one digit
    constexpr double kShrinks = 0.25;  // a correction that is not half of the one before comes from no good factor
    constexpr double kDone = 1e-24;    // a correction of the twelfth digit is the last one
    assert(load.size() == u.size() && "by equation, both");
    // u^t f of the first solution measures the energy of the structure; corrections are judged beside it.
    const double whole = Work(load, u);
    double before = whole;
    for (int step = 0; step < kMostSteps; ++step) {
        std::vector<double128> residual(u.size());
        addProduct(u, residual);
        AddRoundedProduct(rounded, u, residual);
        for (std::size_t e = 1; e < u.size(); ++e)
            residual[e] = load[e] - residual[e];
        std::vector<double128> correction = residual;
        if (!solve(correction))
            return;
        const double energy = Work(residual, correction);
        // Energies go with the square of a correction: a quarter means half. What no longer shrinks is not added, so
        // that the solution is never worse than the one before. A NaN ends here too.
        if (!(energy < kShrinks * before))
            return;
        for (std::size_t e = 1; e < u.size(); ++e)
            u[e] += correction[e];
        if (energy < kDone * whole)
            return;
        before = energy;
    }
}

}  // namespace qvx
