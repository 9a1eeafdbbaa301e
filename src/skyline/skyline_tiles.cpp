#include "skyline/skyline_tiles.h"

namespace qvx {

namespace {

template <Number Real>
std::vector<const TileKernels<Real>*> Usable(const TileKernels<Real>* avx512, const TileKernels<Real>* avx2,
                                             const TileKernels<Real>* portable)
{
    // Asked of the processor at run time: one library runs on all of a family and takes what each of them can.
    std::vector<const TileKernels<Real>*> usable;
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq"))
        usable.push_back(avx512);
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        usable.push_back(avx2);
#else
    (void)avx512;
    (void)avx2;
#endif
    usable.push_back(portable);
    return usable;
}

}  // namespace

template <>
const std::vector<const TileKernels<double>*>& AvailableTileKernels<double>()
{
    static const auto usable = Usable(Avx512DoubleTiles(), Avx2DoubleTiles(), PortableDoubleTiles());
    return usable;
}

template <>
const std::vector<const TileKernels<double128>*>& AvailableTileKernels<double128>()
{
    static const auto usable = Usable(Avx512QuadTiles(), Avx2QuadTiles(), PortableQuadTiles());
    return usable;
}

}  // namespace qvx
