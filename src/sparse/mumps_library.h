#pragma once

#include <dmumps_c.h>

namespace qvx {

/// The routine of MUMPS, from the package's own library.
///
/// It is loaded when the first matrix asks for it: a program that prints its version, checks a model or solves it by
/// another solver needs neither it nor the BLAS library beneath, whose threads start, and take memory, as it is loaded.
struct MumpsLibrary
{
    void (*dmumps)(DMUMPS_STRUC_C* data);

    /// @param threads  of the BLAS library beneath; only the first call of a process can set them. One, where the address
    ///                 space is limited: each takes 32 MB and a stack of its own
    /// @throws jxException "MUMPS cannot be loaded: <reason>"
    static const MumpsLibrary& Load(int threads);
};

}  // namespace qvx
