#pragma once

#include <optional>
#include <span>
#include <vector>

#include "quad/double128.h"

namespace qvx {

/// What an eigenvalue iteration needs of a stiffness K: its factor with and without a shift, solutions and products.
/// Vectors are by equation from 1, entry 0 unused.
class EigenSystem
{
public:
    virtual ~EigenSystem() = default;

    /// Factor of K - shift M. Without a shift K must be positive definite; with one, pivots of either sign are counted.
    /// @throws jxException  when there is no such factor
    virtual void Factorize(double shift) = 0;
    /// Eigenvalues of K x = w M x below a shift, without a word to the user; nothing when K - shift M has no factor worth
    /// counting by.
    virtual std::optional<int> CountBelow(double shift) = 0;
    /// Each vector v becomes K^-1 v. Only behind Factorize(0).
    virtual void Solve(std::span<std::vector<double128>* const> vectors) = 0;
    /// product += K v, K without shift. Several threads may ask at once.
    virtual void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const = 0;
    /// Of the last factor: with a shift, the eigenvalues of K x = w M x below it.
    virtual int NegativePivots() const = 0;
};

}  // namespace qvx
