#include "dynamics/subspace_iteration.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <exception>
#include <utility>

#include "dynamics/generalized_jacobi.h"
#include "dynamics/sturm_check.h"
#include "dynamics/subspace_vectors.h"
#include "platform/cstring.h"
#include "tools/parallel.h"

namespace qvx {

namespace {

using std::sqrt;

/// One run of the iteration. Names of quantities are those of the literature: R the vectors, AR and BR the projections.
template <Number Real>
class SubspaceRun
{
public:
    SubspaceRun(EigenSystem& system, const std::vector<Real>& masses, const SubspaceSettings& settings,
                const SubspaceVoice& voice)
        : system_(system), masses_(masses), settings_(settings), voice_(voice), VEC_(settings.vectors),
          EIGV_(static_cast<std::size_t>(settings.vectors) + 1), RTOLV_(EIGV_.size())
    {
        assert(settings.modes >= 1 && settings.modes <= settings.vectors);
    }

    SubspaceResult<Real> Run(const std::vector<Real>& diagonal)
    {
        R_ = StartVectors(diagonal, masses_, settings_.vectors);
        system_.Factorize(0);
        voice_.list(L"START SUBSPACE ITERATION", L"...");
        Iterate();
        voice_.list(L"FINISHED SUBSPACE ITERATION", L"OK");

        voice_.list(L"Calculating error measures", L"...");
        MeasureErrors();
        voice_.list(L"Calculating error measures", L"OK");
        voice_.list(L"Applying STURM SEQUENCE CHECK", L"...");
        if (result_.isConverged)
            CheckSturmSequence();
        R_.resize(static_cast<std::size_t>(settings_.modes));
        result_.eigenvalues.assign(EIGV_.begin(), EIGV_.begin() + settings_.modes + 1);
        result_.shapes = std::move(R_);
        return std::move(result_);
    }

private:
    void Iterate()
    {
        bool isClosing = false;
        for (int number = 1;; ++number) {
            voice_.poll();
            CString text;
            text.Format(L"ITERATION %d", number);
            voice_.status(text);
            IterateOnce(isClosing);
            result_.iterations = number;
            if (isClosing)
                return;
            result_.isConverged = AreModesConverged();
            isClosing = result_.isConverged || number >= settings_.maxIterations;
            if (isClosing && !result_.isConverged)
                voice_.list(L"NO CONVERGENCE IN MAXIMUM NUMBER OF ITERATION PERMITTED", L"WARNING");
        }
    }

    /// Takes the vectors, which are loads, to displacements and to their rotated basis; of the closing iteration that is
    /// what stays, of the others the loads that their masses would exert.
    void IterateOnce(bool isClosing)
    {
        SubspaceVectors<Real> displacements = SolveVectors();
        PackedMatrix<Real> AR = Project(R_, displacements, settings_.threads, voice_.poll);
        for (std::size_t j = 0; j < R_.size(); ++j)
            for (std::size_t i = 1; i < R_[j].size(); ++i)
                R_[j][i] = masses_[i] * displacements[j][i];
        PackedMatrix<Real> BR = Project(displacements, R_, settings_.threads, voice_.poll);
        if (isClosing)
            R_ = std::move(displacements);

        // Never fewer than twelve sweeps: a projection may want more of them than the iteration has steps.
        const double tolerance = std::min(settings_.tolerance * settings_.tolerance, 1e-12);
        JACOBI(AR, BR, VEC_, EIGV_, tolerance, std::max(settings_.maxIterations, 12));
        SortAscending();
        BoundErrors();
        RotateBasis(R_, VEC_, settings_.threads, voice_.poll);
    }

    SubspaceVectors<Real> SolveVectors()
    {
        const std::size_t together = settings_.solvesTogether ? R_.size() : 1;
        SubspaceVectors<Real> displacements(R_.size());
        for (std::size_t first = 0; first < R_.size(); first += together) {
            voice_.poll();
            std::vector<std::vector<double128>> vectors;
            std::vector<std::vector<double128>*> pointers;
            for (std::size_t j = first; j < first + together; ++j)
                vectors.emplace_back(R_[j].begin(), R_[j].end());
            for (std::vector<double128>& vector : vectors)
                pointers.push_back(&vector);
            system_.Solve(pointers);
            for (std::size_t j = 0; j < together; ++j) {
                std::vector<Real>& displacement = displacements[first + j];
                displacement.resize(vectors[j].size());
                std::transform(vectors[j].begin(), vectors[j].end(), displacement.begin(),
                               [](const double128& u) { return static_cast<Real>(u); });
                vectors[j] = {};
            }
        }
        return displacements;
    }

    /// Neighbours change places until all stand in order: equal eigenvalues keep theirs.
    void SortAscending()
    {
        for (bool isSorted = false; !isSorted;) {
            isSorted = true;
            for (int i = 1; i < settings_.vectors; ++i) {
                const auto at = static_cast<std::size_t>(i);
                if (!(EIGV_[at] > EIGV_[at + 1]))
                    continue;
                isSorted = false;
                std::swap(EIGV_[at], EIGV_[at + 1]);
                for (int row = 1; row <= settings_.vectors; ++row)
                    std::swap(VEC_(row, i), VEC_(row, i + 1));
            }
        }
    }

    /// Bound on the relative error of each eigenvalue, from how much of the vector the rotation has left in place. Below
    /// 1e-12 rounding speaks, not convergence.
    void BoundErrors()
    {
        for (int i = 1; i <= settings_.vectors; ++i) {
            Real sum = 0;
            for (int j = 1; j <= settings_.vectors; ++j)
                sum += VEC_(i, j) * VEC_(i, j);
            const auto at = static_cast<std::size_t>(i);
            const Real square = EIGV_[at] * EIGV_[at];
            const Real least = Real(1e-24) * square;
            const Real excess = sum - square;
            RTOLV_[at] = sqrt((excess > least ? excess : least) / square);
        }
    }

    bool AreModesConverged() const
    {
        return std::none_of(RTOLV_.begin() + 1, RTOLV_.begin() + 1 + settings_.modes,
                            [&](const Real& bound) { return bound > Real(settings_.tolerance); });
    }

    void MeasureErrors()
    {
        const auto modes = static_cast<std::size_t>(settings_.modes);
        result_.errorMeasures.assign(modes + 1, 0.0);
        const auto measure = [&](std::size_t mode) { result_.errorMeasures[mode] = ErrorMeasure(mode); };
        const ParallelFault fault = ForEachInParallel(1, modes + 1, settings_.threads, measure);
        if (fault)
            std::rethrow_exception(fault.what);
    }

    double ErrorMeasure(std::size_t mode) const
    {
        const std::vector<Real>& x = R_[mode - 1];
        const std::vector<double128> shape(x.begin(), x.end());
        std::vector<double128> force(shape.size());
        system_.AddProduct(shape, force);
        double128 residual = 0, whole = 0;
        for (std::size_t i = 1; i < shape.size(); ++i) {
            const double128 gap = force[i] - double128(EIGV_[mode]) * double128(masses_[i]) * shape[i];
            residual += gap * gap;
            whole += force[i] * force[i];
        }
        return static_cast<double>(sqrt(residual) / sqrt(whole));
    }

    /// By Sylvester's law of inertia K - s M has as many negative pivots as there are eigenvalues below s.
    void CheckSturmSequence()
    {
        const SturmExpectation<Real> expectation = SCHECK(EIGV_, RTOLV_, settings_.tolerance);
        voice_.list(L"STURM SEQUENCE CHECK", L"OK");
        const auto shift = static_cast<double>(expectation.SHIFT);
        system_.Factorize(shift);
        const int counted = system_.NegativePivots();
        result_.sturm = {.isMade = true, .shift = shift, .expected = expectation.NEI, .counted = counted};
        CString text;
        if (counted == expectation.NEI)
            text.Format(L"WE FOUND THE LOWEST %ld EIGENVALUES", counted);
        else
            text.Format(L"THERE ARE %ld EIGENVALUES MISSING", counted - expectation.NEI);
        voice_.list(text, counted == expectation.NEI ? L"OK" : L"WARNING");
    }

    EigenSystem& system_;
    const std::vector<Real>& masses_;
    const SubspaceSettings& settings_;
    const SubspaceVoice& voice_;
    SubspaceVectors<Real> R_;
    SquareMatrix<Real> VEC_;
    std::vector<Real> EIGV_;
    std::vector<Real> RTOLV_;
    SubspaceResult<Real> result_;
};

}  // namespace

template <Number Real>
SubspaceResult<Real> IterateSubspace(EigenSystem& system, const std::vector<Real>& diagonal,
                                     const std::vector<Real>& masses, const SubspaceSettings& settings,
                                     const SubspaceVoice& voice)
{
    return SubspaceRun<Real>(system, masses, settings, voice).Run(diagonal);
}

template SubspaceResult<double> IterateSubspace(EigenSystem&, const std::vector<double>&, const std::vector<double>&,
                                                const SubspaceSettings&, const SubspaceVoice&);
template SubspaceResult<double128> IterateSubspace(EigenSystem&, const std::vector<double128>&,
                                                   const std::vector<double128>&, const SubspaceSettings&,
                                                   const SubspaceVoice&);

}  // namespace qvx
