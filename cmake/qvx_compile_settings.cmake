# Settings every target of ours shares: C++20, warnings, floating-point rules, hidden symbols, sanitizers.

option(QVXFEM_SANITIZE "Build with address and undefined-behaviour sanitizers" OFF)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(qvxWarnings INTERFACE)
add_library(qvx::warnings ALIAS qvxWarnings)
target_compile_features(qvxWarnings INTERFACE cxx_std_20)
# Contraction would turn the error-free transformations of double128 and the order of sums into compiler business.
target_compile_options(qvxWarnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -ffp-contract=off
  $<$<BOOL:${QVXFEM_WARNINGS_AS_ERRORS}>:-Werror>)

if(QVXFEM_SANITIZE)
  # Instrumented code makes GCC 12 see uninitialized members inside std::regex and std::optional.
  target_compile_options(qvxWarnings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(qvxWarnings INTERFACE -fsanitize=address,undefined)
endif()

# The fuzz targets steer by what their inputs reach: every object of the engine reports it.
if(QVXFEM_BUILD_FUZZERS)
  target_compile_options(qvxWarnings INTERFACE -fsanitize=fuzzer-no-link)
endif()
