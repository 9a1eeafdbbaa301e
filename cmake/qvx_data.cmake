# qvx_copy_data(): puts the data files that the engine reads beside its executable into the current binary folder.
function(qvx_copy_data)
  configure_file(${PROJECT_SOURCE_DIR}/data/RcSections.ini ${CMAKE_CURRENT_BINARY_DIR}/RcSections.ini COPYONLY)
endfunction()
