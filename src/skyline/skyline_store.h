#pragma once

#include <span>
#include <vector>

#include "quad/double128.h"
#include "skyline/skyline_kernel.h"

namespace qvx {

/// product += K v, formed and summed in double128, K by its addresses and terms as in SkylineStore. Columns in whose rows
/// v is zero are not looked at: a vector of few entries costs no more than the columns that they reach.
template <Number Real>
void AddSkylineProduct(std::span<const int> maxa, std::span<const Real> terms, const std::vector<double128>& v,
                       std::vector<double128>& product);

// Memory: one number per stored term, in place of the factor, with no index beside the diagonal addresses. A profile of
// n columns of mean height h in double128 takes 16 n h bytes.

/// A symmetric matrix in skyline form, in one number type: its values and, in the same place, its factor.
///
/// Numbers only: the store knows neither nodes nor users. It looks at arrays that belong to the caller, is as cheap to
/// make as two pointers, and stays valid while the arrays stay in place. Equations count from 1; vectors by equation
/// have n + 1 entries, of which entry 0 is unused. Layout: SkylineView.
template <Number Real>
class SkylineStore
{
public:
    /// @param maxa   addresses of the diagonals 1 .. n and, at n + 1, the end: n + 2 entries, ascending from maxa[1] = 1
    /// @param terms  values by address, maxa[n + 1] entries
    SkylineStore(std::span<const int> maxa, std::span<Real> terms);

    int Equations() const { return static_cast<int>(maxa_.size()) - 2; }
    Real& Diagonal(int equation) const;
    void SetZero() const;

    /// K := K - factor M, M a diagonal of masses by equation.
    void SubtractDiagonal(double factor, std::span<const double128> masses) const;
    /// product += K v; see AddSkylineProduct.
    void AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const;

    /// K := its factor U^T D U; see FactorizeSkyline.
    /// @return  1; 0 when a pivot that is not positive was let pass
    /// @throws int  the equation of the first such pivot, where none may pass
    unsigned Factorize(Pivots pivots, const ColumnHook& atColumn) const;
    /// v := K^-1 v by the factor.
    void Substitute(std::vector<double128>& v) const;

    /// Of a factor: pivots below zero. By Sylvester's law of inertia the eigenvalues of K below zero, and of a factor of
    /// K - s M those of K x = w M x below s (Bathe, Finite Element Procedures, 1996, section 8.2.5).
    int NegativePivots() const;
    /// Of a factor: the largest term of U above the diagonal, in size, in columns 1 .. lastColumn. Terms of many powers
    /// of ten tell of a shift that stands on an eigenvalue of a leading part of the matrix.
    double LargestMultiplier(int lastColumn) const;
    /// Of a factor: decimal digits that the worst diagonal lost on its way to its pivot, the whole ones of
    /// log10(k / d). A pivot that no stable structure has (zero, negative, not a number) tells nothing about digits.
    /// @param diagonals  k by equation, from before the factorization
    int DigitsLost(std::span<const Real> diagonals) const;

private:
    static std::size_t At(int position) { return static_cast<std::size_t>(position); }

    std::span<const int> maxa_;
    std::span<Real> terms_;
};

}  // namespace qvx
