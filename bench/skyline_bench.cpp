// Skyline factorization and substitution in double and double128, beside the column-by-column form with BLAS ddot, the
// same form in __float128, and BLAS dgemm. bench/compare_skyline.py prints the ratios.

#include <ctime>
#include <functional>
#include <string>

#include <benchmark/benchmark.h>
#include <cblas.h>

#include "bench/skyline_samples.h"
#include "skyline/skyline_kernel.h"

using namespace qvx;
using namespace qvx::bench;

namespace {

__extension__ using Float128 = __float128;

/// Processor time of this thread: other programs on the machine do not count.
double Seconds(const std::function<void()>& work)
{
    const auto now = [] {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

double Dot(int count, const double* x, const double* y)
{
    return cblas_ddot(count, x, 1, y, 1);
}
Float128 Dot(int count, const Float128* x, const Float128* y)
{
    Float128 sum = 0;
    for (int i = 0; i < count; ++i)
        sum += x[i] * y[i];
    return sum;
}

/// The textbook form: one column after another, one dot product per term.
template <class Real>
void FactorizeByColumns(Real* a, const int* maxa, int n)
{
    const SkylineView<Real> k{a, maxa};
    for (int column = 2; column <= n; ++column) {
        const int top = k.FirstRow(column);
        for (int row = top + 1; row < column; ++row) {
            const int start = std::max(top, k.FirstRow(row));
            if (row > start)
                k(row, column) -= Dot(row - start, &k(row - 1, row), &k(row - 1, column));
        }
        Real sum = 0;
        for (int row = top; row < column; ++row) {
            const Real u = k(row, column) / k(row, row);
            sum += u * k(row, column);
            k(row, column) = u;
        }
        k(column, column) -= sum;
    }
}

template <class Wide, class Real, class Factorize>
void MeasureFactorization(benchmark::State& state, int n, int band, double tolerance, Factorize factorize)
{
    BandMatrix<Real> matrix(n, band);
    BandMatrix<Real> work = matrix;
    factorize(work);
    const double error = FactorError<Wide>(matrix, work);
    if (!(error <= tolerance)) {
        state.SkipWithError(("wrong factors, error " + std::to_string(error)).c_str());
        return;
    }
    for (auto _ : state) {
        work.a = matrix.a;
        state.SetIterationTime(Seconds([&] { factorize(work); }));
    }
    state.counters["ns/product"] = benchmark::Counter(
        matrix.Products() * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["error"] = error;
}

template <Number Real>
void Factorize(benchmark::State& state, int n, int band)
{
    const double tolerance = std::same_as<Real, double> ? 1e-14 : 1e-30;
    MeasureFactorization<double128, Real>(state, n, band, tolerance, [](BandMatrix<Real>& k) {
        FactorizeSkyline(k.a.data(), k.maxa.data(), k.n, Pivots::Positive, [](int) {});
    });
}

template <class Real>
void FactorizeColumnForm(benchmark::State& state, int n, int band)
{
    using Wide = std::conditional_t<std::same_as<Real, double>, double128, Real>;
    MeasureFactorization<Wide, Real>(state, n, band, std::same_as<Real, double> ? 1e-14 : 1e-32,
                                     [](BandMatrix<Real>& k) { FactorizeByColumns(k.a.data(), k.maxa.data(), k.n); });
}

/// One load vector; checked by the residual of the identity K x = v with the factors of a known matrix.
template <Number Real>
void Substitute(benchmark::State& state, int n, int band)
{
    BandMatrix<Real> matrix(n, band);
    BandMatrix<Real> factors = matrix;
    FactorizeSkyline(factors.a.data(), factors.maxa.data(), n, Pivots::Positive, [](int) {});
    std::vector<double128> x(static_cast<std::size_t>(n) + 1), load(x.size()), v;
    for (std::size_t i = 1; i < x.size(); ++i)
        x[i] = double128(static_cast<double>(i % 17) - 8);
    for (int column = 1; column <= n; ++column)
        for (int row = matrix.View().FirstRow(column); row <= column; ++row) {
            load[static_cast<std::size_t>(row)] +=
                double128(matrix.View()(row, column)) * x[static_cast<std::size_t>(column)];
            if (row < column)
                load[static_cast<std::size_t>(column)] +=
                    double128(matrix.View()(row, column)) * x[static_cast<std::size_t>(row)];
        }
    const auto solve = [&] { ReduceAndBackSubstitute(factors.a.data(), factors.maxa.data(), n, v.data()); };
    v = load;
    solve();
    for (std::size_t i = 1; i < x.size(); ++i)
        if (!(std::fabs(static_cast<double>(v[i] - x[i])) <= (std::same_as<Real, double> ? 1e-12 : 1e-28)))
            return state.SkipWithError("wrong solution");
    for (auto _ : state) {
        v = load;
        state.SetIterationTime(Seconds(solve));
    }
    state.counters["ns/product"] =
        benchmark::Counter(static_cast<double>(factors.a.size()) * 2e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Dgemm(benchmark::State& state, int n)
{
    const auto size = static_cast<std::size_t>(n) * static_cast<std::size_t>(n);
    std::vector<double> a(size, 1), b(size, 2), c(size);
    const auto multiply = [&] {
        cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, n, n, 1, a.data(), n, b.data(), n, 0, c.data(), n);
    };
    multiply();
    if (c.front() != 2.0 * n || c.back() != 2.0 * n)
        return state.SkipWithError("wrong product");
    for (auto _ : state)
        state.SetIterationTime(Seconds(multiply));
    state.counters["ns/product"] =
        benchmark::Counter(static_cast<double>(size) * n * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Function, class... Arguments>
void Register(const std::string& name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name.c_str(), function, arguments...)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.05);
}

std::string Size(int n, int band)
{
    return "/n:" + std::to_string(n) + "/band:" + std::to_string(band);
}

struct Case
{
    int n;
    int band;
};

}  // namespace

int main(int argc, char** argv)
{
    for (const auto& [n, band] : {Case{20000, 50}, {10000, 200}, {6000, 400}, {6000, 500}, {5000, 1500}}) {
        Register("SkylineFactorize/double" + Size(n, band), Factorize<double>, n, band);
        Register("SkylineFactorize/ddot" + Size(n, band), FactorizeColumnForm<double>, n, band);
        Register("SkylineFactorize/double128" + Size(n, band), Factorize<double128>, n, band);
        Register("SkylineSubstitute/double" + Size(n, band), Substitute<double>, n, band);
        Register("SkylineSubstitute/double128" + Size(n, band), Substitute<double128>, n, band);
    }
    // About 50 times slower: shorter matrices, compared per product.
    for (const auto& [n, band] : {Case{2000, 50}, {500, 200}, {600, 500}})
        Register("SkylineFactorize/float128" + Size(n, band), FactorizeColumnForm<Float128>, n, band);
    Register("Dgemm/double/n:2000", Dgemm, 2000);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
