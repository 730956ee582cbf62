# Libraries of components and plug-ins, which a program loads while it runs.
#
#   mortise_add_module(NAME SOURCE... [LINK LIBRARY...])
#
# builds the target NAME, the library libNAME.so, by whose plain name NAME programs load it. One of its sources has to export
# what it offers, with MORTISE_MODULE of mcs/module.h. The library exports nothing else, and is linked to this one and to
# those of LINK.
#
# The build fails for a library that could be loaded and never unloaded again, and for one that is no module.
function(mortise_add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK")
  if(NOT arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "mortise_add_module(${name}): no sources")
  endif()
  # When the name of the file is made from that of the module, everything behind the first point is lost, and a "lib" that is
  # there is not put there again.
  if(NOT name MATCHES "^[A-Za-z0-9_+-]+$" OR name MATCHES "^lib")
    message(FATAL_ERROR "mortise_add_module(${name}): the name of a module is made of letters, digits, '_', '+' and '-', and "
      "does not begin with 'lib'")
  endif()
  find_program(MORTISE_READELF NAMES ${CMAKE_READELF} readelf llvm-readelf REQUIRED)
  mark_as_advanced(MORTISE_READELF)

  add_library(${name} MODULE ${arg_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE mortise::mortise ${arg_LINK})
  set_target_properties(${name} PROPERTIES PREFIX lib SUFFIX .so
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  # Unique symbols, as static variables of inline functions would be, keep a library for ever.
  target_compile_options(${name} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  # What is missing is better found now than by whoever loads the library. The symbols of clang's sanitizers come from the
  # program.
  if(NOT (CMAKE_CXX_COMPILER_ID MATCHES Clang AND (MORTISE_SANITIZE OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")))
    target_link_options(${name} PRIVATE LINKER:--no-undefined)
  endif()
  add_custom_command(TARGET ${name} POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -D LIBRARY=$<TARGET_FILE:${name}> -D READELF=${MORTISE_READELF}
      -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/MortiseCheckModule.cmake)
endfunction()
