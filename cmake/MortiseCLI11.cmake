# CLI11 reads the command line of the tools; it is all headers.
#   mortise_cli11
find_path(MORTISE_CLI11_INCLUDE_DIR NAMES CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(MORTISE_CLI11_INCLUDE_DIR)
if(CMAKE_CROSSCOMPILING AND MORTISE_CLI11_INCLUDE_DIR)
  # A copy, as the folder that it comes from holds the C library's headers for the other processor as well.
  file(COPY ${MORTISE_CLI11_INCLUDE_DIR}/CLI DESTINATION ${CMAKE_BINARY_DIR}/cli11)
  add_library(mortise_cli11 INTERFACE)
  target_include_directories(mortise_cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/cli11)
else()
  find_package(CLI11 CONFIG QUIET)
  if(NOT CLI11_FOUND)
    message(FATAL_ERROR "CLI11 is missing: install libcli11-dev, or switch MORTISE_BUILD_TOOLS off")
  endif()
  add_library(mortise_cli11 INTERFACE)
  target_link_libraries(mortise_cli11 INTERFACE CLI11::CLI11)
endif()
