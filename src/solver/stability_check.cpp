#include <algorithm>
#include <cassert>
#include <type_traits>
#include <vector>

#include "elements/stiffness_sink.h"
#include "platform/host_services.h"
#include "skyline/skyline_store.h"
#include "solver/instability.h"
#include "solver/run_findings.h"

namespace {

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
    std::vector<std::pair<int, int>> free;
    int node = 0;
    int dof = 1;
    qvx::WithStiffnessSink(data, solverType, [&](const auto& stiffness) {
        using Real = std::remove_cvref_t<decltype(stiffness.Diagonal(1))>;
        assert(numberOfEquations > 0 && "a run has equations");
        std::vector<Real>& original = qvx::DiagonalsOfSkyline<Real>(data);
        for (int e = 1; e <= numberOfEquations; ++e) {
            const Real& term = stiffness.Diagonal(e);
            if (!original.empty())
                original[static_cast<std::size_t>(e)] = term;
            // Not "<= 0": a term that is no number, of an element without a size, is not held either.
            if (term > Real(0))
                continue;
            FindDof(node, dof, static_cast<int>(nodes.size()), e);
            free.emplace_back(node, dof);
            LogLine(qvx::InstabilityText(node, dof));
        }
    });
    if (!free.empty()) {
        qvx::FindUnstable(*this, free);
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
    if (solverType != DoubleSparse || data.bForceSkyline != 0)  // else the solver keeps the factor to itself
        qvx::WithSkylineNumber(solverType, [&](auto tag) {
            using Real = typename decltype(tag)::Real;
            const qvx::SkylineStore<Real> factor(data.maxa, qvx::TermsOfSkyline<Real>(data));
            // Pivot and diagonal of each equation are compared: the loss is where elimination took nearly all of the
            // diagonal away.
            lost = factor.DigitsLost(qvx::DiagonalsOfSkyline<Real>(data));
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
