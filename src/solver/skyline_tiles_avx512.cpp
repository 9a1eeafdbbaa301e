#include "solver/skyline_tiles.h"

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
inline Vec ProductError(Vec a, Vec b, Vec p)
{
    return _mm512_fmsub_pd(a, b, p);
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
inline void Prefetch(const double* p, int count)
{
    for (int i = 0; i < count; i += 8)
        _mm_prefetch(reinterpret_cast<const char*>(p + i), _MM_HINT_T0);
    _mm_prefetch(reinterpret_cast<const char*>(p + count - 1), _MM_HINT_T0);
}

#include "solver/skyline_tiles.inl"

constexpr TileKernels<double> kDoubleTiles{
    "avx512",         kDoubleVectors* kLanes, kDoubleColumns,  UpdateColumnsDouble,
    UpdateRowsDouble, SolveTriangleDouble,    DivideRowsDouble};
constexpr TileKernels<double128> kQuadTiles{"avx512",       kQuadVectors* kLanes, kQuadColumns,  UpdateColumnsQuad,
                                            UpdateRowsQuad, SolveTriangleQuad,    DivideRowsQuad};

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
