# Target docs: docs/api from the public headers. Every warning is an error, but for a field without words: what fields share
# is told once, in model/records/record_order.h, and a name like "nodes" says the rest.
find_program(QVXFEM_DOXYGEN doxygen)
mark_as_advanced(QVXFEM_DOXYGEN)
if(QVXFEM_DOXYGEN)
  list(JOIN QVXFEM_PUBLIC_HEADERS " " QVXFEM_DOXYGEN_INPUT)
  set(QVXFEM_DOXYGEN_LOG ${PROJECT_BINARY_DIR}/doxygen.log)
  configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -DDOXYGEN=${QVXFEM_DOXYGEN} -DDOXYFILE=${PROJECT_BINARY_DIR}/Doxyfile
            -DLOG=${QVXFEM_DOXYGEN_LOG} -P ${CMAKE_CURRENT_LIST_DIR}/qvx_run_doxygen.cmake
    COMMENT "docs/api")
endif()
