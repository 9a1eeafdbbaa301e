# qvx_add_tests(<folder> <source>... [LABELS <label>...]): one GoogleTest program named test_<folder>, its tests
# registered with ctest under "<folder>.". Tests link the engine's objects statically, so that kernels behind the
# export list can be tested too.
find_package(GTest REQUIRED)
include(GoogleTest)

function(qvx_add_tests folder)
  cmake_parse_arguments(ARG "" "" "LABELS;LIBRARIES" ${ARGN})
  set(target test_${folder})
  add_executable(${target} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${target} PRIVATE qvx::internals qvx::test_support GTest::gmock GTest::gtest_main
                        qvx::warnings ${ARG_LIBRARIES})
  # Test code is compiled often and run once: the optimizer's last steps cost more than they give.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  qvx_copy_data()
  gtest_discover_tests(${target} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                       PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 300)
endfunction()
