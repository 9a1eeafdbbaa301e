#include "sparse/mumps_library.h"

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <string>

#include <dlfcn.h>

#include "platform/cstring.h"
#include "platform/process_memory.h"
#include "tools/jx_exception.h"

namespace qvx {
namespace {

// The library makes its threads as it is loaded, by the processors that it counts, and waits for ever where the system
// gives it none. A number that the user has set stays.
void LimitBlasThreads(int threads)
{
    assert(threads >= 0 && "0 leaves the number to the library");
    if (IsAddressSpaceLimited())
        threads = 1;
    if (threads > 0)
        setenv("OPENBLAS_NUM_THREADS", std::to_string(threads).c_str(), 0);
}

[[noreturn]] void Fail(const std::string& reason)
{
    throw jxException(CString(L"MUMPS cannot be loaded: ") + FromUtf8(reason).c_str());
}

// The library takes its work space, 128 MB of addresses, at the first product of matrices and tries again for ever when
// it gets none. So it is asked for a product while that much is there for certain; it keeps the space.
void TakeWorkSpace(void* blas)
{
    constexpr std::size_t kWorkSpace = std::size_t{160} << 20;
    if (!HasAddressSpace(kWorkSpace))
        Fail("there is not enough memory for the work space of its BLAS library");
    using Dtrsm = void (*)(const char*, const char*, const char*, const char*, const int*, const int*, const double*,
                           const double*, const int*, double*, const int*);
    const auto dtrsm = reinterpret_cast<Dtrsm>(dlsym(blas, "dtrsm_"));
    if (dtrsm == nullptr)
        return;
    const int one = 1;
    const double unit = 1;
    double x = 1;
    dtrsm("L", "L", "N", "N", &one, &one, &unit, &unit, &one, &x, &one);
    assert(x == 1 && "the solution of 1 x = 1");
}

MumpsLibrary Open(int threads)
{
    LimitBlasThreads(threads);
    // Ahead of MUMPS and for all to see: of the BLAS libraries of a system it is to take this one.
    void* blas = dlopen(QVXFEM_BLAS_LIBRARY, RTLD_NOW | RTLD_GLOBAL);
    void* library = blas == nullptr ? nullptr : dlopen(QVXFEM_MUMPS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    void* routine = library == nullptr ? nullptr : dlsym(library, "dmumps_c");
    if (routine == nullptr) {
        const char* reason = dlerror();
        Fail(reason == nullptr ? "" : reason);
    }
    if (IsAddressSpaceLimited())
        TakeWorkSpace(blas);
    return {reinterpret_cast<void (*)(DMUMPS_STRUC_C*)>(routine)};
}

}  // namespace

const MumpsLibrary& MumpsLibrary::Load(int threads)
{
    static const MumpsLibrary library = Open(threads);
    return library;
}

}  // namespace qvx
