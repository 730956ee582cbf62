# GoogleTest, and the entries that ctest makes of a test program.

if(CMAKE_CROSSCOMPILING)
  # Debian has the sources in a package of their own; a foreign architecture builds them.
  set(MORTISE_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
  if(NOT EXISTS ${MORTISE_GOOGLETEST_DIR}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources are missing: install googletest")
  endif()
  set(INSTALL_GTEST OFF)
  add_subdirectory(${MORTISE_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  foreach(library gtest gtest_main gmock gmock_main)
    if(NOT TARGET GTest::${library})
      add_library(GTest::${library} ALIAS ${library})
    endif()
  endforeach()
else()
  find_package(GTest REQUIRED)
endif()

# The system's own python has the modules that its packages bring.
find_program(Python3_EXECUTABLE python3 HINTS /usr/bin NO_CMAKE_FIND_ROOT_PATH)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# mortise_discover_tests(TARGET PREFIX prefix [LABEL label] [ENVIRONMENT name=value...])
# The entries are made when ctest starts, by asking the program; see MortiseDiscoverTests.cmake for names, labels, limits.
function(mortise_discover_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "PREFIX;LABEL" "ENVIRONMENT")
  set(include ${CMAKE_CURRENT_BINARY_DIR}/${target}-discover.cmake)
  file(GENERATE OUTPUT ${include} CONTENT "
set(program [[$<TARGET_FILE:${target}>]])
set(emulator [[${CMAKE_CROSSCOMPILING_EMULATOR}]])
set(prefix [[${arg_PREFIX}]])
set(label [[${arg_LABEL}]])
set(environment [[${arg_ENVIRONMENT}]])
set(granularity [[${MORTISE_TEST_GRANULARITY}]])
set(directory [[${CMAKE_CURRENT_BINARY_DIR}]])
include([[${PROJECT_SOURCE_DIR}/cmake/MortiseDiscoverTests.cmake]])
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include})
endfunction()
