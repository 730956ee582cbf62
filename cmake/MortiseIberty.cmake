# libiberty demangles the names of a stack trace. It is linked statically and stays inside the library.
#   MORTISE_IBERTY_LIBRARY, MORTISE_IBERTY_INCLUDE_DIR
#
# Natively it is Debian's libiberty-dev. For 32-bit ARM the same package of that architecture is unpacked into the build
# tree, by a script that leaves the package set-up of the machine as it is.

if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR MATCHES "^arm" AND NOT MORTISE_IBERTY_LIBRARY)
  set(mortise_armhf_root ${CMAKE_BINARY_DIR}/armhf)
  if(NOT EXISTS ${mortise_armhf_root}/usr/lib/arm-linux-gnueabihf/libiberty.a)
    message(STATUS "Fetching libiberty for armhf")
    execute_process(
      COMMAND ${CMAKE_CURRENT_LIST_DIR}/fetch-armhf-package.sh libiberty-dev ${mortise_armhf_root}
      RESULT_VARIABLE mortise_fetch)
    if(NOT mortise_fetch EQUAL 0)
      message(FATAL_ERROR "libiberty for armhf could not be fetched; set MORTISE_IBERTY_LIBRARY and MORTISE_IBERTY_INCLUDE_DIR")
    endif()
  endif()
  set(MORTISE_IBERTY_LIBRARY ${mortise_armhf_root}/usr/lib/arm-linux-gnueabihf/libiberty.a CACHE FILEPATH "" FORCE)
  set(MORTISE_IBERTY_INCLUDE_DIR ${mortise_armhf_root}/usr/include CACHE PATH "" FORCE)
endif()

find_library(MORTISE_IBERTY_LIBRARY NAMES libiberty.a)
find_path(MORTISE_IBERTY_INCLUDE_DIR NAMES libiberty/demangle.h)
if(NOT MORTISE_IBERTY_LIBRARY OR NOT MORTISE_IBERTY_INCLUDE_DIR)
  message(FATAL_ERROR "libiberty is missing: install libiberty-dev")
endif()
mark_as_advanced(MORTISE_IBERTY_LIBRARY MORTISE_IBERTY_INCLUDE_DIR)
