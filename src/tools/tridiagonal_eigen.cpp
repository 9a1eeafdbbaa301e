#include "tools/tridiagonal_eigen.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <numeric>

namespace qvx {
namespace {

// The matrix on its way to a diagonal one, and the product of the rotations that lead there: T = V D Vt throughout.
class Ql
{
public:
    Ql(std::vector<double>& diagonal, std::vector<double>& offDiagonal)
        : n_(diagonal.size()), d_(diagonal), e_(offDiagonal), v_(n_ * n_, 0.0)
    {
        e_.resize(n_, 0.0);
        e_[n_ - 1] = 0;
        for (std::size_t i = 0; i < n_; ++i)
            v_[i * n_ + i] = 1;
    }

    // Each eigenvalue takes one or two passes; what does not settle in 60 is as good as round-off lets it be.
    void Diagonalize()
    {
        constexpr int kMostPasses = 60;
        for (std::size_t first = 0; first < n_; ++first)
            for (int pass = 0; pass < kMostPasses; ++pass) {
                const std::size_t last = EndOfBlock(first);
                if (last == first)
                    break;
                Pass(first, last);
            }
    }
    const std::vector<double>& Vectors() const { return v_; }

private:
    // The first place from `first` on at which the matrix falls apart.
    std::size_t EndOfBlock(std::size_t first) const
    {
        std::size_t last = first;
        while (last + 1 < n_ && std::fabs(e_[last]) > std::numeric_limits<double>::epsilon() *
                                                          (std::fabs(d_[last]) + std::fabs(d_[last + 1])))
            ++last;
        return last;
    }

    // Wilkinson's shift: of the two eigenvalues of the leading 2 x 2 block the one nearer to its first term.
    double Shift(std::size_t first) const
    {
        const double half = (d_[first + 1] - d_[first]) / (2 * e_[first]);
        return d_[first] - e_[first] / (half + std::copysign(std::hypot(half, 1.0), half));
    }

    // Chases the bulge that the shift makes from the end of the block to its start.
    void Pass(std::size_t first, std::size_t last)
    {
        double bulge = d_[last] - Shift(first);
        double s = 1;
        double c = 1;
        double shifted = 0;
        for (std::size_t k = last; k-- > first;) {
            const double f = s * e_[k];
            const double b = c * e_[k];
            const double r = std::hypot(f, bulge);
            e_[k + 1] = r;
            if (r == 0) {  // the matrix falls apart here
                d_[k + 1] -= shifted;
                e_[last] = 0;
                return;
            }
            s = f / r;
            c = bulge / r;
            const double g = d_[k + 1] - shifted;
            const double t = (d_[k] - g) * s + 2 * c * b;
            shifted = s * t;
            d_[k + 1] = g + shifted;
            bulge = c * t - b;
            Rotate(k, c, s);
        }
        d_[first] -= shifted;
        e_[first] = bulge;
        e_[last] = 0;
    }

    void Rotate(std::size_t k, double c, double s)
    {
        double* left = &v_[k * n_];
        double* right = &v_[(k + 1) * n_];
        for (std::size_t i = 0; i < n_; ++i) {
            const double right0 = right[i];
            right[i] = s * left[i] + c * right0;
            left[i] = c * left[i] - s * right0;
        }
    }

    std::size_t n_;
    std::vector<double>& d_;
    std::vector<double>& e_;
    std::vector<double> v_;
};

}  // namespace

TridiagonalEigen EigenOfTridiagonal(std::vector<double> diagonal, std::vector<double> offDiagonal)
{
    const std::size_t n = diagonal.size();
    assert(n >= 1 && offDiagonal.size() + 1 >= n && "one term between every two of the diagonal");
    Ql ql(diagonal, offDiagonal);
    ql.Diagonalize();

    std::vector<std::size_t> order(n);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return diagonal[a] < diagonal[b]; });
    TridiagonalEigen eigen;
    for (const std::size_t k : order) {
        eigen.values.push_back(diagonal[k]);
        const auto vector = ql.Vectors().begin() + static_cast<std::ptrdiff_t>(k * n);
        eigen.vectors.insert(eigen.vectors.end(), vector, vector + static_cast<std::ptrdiff_t>(n));
    }
    return eigen;
}

}  // namespace qvx
