#include "dynamics/subspace_iteration.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <exception>
#include <type_traits>
#include <utility>

#include "dynamics/generalized_jacobi.h"
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
    SubspaceRun(EigenSystem& system, const std::vector<Real>& diagonal, const std::vector<Real>& masses,
                const SubspaceSettings& settings, const SubspaceVoice& voice)
        : system_(system), diagonal_(diagonal), masses_(masses), settings_(settings), voice_(voice),
          VEC_(settings.vectors), EIGV_(static_cast<std::size_t>(settings.vectors) + 1), RTOLV_(EIGV_.size()),
          isSettled_(EIGV_.size())
    {
        assert(settings.modes >= 1 && settings.modes <= settings.vectors);
    }

    SubspaceResult<Real> Run()
    {
        R_ = StartVectors(diagonal_, masses_, settings_.vectors);
        isProjectingMatrices_ = std::is_same_v<Real, double> && IsWholeSpace();
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
    /// As many vectors as masses: the first projection holds every mode there is. Beyond some number of vectors only a
    /// projection that fails in double is worth double128.
    bool IsWholeSpace() const
    {
        constexpr int kMostVectors = 64;
        const auto massDofs = std::count_if(masses_.begin(), masses_.end(), [](const Real& m) { return m > Real(0); });
        return settings_.vectors == massDofs && settings_.vectors > 1 && settings_.vectors <= kMostVectors;
    }

    void Iterate()
    {
        bool isClosing = false;
        for (int number = 1;; ++number) {
            voice_.poll();
            CString text;
            text.Format(L"ITERATION %d", number);
            voice_.status(text);
            result_.iterations = number;
            try {
                IterateOnce(isClosing);
            } catch (const ProjectionFault&) {
                if (isProjectingMatrices_)
                    throw;
                isProjectingMatrices_ = true;
                R_ = StartVectors(diagonal_, masses_, settings_.vectors);  // what is left of the vectors is rounding
                isClosing = false;
                continue;
            }
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
        SolveProjection(displacements);
        if (isClosing)
            R_ = std::move(displacements);
        else
            for (std::size_t j = 0; j < R_.size(); ++j)
                for (std::size_t i = 1; i < R_[j].size(); ++i)
                    R_[j][i] = masses_[i] * displacements[j][i];
        SortAscending();
        const std::vector<Real> before = RTOLV_;
        BoundErrors();
        FindSettledBounds(before);
        RotateBasis(R_, VEC_, settings_.threads, voice_.poll);
    }

    /// Eigenvectors and eigenvalues of the projections of K and M on the displacements.
    void SolveProjection(const SubspaceVectors<Real>& displacements)
    {
        if (isProjectingMatrices_) {
            PackedMatrix<double128> AR = ProjectStiffness(displacements);
            RotateProjections(AR, displacements);
        } else {
            PackedMatrix<Real> AR = Project<Real>(R_, displacements, settings_.threads, voice_.poll);
            RotateProjections(AR, displacements);
        }
    }

    template <Number Sum>
    void RotateProjections(PackedMatrix<Sum>& AR, const SubspaceVectors<Real>& displacements)
    {
        PackedMatrix<Sum> BR = ProjectMasses<Sum>(masses_, displacements, settings_.threads, voice_.poll);
        SquareMatrix<Sum> VEC(settings_.vectors);
        std::vector<Sum> EIGV(EIGV_.size());
        // Never fewer than twelve sweeps: a projection may want more of them than the iteration has steps.
        const double tolerance = std::min(settings_.tolerance * settings_.tolerance, 1e-12);
        JACOBI(AR, BR, VEC, EIGV, tolerance, std::max(settings_.maxIterations, 12));
        for (int i = 1; i <= settings_.vectors; ++i)
            for (int j = 1; j <= settings_.vectors; ++j)
                VEC_(i, j) = static_cast<Real>(VEC(i, j));
        std::transform(EIGV.begin(), EIGV.end(), EIGV_.begin(), [](const Sum& w) { return static_cast<Real>(w); });
    }

    /// x_i . K x_j with the stored matrix, not by way of its factor.
    PackedMatrix<double128> ProjectStiffness(const SubspaceVectors<Real>& x) const
    {
        PackedMatrix<double128> product(settings_.vectors);
        for (std::size_t j = 0; j < x.size(); ++j) {
            voice_.poll();
            std::vector<double128> force(x[j].size());
            system_.AddProduct(std::vector<double128>(x[j].begin(), x[j].end()), force);
            for (std::size_t i = j; i < x.size(); ++i) {
                double128 sum = 0;
                for (std::size_t k = 1; k < force.size(); ++k)
                    sum += double128(x[i][k]) * force[k];
                product(static_cast<int>(j) + 1, static_cast<int>(i) + 1) = sum;
            }
        }
        return product;
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

    /// A bound at the level of rounding is a cast of dice: once it has stopped falling there, it is as low as it gets.
    void FindSettledBounds(const std::vector<Real>& before)
    {
        const Real resolution = std::is_same_v<Real, double> ? 1e-6 : 1e-14;
        for (std::size_t i = 1; i < RTOLV_.size(); ++i)
            isSettled_[i] =
                RTOLV_[i] <= resolution && (isSettled_[i] || (before[i] > Real(0) && RTOLV_[i] > before[i] / Real(2)));
    }

    /// The bounds, with 0 for those that rounding lets fall no further.
    std::vector<Real> SettledBounds() const
    {
        std::vector<Real> bounds = RTOLV_;
        for (std::size_t i = 1; i < bounds.size(); ++i)
            if (isSettled_[i])
                bounds[i] = 0;
        return bounds;
    }

    bool AreModesConverged() const
    {
        const std::vector<Real> bounds = SettledBounds();
        return std::none_of(bounds.begin() + 1, bounds.begin() + 1 + settings_.modes,
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
        const SturmExpectation<Real> expectation = SCHECK(EIGV_, SettledBounds(), settings_.tolerance);
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
        if (counted != expectation.NEI)
            result_.sturm =
                LookCloser(EIGV_, settings_.modes, result_.sturm, [this](double s) { return system_.CountBelow(s); });
    }

    EigenSystem& system_;
    const std::vector<Real>& diagonal_;
    const std::vector<Real>& masses_;
    const SubspaceSettings& settings_;
    const SubspaceVoice& voice_;
    SubspaceVectors<Real> R_;
    SquareMatrix<Real> VEC_;
    std::vector<Real> EIGV_;
    std::vector<Real> RTOLV_;
    /// The projections are formed from K and M themselves and summed in double128, not from the vectors at hand in Real.
    ///
    /// With about as many vectors as there are masses the subspace holds the masses on supports too, which the penalty makes
    /// 1e5 times as stiff or more. Such a vector is left over as the small difference of soft ones, and its terms of the
    /// projections fall with that ratio and its square: in double they drown. The displacements are good enough, and
    /// projections of the matrices as they are stay positive definite whatever the displacements are.
    bool isProjectingMatrices_ = false;
    std::vector<bool> isSettled_;  ///< by root: its bound is at rounding
    SubspaceResult<Real> result_;
};

}  // namespace

template <Number Real>
SubspaceResult<Real> IterateSubspace(EigenSystem& system, const std::vector<Real>& diagonal,
                                     const std::vector<Real>& masses, const SubspaceSettings& settings,
                                     const SubspaceVoice& voice)
{
    return SubspaceRun<Real>(system, diagonal, masses, settings, voice).Run();
}

template SubspaceResult<double> IterateSubspace(EigenSystem&, const std::vector<double>&, const std::vector<double>&,
                                                const SubspaceSettings&, const SubspaceVoice&);
template SubspaceResult<double128> IterateSubspace(EigenSystem&, const std::vector<double128>&,
                                                   const std::vector<double128>&, const SubspaceSettings&,
                                                   const SubspaceVoice&);

}  // namespace qvx
