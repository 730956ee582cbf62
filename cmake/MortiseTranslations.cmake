# Translation files that are kept in step with the sources of a project.
#
#   mortise_add_translations(NAME FILES FILE... [SOURCES PATH...] [EXCLUDE PATH...] [PSEUDO FILE] [PLAIN])
#
# makes the targets
#   NAME          brings the translation files up to date; those that are missing are made
#   NAME-check    changes nothing, and fails unless every message has its right translation in every file
#   NAME-pseudo   writes FILE, a locale file of a made-up language, if PSEUDO is given
# SOURCES are files, and folders with files, of C++: the current source directory, if none are given. The build tree is left
# out. Sources and files are relative to the current source directory, the file of PSEUDO to the current binary directory.
# With PLAIN the files have entries only, as what loads translation tables wants them.
#
# The program is the one that came with the library, or MORTISE_TOOL; without both it is looked for.
function(mortise_add_translations name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "PLAIN" "PSEUDO" "FILES;SOURCES;EXCLUDE")
  if(arg_UNPARSED_ARGUMENTS OR NOT (arg_FILES OR arg_PSEUDO))
    message(FATAL_ERROR "mortise_add_translations(${name}): FILES or PSEUDO, and nothing unknown: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT MORTISE_TOOL AND TARGET mortise::mortise-tool)
    set(program mortise::mortise-tool)
  else()
    find_program(MORTISE_TOOL mortise)
    if(NOT MORTISE_TOOL)
      message(FATAL_ERROR "The program mortise is missing: install it, switch MORTISE_BUILD_TOOLS on, or set MORTISE_TOOL")
    endif()
    set(program ${MORTISE_TOOL})
  endif()

  set(common --base ${CMAKE_CURRENT_SOURCE_DIR} --exclude ${CMAKE_BINARY_DIR})
  foreach(path IN LISTS arg_EXCLUDE)
    cmake_path(ABSOLUTE_PATH path)
    list(APPEND common --exclude ${path})
  endforeach()
  if(arg_PLAIN)
    list(APPEND common --plain)
  endif()
  set(sources)
  foreach(path IN LISTS arg_SOURCES)
    cmake_path(ABSOLUTE_PATH path)
    list(APPEND sources ${path})
  endforeach()
  if(NOT sources)
    set(sources ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
  set(files)
  foreach(path IN LISTS arg_FILES)
    cmake_path(ABSOLUTE_PATH path)
    list(APPEND files --file ${path})
  endforeach()

  if(files)
    add_custom_target(${name} COMMAND ${program} tr ${common} ${files} -- ${sources} VERBATIM)
    add_custom_target(${name}-check COMMAND ${program} tr --check ${common} ${files} -- ${sources} VERBATIM)
  endif()
  if(arg_PSEUDO)
    cmake_path(ABSOLUTE_PATH arg_PSEUDO BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
    add_custom_target(${name}-pseudo COMMAND ${program} tr ${common} --pseudo ${arg_PSEUDO} -- ${sources} VERBATIM)
  endif()
endfunction()
