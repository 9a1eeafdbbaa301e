#pragma once

#include <cmath>
#include <optional>
#include <vector>

#include "dynamics/eigen_system.h"
#include "dynamics/subspace_iteration.h"
#include "tools/jx_exception.h"

namespace qvx::test {

/// A small stiffness kept whole, factorized by Gaussian elimination in double128.
class DenseEigenSystem : public EigenSystem
{
public:
    DenseEigenSystem(std::vector<std::vector<double>> K, std::vector<double> masses)
        : K_(std::move(K)), masses_(std::move(masses))
    {
    }

    void Factorize(double shift) override
    {
        const std::size_t n = K_.size();
        factor_.assign(n, std::vector<double128>(n));
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; j < n; ++j)
                factor_[i][j] =
                    double128(K_[i][j]) - (i == j ? double128(shift) * double128(masses_[i]) : double128(0));
        negativePivots_ = 0;
        for (std::size_t k = 0; k < n; ++k) {
            if (shift == 0 && !(factor_[k][k] > double128(0)))
                throw jxException(L"STIFFNESS MATRIX NOT POSITIVE DEFINITE IN DECOMP");
            negativePivots_ += factor_[k][k] < double128(0) ? 1 : 0;
            for (std::size_t i = k + 1; i < n; ++i) {
                const double128 c = factor_[i][k] / factor_[k][k];
                for (std::size_t j = k; j < n; ++j)
                    factor_[i][j] -= c * factor_[k][j];
                factor_[i][k] = c;
            }
        }
        ++factorizations;
    }

    std::optional<int> CountBelow(double shift) override
    {
        Factorize(shift);
        return NegativePivots();
    }

    void Solve(std::span<std::vector<double128>* const> vectors) override
    {
        const std::size_t n = K_.size();
        for (std::vector<double128>* v : vectors) {
            for (std::size_t i = 0; i < n; ++i)
                for (std::size_t k = 0; k < i; ++k)
                    (*v)[i + 1] -= factor_[i][k] * (*v)[k + 1];
            for (std::size_t i = n; i-- > 0;) {
                for (std::size_t k = i + 1; k < n; ++k)
                    (*v)[i + 1] -= factor_[i][k] * (*v)[k + 1];
                (*v)[i + 1] /= factor_[i][i];
            }
        }
        largestCall = std::max(largestCall, vectors.size());
    }

    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const override
    {
        for (std::size_t i = 0; i < K_.size(); ++i)
            for (std::size_t j = 0; j < K_.size(); ++j)
                product[i + 1] += double128(K_[i][j]) * v[j + 1];
    }

    int NegativePivots() const override { return countToTell.value_or(negativePivots_); }

    template <Number Real>
    std::vector<Real> Diagonal() const
    {
        std::vector<Real> diagonal(K_.size() + 1);
        for (std::size_t i = 0; i < K_.size(); ++i)
            diagonal[i + 1] = K_[i][i];
        return diagonal;
    }
    template <Number Real>
    std::vector<Real> Masses() const
    {
        std::vector<Real> masses(masses_.begin(), masses_.end());
        masses.insert(masses.begin(), Real(0));
        return masses;
    }
    /// ||K x - w M x|| / ||K x||
    template <Number Real>
    double Residual(const std::vector<Real>& x, const Real& eigenvalue) const
    {
        const std::vector<double128> shape(x.begin(), x.end());
        std::vector<double128> force(shape.size());
        AddProduct(shape, force);
        double128 gap = 0, whole = 0;
        for (std::size_t i = 1; i < shape.size(); ++i) {
            const double128 r = force[i] - double128(eigenvalue) * double128(masses_[i - 1]) * shape[i];
            gap += r * r;
            whole += force[i] * force[i];
        }
        return std::sqrt(static_cast<double>(gap / whole));
    }
    /// x^T M y
    template <Number Real>
    double ModalMass(const std::vector<Real>& x, const std::vector<Real>& y) const
    {
        double sum = 0;
        for (std::size_t i = 1; i < x.size(); ++i)
            sum += static_cast<double>(x[i]) * masses_[i - 1] * static_cast<double>(y[i]);
        return sum;
    }

    std::optional<int> countToTell;  ///< of negative pivots, instead of the true one
    int factorizations = 0;
    std::size_t largestCall = 0;  ///< vectors of one Solve

private:
    std::vector<std::vector<double>> K_;
    std::vector<double> masses_;
    std::vector<std::vector<double128>> factor_;
    int negativePivots_ = 0;
};

/// Masses in a row, springs between them, the first spring at the ground.
inline DenseEigenSystem SpringChain(const std::vector<double>& springs, const std::vector<double>& masses)
{
    const std::size_t n = masses.size();
    std::vector<std::vector<double>> K(n, std::vector<double>(n));
    for (std::size_t i = 0; i < n; ++i) {
        K[i][i] += springs[i];
        if (i > 0) {
            K[i - 1][i - 1] += springs[i];
            K[i - 1][i] -= springs[i];
            K[i][i - 1] -= springs[i];
        }
    }
    return {K, masses};
}

}  // namespace qvx::test
