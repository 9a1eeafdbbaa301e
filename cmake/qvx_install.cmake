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
  # The built program has the run path of the installed one, and a link stands where that leads to in the build. A run
  # path of its own would end in a colon, which CMake adds to change it on install: an empty element is the current folder.
  set_target_properties(qvxfem_app PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}"
                        BUILD_WITH_INSTALL_RPATH ON)
  get_filename_component(library_parent ${PROJECT_BINARY_DIR}/apps/${CMAKE_INSTALL_LIBDIR} DIRECTORY)
  file(MAKE_DIRECTORY ${library_parent})
  file(CREATE_LINK ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/apps/${CMAKE_INSTALL_LIBDIR} SYMBOLIC)
  install(TARGETS qvxfem_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES ${PROJECT_SOURCE_DIR}/data/RcSections.ini DESTINATION ${CMAKE_INSTALL_DATADIR}/qvxfem)
