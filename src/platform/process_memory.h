#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/export.h"

namespace qvx {

/// Bytes of the entry "Name:  12345 kB" in a table of the kernel; 0 when it is not there.
std::uint64_t KernelTableBytes(const char* file, const std::string& name);

/// Largest memory [bytes] that this process or one that worked for it has taken so far, whichever is more. What stood
/// in the process before this program, or in other children of it, does not count. 0 where the system does not tell.
QVXFEM_API std::uint64_t PeakMemory();

/// A process that worked for this one has ended with this peak [bytes].
void CountWorkerPeak(std::uint64_t bytes);

/// Whether the addresses of this process are limited, as `ulimit -v` does it.
bool IsAddressSpaceLimited();
/// Whether the process can have so many more addresses in one piece [bytes].
bool HasAddressSpace(std::size_t bytes);

}  // namespace qvx
