# tarvo_subproject(<name> [DEPENDS <targets>...])
#
# One static library per subproject, named tarvo_<name>, built from <dir>/src/*.cpp, with its
# headers under <dir>/tarvo/<name>/ so that they are included as <tarvo/<name>/...>.
# A subproject without sources yet is a header-only interface library.
# Tests in <dir>/tests/*.cpp form one GoogleTest executable, registered test by test in CTest, in builds
# with TARVO_TESTS.
function(tarvo_subproject name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;TEST_DEPENDS" ${ARGN})
  set(target tarvo_${name})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/*.cpp)
  if(sources)
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${ARG_DEPENDS})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${target} INTERFACE ${ARG_DEPENDS})
  endif()
  add_library(tarvo::${name} ALIAS ${target})

  file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*.cpp)
  if(tests AND TARVO_TESTS)
    add_executable(${target}_tests ${tests})
    target_link_libraries(${target}_tests PRIVATE ${target} ${ARG_TEST_DEPENDS} GTest::gtest_main)
    target_include_directories(${target}_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/tests)
    gtest_discover_tests(${target}_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 TEST_PREFIX "${name}.")
  endif()
endfunction()
