#pragma once

#include <cmath>

#include "tools/fixed_matrix.h"

// What every element promises, as predicates for asserts. They are cheap beside the forming of an element and are called
// from asserts only, so that a release build has none of them. All let numbers pass that are no numbers: an element of
// no size is told by the factorisation with its node and direction, not by an assert.

namespace qvx {

/// Whether the rows are unit vectors square to each other and right-handed.
/// @param tolerance  of the products of two rows; axes of members count as square within 1e-6 (see GetLocalAxis)
template <Number Real>
bool IsRotation(const Matrix3<Real>& c, double tolerance = 1e-6)
{
    double row[3][3];
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k)
            row[i][k] = static_cast<double>(c(i, k));
    for (int i = 0; i < 3; ++i)
        for (int j = i; j < 3; ++j) {
            const double product = row[i][0] * row[j][0] + row[i][1] * row[j][1] + row[i][2] * row[j][2];
            if (std::fabs(product - (i == j ? 1 : 0)) > tolerance)
                return false;
        }
    const double volume = row[0][0] * (row[1][1] * row[2][2] - row[1][2] * row[2][1]) +
                          row[0][1] * (row[1][2] * row[2][0] - row[1][0] * row[2][2]) +
                          row[0][2] * (row[1][0] * row[2][1] - row[1][1] * row[2][0]);
    return !(volume < 0);
}

/// Whether a stiffness is symmetric to the last bit, as it is once its upper triangle was mirrored.
template <Number Real, int N>
bool IsSymmetric(const FixedMatrix<Real, N, N>& k)
{
    for (int i = 1; i < N; ++i)
        for (int j = 0; j < i; ++j) {
            const auto lower = static_cast<double>(k(i, j));
            const auto upper = static_cast<double>(k(j, i));
            if (lower < upper || lower > upper)
                return false;
        }
    return true;
}

/// Whether a motion strains nothing: K u is round-off beside the largest term of K times the largest of u.
template <Number Real, int N>
bool StrainsNothing(const FixedMatrix<Real, N, N>& k, const FixedVector<Real, N>& u)
{
    constexpr double kRoundOff = 1e-7;  // distorted elements cancel more digits than good ones
    double largestTerm = 0, largestMotion = 0, largestForce = 0;
    for (int i = 0; i < N; ++i) {
        Real force(0);
        for (int j = 0; j < N; ++j) {
            force += k(i, j) * u[static_cast<std::size_t>(j)];
            largestTerm = std::fmax(largestTerm, std::fabs(static_cast<double>(k(i, j))));
        }
        largestForce = std::fmax(largestForce, std::fabs(static_cast<double>(force)));
        largestMotion = std::fmax(largestMotion, std::fabs(static_cast<double>(u[static_cast<std::size_t>(i)])));
    }
    return !(largestForce > kRoundOff * largestTerm * largestMotion);
}

/// Whether forces of nDofs directions per node are in balance along each of the first three: thermal forces are.
template <Number Real, std::size_t N>
bool IsBalanced(const std::array<Real, N>& forces, std::size_t nDofs)
{
    double largest = 0;
    for (const Real& force : forces)
        largest = std::fmax(largest, std::fabs(static_cast<double>(force)));
    for (std::size_t dof = 0; dof < nDofs && dof < 3; ++dof) {
        double sum = 0;
        for (std::size_t i = dof; i < N; i += nDofs)
            sum += static_cast<double>(forces[i]);
        if (std::fabs(sum) > 1e-9 * largest)
            return false;
    }
    return true;
}

/// Whether numbers add up to nothing beside the largest of them. Gradients of shape functions do: the functions add up
/// to 1 everywhere, so that a translation strains nothing.
template <class Numbers>
bool AddUpToNothing(const Numbers& numbers)
{
    double sum = 0, largest = 0;
    for (const auto& number : numbers) {
        sum += static_cast<double>(number);
        largest = std::fmax(largest, std::fabs(static_cast<double>(number)));
    }
    return !(std::fabs(sum) > 1e-9 * largest);
}

}  // namespace qvx
