# Install and export: find_package(qvxFEM) gives the target qvxFEM::qvxFEM.
include(CMakePackageConfigHelpers)

install(TARGETS qvxFEM EXPORT qvxFEMTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qvxFEM
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qvxFEM)
install(EXPORT qvxFEMTargets NAMESPACE qvxFEM:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qvxFEM)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/qvxFEMConfig.cmake.in
        ${PROJECT_BINARY_DIR}/qvxFEMConfig.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qvxFEM)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qvxFEMConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qvxFEMConfig.cmake ${PROJECT_BINARY_DIR}/qvxFEMConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qvxFEM)
if(TARGET qvxfem_app)
  # The program is linked anew on install: CMake would otherwise fill up the run path of the built one with a colon to
  # the length of the installed one, and an empty element stands for the current folder.
  set(CMAKE_NO_BUILTIN_CHRPATH ON)
  set_target_properties(qvxfem_app PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS qvxfem_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES ${PROJECT_SOURCE_DIR}/data/RcSections.ini DESTINATION ${CMAKE_INSTALL_DATADIR}/qvxfem)
