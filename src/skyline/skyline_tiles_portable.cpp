#include "skyline/skyline_tiles.h"

#include <cstring>

namespace qvx {

namespace {

/// Two lanes, which every 64-bit processor of today has.
typedef double Vec __attribute__((vector_size(16)));
constexpr const char* kInstructionSet = "portable";
constexpr int kLanes = 2;
constexpr int kDoubleVectors = 2, kDoubleColumns = 4;
constexpr int kQuadVectors = 1, kQuadColumns = 4;

inline Vec Load(const double* p)
{
    return Vec{p[0], p[1]};
}
inline void Store(double* p, Vec x)
{
    p[0] = x[0];
    p[1] = x[1];
}
inline Vec Broadcast(const double* p)
{
    return Vec{*p, *p};
}
inline Vec MulAdd(Vec a, Vec b, Vec c)
{
#if defined(__FP_FAST_FMA)
    // Where the processor has it in hardware only: the routine that stands in for it is many times slower than two
    // roundings, which the compensated sums allow for.
    return Vec{__builtin_fma(a[0], b[0], c[0]), __builtin_fma(a[1], b[1], c[1])};
#else
    return a * b + c;
#endif
}
/// a b - z for p = a b rounded: exact product, then one rounding of the difference or, without fused multiply-add, two.
inline Vec ProductMinus(Vec a, Vec b, Vec p, Vec z)
{
    using qvxDouble128NS::detail::ProductError;
    const Vec error = {ProductError(a[0], b[0], p[0]), ProductError(a[1], b[1], p[1])};
    return (p - z) + error;
}
inline void Split(Vec first, Vec second, Vec& high, Vec& low)
{
    high = Vec{first[0], second[0]};
    low = Vec{first[1], second[1]};
}
inline void Join(Vec high, Vec low, Vec& first, Vec& second)
{
    first = Vec{high[0], low[0]};
    second = Vec{high[1], low[1]};
}
inline void Transpose(Vec (&x)[kLanes])
{
    const Vec first = {x[0][0], x[1][0]}, second = {x[0][1], x[1][1]};
    x[0] = first;
    x[1] = second;
}
inline void Prefetch(const double*, int) {}

#include "skyline/skyline_tiles.inl"

}  // namespace

const TileKernels<double>* PortableDoubleTiles()
{
    return &kDoubleTiles;
}

const TileKernels<double128>* PortableQuadTiles()
{
    return &kQuadTiles;
}

}  // namespace qvx
