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
add_library(MUMPS::sequential INTERFACE IMPORTED)
set_target_properties(MUMPS::sequential PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES ${MUMPS_INCLUDE_DIR} INTERFACE_LINK_LIBRARIES ${MUMPS_LIBRARY})
