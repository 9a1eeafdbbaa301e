#include "dynamics/subspace_vectors.h"

#include <algorithm>
#include <cassert>

#include "tools/jx_exception.h"
#include "tools/parallel.h"

namespace qvx {

namespace {

constexpr std::size_t kBlock = 1024;  // equations whose terms of all vectors stay in the cache

/// Equation with the largest ratio: up to `split` a later equal one is preferred, from there on an earlier one.
template <Number Real>
std::size_t LargestRatio(const std::vector<Real>& ratio, std::size_t split)
{
    Real largest = 0;
    std::size_t place = 1;
    for (std::size_t i = 1; i <= split; ++i)
        if (!(largest > ratio[i])) {
            largest = ratio[i];
            place = i;
        }
    for (std::size_t i = std::max<std::size_t>(1, split); i < ratio.size(); ++i)
        if (ratio[i] > largest) {
            largest = ratio[i];
            place = i;
        }
    return place;
}

/// A sequence in [0, 1) that is the same in every run: the fraction of (3.141592654 + x)^5.
template <Number Real>
void AddPseudoRandom(std::vector<Real>& vector)
{
    Real x = 0.5;
    for (std::size_t k = 1; k < vector.size(); ++k) {
        const Real base = Real(3.141592654) + x;
        const Real power = base * base * base * base * base;
        x = power - Real(static_cast<int>(power));
        vector[k] += x;
    }
}

/// Unrolled by four: the partial sums of a group are added left to right.
template <Number Sum, Number Real>
Sum Dot(const Real* a, const Sum* b, std::size_t n)
{
    Sum sum = 0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4)
        sum += Sum(a[i]) * b[i] + Sum(a[i + 1]) * b[i + 1] + Sum(a[i + 2]) * b[i + 2] + Sum(a[i + 3]) * b[i + 3];
    for (; i < n; ++i)
        sum += Sum(a[i]) * b[i];
    return sum;
}

/// Calls work(item) for all items on the threads, with a poll on this thread between groups of them.
void ForAll(std::size_t count, int threads, const std::function<void()>& poll,
            const std::function<void(std::size_t)>& work)
{
    const std::size_t group = 4 * static_cast<std::size_t>(std::max(1, threads));
    for (std::size_t first = 0; first < count; first += group) {
        poll();
        const ParallelFault fault = ForEachInParallel(first, std::min(count, first + group), threads, work);
        if (fault)
            std::rethrow_exception(fault.what);
    }
}

/// a_i^T b_j for j <= i, the terms of b_j given by term(j, k).
template <Number Sum, Number Real, class Term>
PackedMatrix<Sum> ProjectOn(const SubspaceVectors<Real>& a, int threads, const std::function<void()>& poll, Term&& term)
{
    PackedMatrix<Sum> product(static_cast<int>(a.size()));
    const std::size_t n = a.front().size() - 1;
    ForAll(a.size(), threads, poll, [&](std::size_t j) {
        std::vector<Sum> sums(a.size() - j);
        std::vector<Sum> block(std::min(kBlock, n));
        for (std::size_t first = 1; first <= n; first += kBlock) {
            const std::size_t length = std::min(kBlock, n + 1 - first);
            for (std::size_t k = 0; k < length; ++k)
                block[k] = term(j, first + k);
            for (std::size_t i = j; i < a.size(); ++i)
                sums[i - j] += Dot(&a[i][first], block.data(), length);
        }
        for (std::size_t i = j; i < a.size(); ++i)
            product(static_cast<int>(j) + 1, static_cast<int>(i) + 1) = sums[i - j];
    });
    return product;
}

}  // namespace

template <Number Real>
SubspaceVectors<Real> StartVectors(const std::vector<Real>& diagonal, const std::vector<Real>& masses, int nVectors)
{
    assert(diagonal.size() == masses.size() && nVectors >= 1);
    const std::size_t n = masses.size() - 1;
    std::vector<Real> ratio(n + 1);
    int massDofs = 0;
    for (std::size_t i = 1; i <= n; ++i) {
        assert(!(masses[i] < Real(0)) && "a mass is never negative");
        ratio[i] = masses[i] / diagonal[i];
        massDofs += masses[i] > Real(0) ? 1 : 0;
    }
    if (nVectors > massDofs)
        throw jxException(L"\nNC IS LARGER THAN THE NUMBER OF MASS DEGREES OF FREEDOM");

    SubspaceVectors<Real> vectors(static_cast<std::size_t>(nVectors), std::vector<Real>(n + 1));
    vectors[0] = masses;
    const std::size_t step = n / static_cast<std::size_t>(nVectors);
    std::size_t split = n - step;
    for (std::size_t j = 1; j < vectors.size(); ++j) {
        const std::size_t place = LargestRatio(ratio, split);
        ratio[place] = 0;
        vectors[j][place] = 1;
        split -= step;
    }
    AddPseudoRandom(vectors.back());
    return vectors;
}

template <Number Sum, Number Real>
PackedMatrix<Sum> Project(const SubspaceVectors<Real>& a, const SubspaceVectors<Real>& b, int threads,
                          const std::function<void()>& poll)
{
    assert(a.size() == b.size() && !a.empty());
    return ProjectOn<Sum>(a, threads, poll, [&](std::size_t j, std::size_t k) { return Sum(b[j][k]); });
}

template <Number Sum, Number Real>
PackedMatrix<Sum> ProjectMasses(const std::vector<Real>& masses, const SubspaceVectors<Real>& vectors, int threads,
                                const std::function<void()>& poll)
{
    assert(!vectors.empty() && masses.size() == vectors.front().size());
    return ProjectOn<Sum>(vectors, threads, poll,
                          [&](std::size_t j, std::size_t k) { return Sum(masses[k]) * Sum(vectors[j][k]); });
}

template <Number Real>
void RotateBasis(SubspaceVectors<Real>& vectors, const SquareMatrix<Real>& turn, int threads,
                 const std::function<void()>& poll)
{
    const std::size_t n = vectors.front().size() - 1;
    const std::size_t nVectors = vectors.size();
    ForAll((n + kBlock - 1) / kBlock, threads, poll, [&](std::size_t block) {
        const std::size_t first = 1 + block * kBlock, length = std::min(kBlock, n + 1 - first);
        std::vector<Real> turned(nVectors * length);
        for (std::size_t k = 0; k < nVectors; ++k)
            for (std::size_t l = 0; l < nVectors; ++l) {
                const Real share = turn(static_cast<int>(l) + 1, static_cast<int>(k) + 1);
                for (std::size_t i = 0; i < length; ++i)
                    turned[k * length + i] += vectors[l][first + i] * share;
            }
        for (std::size_t k = 0; k < nVectors; ++k)
            std::copy_n(turned.begin() + static_cast<std::ptrdiff_t>(k * length), length,
                        vectors[k].begin() + static_cast<std::ptrdiff_t>(first));
    });
}

template SubspaceVectors<double> StartVectors(const std::vector<double>&, const std::vector<double>&, int);
template SubspaceVectors<double128> StartVectors(const std::vector<double128>&, const std::vector<double128>&, int);
template PackedMatrix<double> Project(const SubspaceVectors<double>&, const SubspaceVectors<double>&, int,
                                      const std::function<void()>&);
template PackedMatrix<double128> Project(const SubspaceVectors<double>&, const SubspaceVectors<double>&, int,
                                         const std::function<void()>&);
template PackedMatrix<double128> Project(const SubspaceVectors<double128>&, const SubspaceVectors<double128>&, int,
                                         const std::function<void()>&);
template PackedMatrix<double> ProjectMasses(const std::vector<double>&, const SubspaceVectors<double>&, int,
                                            const std::function<void()>&);
template PackedMatrix<double128> ProjectMasses(const std::vector<double>&, const SubspaceVectors<double>&, int,
                                               const std::function<void()>&);
template PackedMatrix<double128> ProjectMasses(const std::vector<double128>&, const SubspaceVectors<double128>&, int,
                                               const std::function<void()>&);
template void RotateBasis(SubspaceVectors<double>&, const SquareMatrix<double>&, int, const std::function<void()>&);
template void RotateBasis(SubspaceVectors<double128>&, const SquareMatrix<double128>&, int,
                          const std::function<void()>&);

}  // namespace qvx
