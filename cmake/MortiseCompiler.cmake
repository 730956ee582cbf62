# Compiler settings: `mortise_flags` is what the library, its tests and its tools are compiled with. Nothing of it reaches
# a project that uses the library.

if(PROJECT_IS_TOP_LEVEL)
  if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  find_program(MORTISE_CCACHE ccache)
  if(MORTISE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The precompiled header of the tests is only cached when ccache may trust its macros and times.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${MORTISE_CCACHE})
  endif()
  set(CMAKE_CXX_FLAGS_RELEASE "-O2")
endif()

find_package(Threads REQUIRED)

add_library(mortise_flags INTERFACE)
target_compile_definitions(mortise_flags INTERFACE _GNU_SOURCE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_compile_options(mortise_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -ffp-contract=off # the digits of a conversion are the same on every processor
  -fno-semantic-interposition)
if(MORTISE_WERROR)
  target_compile_options(mortise_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  target_compile_options(mortise_flags INTERFACE -fpch-preprocess) # lets ccache look into a precompiled header
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
    # Stack traces need tables for functions that cannot throw, too.
    target_compile_options(mortise_flags INTERFACE -Wno-psabi -funwind-tables)
  endif()
elseif(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  target_compile_options(mortise_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()
if(MORTISE_SANITIZE)
  target_compile_options(mortise_flags INTERFACE
    -fsanitize=${MORTISE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(mortise_flags INTERFACE -fsanitize=${MORTISE_SANITIZE})
endif()
if(MORTISE_COVERAGE)
  target_compile_options(mortise_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(mortise_flags INTERFACE --coverage)
endif()
