#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>
#include <vector>

#include "elements/stiffness_sink.h"
#include "model/jx_struct.h"
#include "model/solution_data.h"
#include "platform/host_services.h"
#include "solver/instability.h"

using qvx::double128;
using qvx::Number;

namespace {

/// Number type of a store.
template <class Sink>
using StoreOf = std::remove_cvref_t<decltype(std::declval<const Sink&>().Diagonal(1))>;

/// Diagonals before the factorisation, for the digit count after it. Empty in a sparse run, whose solver keeps the
/// factor to itself.
template <Number Real>
std::vector<Real>& OriginalDiagonal(jxSolutionData& data)
{
    if constexpr (std::is_same_v<Real, double>)
        return data.origDiag;
    else
        return data.origDiagQ;
}

/// Largest number of decimal digits that a diagonal lost on its way through the factorisation: the integer part of
/// log10(k_ii / d_i). A pivot that no stable structure has (zero, negative, not a number) tells nothing about digits
/// and is passed over.
template <class Sink>
int DigitsLost(const Sink& factor, const std::vector<StoreOf<Sink>>& original, int nEquations)
{
    using std::log10;
    using Real = StoreOf<Sink>;
    int lost = 0;
    if (original.empty())
        return lost;
    for (int e = 1; e <= nEquations; ++e) {
        const Real ratio = original[static_cast<std::size_t>(e)] / factor.Diagonal(e);
        if (ratio > Real(0) && std::isfinite(static_cast<double>(ratio)))
            lost = std::max(lost, static_cast<int>(log10(ratio)));
    }
    return lost;
}

void AskWhetherToGoOn(CjxStruct& model)
{
    model.list_msg(L"Too many digits are lost during factorization.", L"...");
    if (!model.bInteractive)
        return;
    const unsigned flags = qvx::kMbYesNo | qvx::kMbIconQuestion | qvx::kMbSystemModal;
    if (AfxMessageBox(L"Too many digits are lost during factorization.\nDo you want to continue?", flags) !=
        qvx::kIdYes)
        throw jxException(L"Too many digits are lost during factorization.\nSolution aborted!");
}

}  // namespace

double CjxStruct::ComputeMaxStiffnessTerm(jxSolutionData& data) const
{
    double largest = 0;
    qvx::WithStiffnessSink(data, solverType, [&](const auto& stiffness) {
        for (int e = 1; e <= numberOfEquations; ++e)
            if (stiffness.Diagonal(e) > largest)
                largest = static_cast<double>(stiffness.Diagonal(e));
    });
    return largest;
}

/// Keeps the diagonals for the digit count after the factorisation and names every equation that nothing holds.
void CjxStruct::CheckDiagonalStiffnessTerm(jxSolutionData& data)
{
    bool bStable = true;
    int node = 0;
    int dof = 1;
    qvx::WithStiffnessSink(data, solverType, [&]<class Sink>(const Sink& stiffness) {
        using Real = StoreOf<Sink>;
        std::vector<Real>& original = OriginalDiagonal<Real>(data);
        for (int e = 1; e <= numberOfEquations; ++e) {
            const Real& term = stiffness.Diagonal(e);
            if (!original.empty())
                original[static_cast<std::size_t>(e)] = term;
            if (term > Real(0))
                continue;
            bStable = false;
            FindDof(node, dof, static_cast<int>(nodes.size()), e);
            LogLine(qvx::InstabilityText(node, dof));
        }
    });
    if (!bStable) {
        list_msg(L"Processing boundary conditions", L"NOT OK");
        throw jxException(qvx::kUnstableText);
    }
    list_msg0(L"Processing boundary conditions", L"OK");
}

double CjxStruct::ComputeMaxStiffnessTermSparse(jxSolutionData& data) const
{
    return data.sparseK.Survey().largest;
}

void CjxStruct::CheckDiagonalStiffnessTermSparse(jxSolutionData& data, double*, int*)
{
    CheckDiagonalStiffnessTerm(data);
}

void CjxStruct::CheckSolutionStability(jxSolutionData& data)
{
    int lost = 0;
    qvx::WithStiffnessSink(data, solverType, [&]<class Sink>(const Sink& factor) {
        lost = DigitsLost(factor, OriginalDiagonal<StoreOf<Sink>>(data), numberOfEquations);
    });
    digitsLost = std::max(digitsLost, lost);

    CString text;
    text.Format(L"%d DIGITS ARE LOST DURING FACTORIZATION", lost);
    list_msg0(text, L"OK");
    if (solverType == DoubleSparse)
        return;
    const qvx::DigitLimits limits = qvx::DigitLimitsOf(solverType);
    if (lost < limits.warning)
        return;
    list_msg0(text, L"WARNING");
    LogLine(text);
    if (lost >= limits.question)
        AskWhetherToGoOn(*this);
}
