#include "skyline/skyline_store.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace qvx {

// A stored term stands for two of the matrix, (row, column) and (column, row); the diagonal for one.
template <Number Real>
void AddSkylineProduct(std::span<const int> maxa, std::span<const Real> terms, const std::vector<double128>& v,
                       std::vector<double128>& product)
{
    assert(v.size() + 1 == maxa.size() && product.size() == v.size());
    const auto at = [](int position) { return static_cast<std::size_t>(position); };
    int lastNonzero = 0;
    for (int column = 1; column < static_cast<int>(v.size()); ++column) {
        if (!(v[at(column)] == double128(0)))
            lastNonzero = column;
        const int diagonal = maxa[at(column)];
        const int top = column + 1 - (maxa[at(column) + 1] - diagonal);
        // All entries of v in the rows of this column are zero, its own too: neither direction of the product has a
        // share.
        if (lastNonzero < top)
            continue;
        for (int row = top; row < column; ++row) {
            const double128 term(terms[at(diagonal + column - row)]);
            product[at(row)] += term * v[at(column)];
            product[at(column)] += term * v[at(row)];
        }
        product[at(column)] += double128(terms[at(diagonal)]) * v[at(column)];
    }
}

template <Number Real>
SkylineStore<Real>::SkylineStore(std::span<const int> maxa, std::span<Real> terms) : maxa_(maxa), terms_(terms)
{
    assert(maxa.size() >= 2 && maxa[1] == 1 && "the first diagonal stands first");
    assert(std::is_sorted(maxa.begin() + 1, maxa.end()) && "diagonals ascend by the height of their columns");
    assert(static_cast<std::size_t>(maxa.back()) <= terms.size() && "every address of the profile has a term");
}

template <Number Real>
Real& SkylineStore<Real>::Diagonal(int equation) const
{
    assert(equation >= 1 && equation <= Equations());
    return terms_[At(maxa_[At(equation)])];
}

template <Number Real>
void SkylineStore<Real>::SetZero() const
{
    std::fill(terms_.begin(), terms_.end(), Real(0));
}

template <Number Real>
void SkylineStore<Real>::SubtractDiagonal(double factor, std::span<const double128> masses) const
{
    assert(masses.size() > At(Equations()) && "one mass per equation, from 1");
    for (int e = 1; e <= Equations(); ++e)
        // The product in double128 and one rounding: a shift is chosen between eigenvalues that may agree in many
        // digits.
        Diagonal(e) -= static_cast<Real>(double128(factor) * masses[At(e)]);
}

template <Number Real>
void SkylineStore<Real>::AddProduct(const std::vector<double128>& v, std::vector<double128>& product) const
{
    AddSkylineProduct<Real>(maxa_, terms_, v, product);
}

template <Number Real>
unsigned SkylineStore<Real>::Factorize(Pivots pivots, const ColumnHook& atColumn) const
{
    return FactorizeSkyline(terms_.data(), maxa_.data(), Equations(), pivots, atColumn);
}

template <Number Real>
void SkylineStore<Real>::Substitute(std::vector<double128>& v) const
{
    assert(v.size() == At(Equations()) + 1);
    ReduceAndBackSubstitute<Real>(terms_.data(), maxa_.data(), Equations(), v.data());
}

template <Number Real>
int SkylineStore<Real>::NegativePivots() const
{
    // Zeros were turned into -1e-16 by a factorization that counts, so that they are found here.
    int count = 0;
    for (int e = 1; e <= Equations(); ++e)
        count += Diagonal(e) < Real(0);
    return count;
}

template <Number Real>
double SkylineStore<Real>::LargestMultiplier(int lastColumn) const
{
    assert(lastColumn <= Equations());
    double largest = 0;
    for (int column = 2; column <= lastColumn; ++column)
        for (int address = maxa_[At(column)] + 1; address < maxa_[At(column) + 1]; ++address)
            largest = std::max(largest, std::fabs(static_cast<double>(terms_[At(address)])));
    return largest;
}

// The logarithm grows with the ratio, so that of the largest one is enough.
template <Number Real>
int SkylineStore<Real>::DigitsLost(std::span<const Real> diagonals) const
{
    using std::log10;
    assert(diagonals.size() > At(Equations()) && "one diagonal per equation, from 1");
    Real worst = 1;
    for (int e = 1; e <= Equations(); ++e) {
        // Negative ratios and NaN compare as not larger, and a pivot of zero gives no finite one: none of them is about
        // digits.
        const Real ratio = diagonals[At(e)] / Diagonal(e);
        if (ratio > worst && std::isfinite(static_cast<double>(ratio)))
            worst = ratio;
    }
    return static_cast<int>(log10(worst));
}

template void AddSkylineProduct<double>(std::span<const int>, std::span<const double>, const std::vector<double128>&,
                                        std::vector<double128>&);
template void AddSkylineProduct<double128>(std::span<const int>, std::span<const double128>,
                                           const std::vector<double128>&, std::vector<double128>&);
template class SkylineStore<double>;
template class SkylineStore<double128>;

}  // namespace qvx
