# What the engine stands on; README says why each is here, scripts/setup.sh installs them.
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(utf8cpp REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)
if(QVXFEM_BUILD_APPS)
  find_package(CLI11 REQUIRED)
endif()
set(BLA_VENDOR OpenBLAS)
find_package(BLAS REQUIRED)

# MUMPS ships no package file: its sequential build, without MPI.
find_path(MUMPS_INCLUDE_DIR dmumps_c.h REQUIRED)
find_library(MUMPS_LIBRARY dmumps_seq REQUIRED)

# Both are loaded at run time, when a matrix is to be factorised by MUMPS: only their names are needed, and the headers.
function(qvx_soname variable library)
  execute_process(COMMAND ${CMAKE_READELF} -d ${library} OUTPUT_VARIABLE table ERROR_QUIET)
  if(NOT table MATCHES "SONAME[^[]*\\[([^]]+)\\]")
    message(FATAL_ERROR "${library} is no shared library")
  endif()
  set(${variable} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()
list(GET BLAS_LIBRARIES 0 blas_library)
qvx_soname(QVXFEM_BLAS_SONAME ${blas_library})
qvx_soname(QVXFEM_MUMPS_SONAME ${MUMPS_LIBRARY})

