#include "skyline/skyline_tiles.h"

#if defined(__x86_64__)

#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2,fma"))), apply_to = function)
#else
#pragma GCC target("avx2,fma")
#endif

namespace qvx {

namespace {

using Vec = __m256d;
constexpr const char* kInstructionSet = "avx2";
constexpr int kLanes = 4;
// 12 sums of 4 lanes and 3 factors fill 15 of 16 registers.
constexpr int kDoubleVectors = 3, kDoubleColumns = 4;
// 4 double sums in 8 registers.
constexpr int kQuadVectors = 1, kQuadColumns = 4;

inline Vec Load(const double* p)
{
    return _mm256_loadu_pd(p);
}
inline void Store(double* p, Vec x)
{
    _mm256_storeu_pd(p, x);
}
inline Vec Broadcast(const double* p)
{
    return _mm256_set1_pd(*p);
}
inline Vec MulAdd(Vec a, Vec b, Vec c)
{
    return _mm256_fmadd_pd(a, b, c);
}
/// a b - z, rounded once; p is a b rounded.
inline Vec ProductMinus(Vec a, Vec b, Vec /*p*/, Vec z)
{
    return _mm256_fmsub_pd(a, b, z);
}
/// Four double128 in memory order, to their high and their low parts.
inline void Split(Vec first, Vec second, Vec& high, Vec& low)
{
    // unpack works within halves of 128 bits and leaves the order 0 2 1 3, which the permutation straightens.
    high = _mm256_permute4x64_pd(_mm256_unpacklo_pd(first, second), 0b11011000);
    low = _mm256_permute4x64_pd(_mm256_unpackhi_pd(first, second), 0b11011000);
}
inline void Join(Vec high, Vec low, Vec& first, Vec& second)
{
    const Vec h = _mm256_permute4x64_pd(high, 0b11011000), l = _mm256_permute4x64_pd(low, 0b11011000);
    first = _mm256_unpacklo_pd(h, l);
    second = _mm256_unpackhi_pd(h, l);
}
/// Turns four rows into four columns.
inline void Transpose(Vec (&x)[kLanes])
{
    const Vec a = _mm256_unpacklo_pd(x[0], x[1]), b = _mm256_unpackhi_pd(x[0], x[1]);
    const Vec c = _mm256_unpacklo_pd(x[2], x[3]), d = _mm256_unpackhi_pd(x[2], x[3]);
    x[0] = _mm256_permute2f128_pd(a, c, 0x20);
    x[1] = _mm256_permute2f128_pd(b, d, 0x20);
    x[2] = _mm256_permute2f128_pd(a, c, 0x31);
    x[3] = _mm256_permute2f128_pd(b, d, 0x31);
}
inline void Prefetch(const double* p, int count)
{
    // One look per line of 64 bytes, and the last number: a run of numbers may end in a line of its own.
    for (int i = 0; i < count; i += 8)
        _mm_prefetch(reinterpret_cast<const char*>(p + i), _MM_HINT_T0);
    _mm_prefetch(reinterpret_cast<const char*>(p + count - 1), _MM_HINT_T0);
}

#include "skyline/skyline_tiles.inl"

}  // namespace

}  // namespace qvx

#if defined(__clang__)
#pragma clang attribute pop
#endif

#endif

namespace qvx {

const TileKernels<double>* Avx2DoubleTiles()
{
#if defined(__x86_64__)
    return &kDoubleTiles;
#else
    return nullptr;
#endif
}

const TileKernels<double128>* Avx2QuadTiles()
{
#if defined(__x86_64__)
    return &kQuadTiles;
#else
    return nullptr;
#endif
}

}  // namespace qvx
