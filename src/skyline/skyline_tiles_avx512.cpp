#include "skyline/skyline_tiles.h"

#if defined(__x86_64__)

#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512dq,fma"))), apply_to = function)
#else
#pragma GCC target("avx512f,avx512dq,fma")
#endif

namespace qvx {

namespace {

using Vec = __m512d;
constexpr const char* kInstructionSet = "avx512";
constexpr int kLanes = 8;
// 24 sums of 8 lanes and 3 factors fill 27 of 32 registers; 24 multiply-adds a step hide their latency.
constexpr int kDoubleVectors = 3, kDoubleColumns = 8;
// 8 double sums in 16 registers.
constexpr int kQuadVectors = 2, kQuadColumns = 4;

inline Vec Load(const double* p)
{
    return _mm512_loadu_pd(p);
}
inline void Store(double* p, Vec x)
{
    _mm512_storeu_pd(p, x);
}
inline Vec Broadcast(const double* p)
{
    return _mm512_set1_pd(*p);
}
inline Vec MulAdd(Vec a, Vec b, Vec c)
{
    return _mm512_fmadd_pd(a, b, c);
}
/// a b - z, rounded once; p is a b rounded.
inline Vec ProductMinus(Vec a, Vec b, Vec /*p*/, Vec z)
{
    return _mm512_fmsub_pd(a, b, z);
}
/// Eight double128 in memory order, to their high and their low parts.
inline void Split(Vec first, Vec second, Vec& high, Vec& low)
{
    high = _mm512_permutex2var_pd(first, _mm512_setr_epi64(0, 2, 4, 6, 8, 10, 12, 14), second);
    low = _mm512_permutex2var_pd(first, _mm512_setr_epi64(1, 3, 5, 7, 9, 11, 13, 15), second);
}
inline void Join(Vec high, Vec low, Vec& first, Vec& second)
{
    first = _mm512_permutex2var_pd(high, _mm512_setr_epi64(0, 8, 1, 9, 2, 10, 3, 11), low);
    second = _mm512_permutex2var_pd(high, _mm512_setr_epi64(4, 12, 5, 13, 6, 14, 7, 15), low);
}
/// Turns eight rows into eight columns: pairs of elements, then quarters, then halves are exchanged.
inline void Transpose(Vec (&x)[kLanes])
{
    Vec pair[8];  // (x0, x1), (x2, x3), ..: even elements side by side in pair[0..3], odd ones in pair[4..7]
    for (int i = 0; i < 4; ++i) {
        pair[i] = __builtin_shufflevector(x[2 * i], x[2 * i + 1], 0, 8, 2, 10, 4, 12, 6, 14);
        pair[4 + i] = __builtin_shufflevector(x[2 * i], x[2 * i + 1], 1, 9, 3, 11, 5, 13, 7, 15);
    }
    for (int odd = 0; odd < 2; ++odd) {
        const Vec* p = pair + 4 * odd;
        const Vec a = __builtin_shufflevector(p[0], p[1], 0, 1, 4, 5, 8, 9, 12, 13);
        const Vec b = __builtin_shufflevector(p[2], p[3], 0, 1, 4, 5, 8, 9, 12, 13);
        const Vec c = __builtin_shufflevector(p[0], p[1], 2, 3, 6, 7, 10, 11, 14, 15);
        const Vec d = __builtin_shufflevector(p[2], p[3], 2, 3, 6, 7, 10, 11, 14, 15);
        x[odd] = __builtin_shufflevector(a, b, 0, 1, 4, 5, 8, 9, 12, 13);
        x[odd + 4] = __builtin_shufflevector(a, b, 2, 3, 6, 7, 10, 11, 14, 15);
        x[odd + 2] = __builtin_shufflevector(c, d, 0, 1, 4, 5, 8, 9, 12, 13);
        x[odd + 6] = __builtin_shufflevector(c, d, 2, 3, 6, 7, 10, 11, 14, 15);
    }
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

const TileKernels<double>* Avx512DoubleTiles()
{
#if defined(__x86_64__)
    return &kDoubleTiles;
#else
    return nullptr;
#endif
}

const TileKernels<double128>* Avx512QuadTiles()
{
#if defined(__x86_64__)
    return &kQuadTiles;
#else
    return nullptr;
#endif
}

}  // namespace qvx
